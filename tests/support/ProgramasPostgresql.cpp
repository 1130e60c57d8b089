#include "tests/support/ProgramasPostgresql.hpp"

#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <grp.h>
#include <pwd.h>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace atipicos::pruebas {

namespace {

    /// The server refuses to be run by root.
    const passwd* cuenta_sin_privilegios()
    {
        if (geteuid() != 0)
            return nullptr;
        const auto* cuenta = getpwnam("postgres");
        return cuenta != nullptr ? cuenta : getpwnam("nobody");
    }

    [[noreturn]] void sustituye_el_programa(
        const std::vector<std::string>& orden, const std::filesystem::path& salida, const passwd* cuenta)
    {
        const int fichero = open(salida.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0666);
        dup2(fichero, STDOUT_FILENO);
        dup2(fichero, STDERR_FILENO);
        if (cuenta != nullptr
            && (chdir("/") != 0 // it may have no leave to be where the tests are
                || setgroups(0, nullptr) != 0 || setgid(cuenta->pw_gid) != 0 || setuid(cuenta->pw_uid) != 0))
            _exit(126);
        std::vector<char*> argumentos;
        for (const auto& uno : orden)
            argumentos.push_back(const_cast<char*>(uno.c_str()));
        argumentos.push_back(nullptr);
        execv(argumentos[0], argumentos.data());
        _exit(127);
    }

}

std::filesystem::path programas_postgresql()
{
    std::filesystem::path elegida;
    int mayor = 0;
    std::error_code fallo;
    for (const auto& version : std::filesystem::directory_iterator("/usr/lib/postgresql", fallo)) {
        const int numero = std::atoi(version.path().filename().c_str());
        if (numero > mayor && std::filesystem::exists(version.path() / "bin/initdb")) {
            mayor = numero;
            elegida = version.path() / "bin";
        }
    }
    return elegida;
}

std::filesystem::path carpeta_de_postgresql()
{
    std::string plantilla = (std::filesystem::temp_directory_path() / "atipicos-pg-XXXXXX").string();
    if (mkdtemp(plantilla.data()) == nullptr)
        throw std::runtime_error("no temporary folder");
    if (const auto* cuenta = cuenta_sin_privilegios();
        cuenta != nullptr && chown(plantilla.c_str(), cuenta->pw_uid, cuenta->pw_gid) != 0)
        throw std::runtime_error("the folder of the cluster cannot be given away");
    return plantilla;
}

std::string lee_texto(const std::filesystem::path& fichero)
{
    std::ostringstream texto;
    texto << std::ifstream(fichero).rdbuf();
    return texto.str();
}

int ejecuta_como_postgresql(const std::vector<std::string>& orden, const std::filesystem::path& salida)
{
    const auto* cuenta = cuenta_sin_privilegios();
    const pid_t hijo = fork();
    if (hijo == 0)
        sustituye_el_programa(orden, salida, cuenta);
    int estado = -1;
    waitpid(hijo, &estado, 0);
    return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
}

void exige_como_postgresql(const std::vector<std::string>& orden, const std::filesystem::path& carpeta)
{
    const auto salida = carpeta / "salida.txt";
    const int estado = ejecuta_como_postgresql(orden, salida);
    if (estado == 0)
        return;
    std::string dicho;
    for (const auto& fichero : std::filesystem::directory_iterator(carpeta))
        if (fichero.path().extension() == ".txt")
            dicho += lee_texto(fichero.path());
    throw std::runtime_error(orden.front() + " ended with " + std::to_string(estado) + ":\n" + dicho);
}

} // namespace atipicos::pruebas
