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

namespace fs = std::filesystem;

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
        const std::vector<std::string>& orden, const fs::path& salida, const passwd* cuenta)
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

    void entrega(const fs::path& una)
    {
        if (const auto* cuenta = cuenta_sin_privilegios();
            cuenta != nullptr && lchown(una.c_str(), cuenta->pw_uid, cuenta->pw_gid) != 0)
            throw std::runtime_error("cannot be given away: " + una.string());
    }

    /// A copy of a server's databases that belongs to the user that runs it, with the folder it is to be in.
    void copia_cluster(const fs::path& desde, const fs::path& hasta)
    {
        if (fs::create_directory(hasta.parent_path()))
            entrega(hasta.parent_path());
        fs::copy(desde, hasta, fs::copy_options::recursive);
        entrega(hasta);
        for (const auto& una : fs::recursive_directory_iterator(hasta))
            entrega(una.path());
    }

    /// Where they are copied from; empty when from nowhere. By version: each has a form of its own.
    fs::path plantilla_de(const fs::path& programas)
    {
        const char* carpeta
            = std::getenv("ATIPICOS_PLANTILLAS"); // NOLINT(concurrency-mt-unsafe): nobody writes it
        return carpeta == nullptr
            ? fs::path()
            : fs::path(carpeta) / ("postgresql-" + programas.parent_path().filename().string());
    }

    /// Leaves a copy for the next ones; of several that do so at once the first one's stays.
    void deja_plantilla(const fs::path& datos, const fs::path& plantilla)
    {
        auto copia = plantilla;
        copia += "-" + std::to_string(getpid());
        copia_cluster(datos, copia);
        std::error_code ya_la_hay;
        fs::rename(copia, plantilla, ya_la_hay);
        fs::remove_all(copia);
    }

}

fs::path programas_postgresql()
{
    fs::path elegida;
    int mayor = 0;
    std::error_code fallo;
    for (const auto& version : fs::directory_iterator("/usr/lib/postgresql", fallo)) {
        const int numero = std::atoi(version.path().filename().c_str());
        if (numero > mayor && fs::exists(version.path() / "bin/initdb")) {
            mayor = numero;
            elegida = version.path() / "bin";
        }
    }
    return elegida;
}

fs::path carpeta_de_postgresql()
{
    std::string plantilla = (fs::temp_directory_path() / "atipicos-pg-XXXXXX").string();
    if (mkdtemp(plantilla.data()) == nullptr)
        throw std::runtime_error("no temporary folder");
    entrega(plantilla);
    return plantilla;
}

std::string lee_texto(const fs::path& fichero)
{
    std::ostringstream texto;
    texto << std::ifstream(fichero).rdbuf();
    return texto.str();
}

void crea_cluster(const fs::path& carpeta, const fs::path& datos)
{
    const auto programas = programas_postgresql();
    const auto plantilla = plantilla_de(programas);
    if (!plantilla.empty() && access(plantilla.c_str(), R_OK | X_OK) == 0) {
        copia_cluster(plantilla, datos);
        return;
    }
    exige_como_postgresql({ programas / "initdb", "-D", datos, "-U", "atipicos", "-A", "trust", "-E", "UTF8",
                              "--locale=C.UTF-8", "--no-sync" },
        carpeta);
    if (!plantilla.empty())
        deja_plantilla(datos, plantilla);
}

int ejecuta_como_postgresql(const std::vector<std::string>& orden, const fs::path& salida)
{
    const auto* cuenta = cuenta_sin_privilegios();
    const pid_t hijo = fork();
    if (hijo == 0)
        sustituye_el_programa(orden, salida, cuenta);
    int estado = -1;
    waitpid(hijo, &estado, 0);
    return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
}

void exige_como_postgresql(const std::vector<std::string>& orden, const fs::path& carpeta)
{
    const auto salida = carpeta / "salida.txt";
    const int estado = ejecuta_como_postgresql(orden, salida);
    if (estado == 0)
        return;
    std::string dicho;
    for (const auto& fichero : fs::directory_iterator(carpeta))
        if (fichero.path().extension() == ".txt")
            dicho += lee_texto(fichero.path());
    throw std::runtime_error(orden.front() + " ended with " + std::to_string(estado) + ":\n" + dicho);
}

} // namespace atipicos::pruebas
