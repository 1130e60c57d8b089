#include "tests/support/ServidorPostgresql.hpp"

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

    namespace fs = std::filesystem;

    /// The newest version that is installed; empty when there is none.
    fs::path programas()
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

    /// The server refuses to be run by root.
    const passwd* sin_privilegios()
    {
        if (geteuid() != 0)
            return nullptr;
        const auto* cuenta = getpwnam("postgres");
        return cuenta != nullptr ? cuenta : getpwnam("nobody");
    }

    [[noreturn]] void sustituye(
        const std::vector<std::string>& orden, const fs::path& salida, const passwd* cuenta)
    {
        const int fichero = open(salida.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0666);
        dup2(fichero, STDOUT_FILENO);
        dup2(fichero, STDERR_FILENO);
        if (cuenta != nullptr
            && (setgroups(0, nullptr) != 0 || setgid(cuenta->pw_gid) != 0 || setuid(cuenta->pw_uid) != 0))
            _exit(126);
        std::vector<char*> argumentos;
        for (const auto& uno : orden)
            argumentos.push_back(const_cast<char*>(uno.c_str()));
        argumentos.push_back(nullptr);
        execv(argumentos[0], argumentos.data());
        _exit(127);
    }

    std::string lee(const fs::path& fichero)
    {
        std::ostringstream texto;
        texto << std::ifstream(fichero).rdbuf();
        return texto.str();
    }

}

std::string ServidorPostgresql::falta()
{
    return programas().empty() ? "no PostgreSQL server here: install the package postgresql" : "";
}

ServidorPostgresql::ServidorPostgresql(bool duradero)
    : m_programas(programas())
{
    std::string plantilla = (fs::temp_directory_path() / "atipicos-pg-XXXXXX").string();
    if (mkdtemp(plantilla.data()) == nullptr)
        throw std::runtime_error("no temporary folder");
    m_carpeta = plantilla;
    if (const auto* cuenta = sin_privilegios();
        cuenta != nullptr && chown(m_carpeta.c_str(), cuenta->pw_uid, cuenta->pw_gid) != 0)
        throw std::runtime_error("the folder of the cluster cannot be given away");
    exige({ m_programas / "initdb", "-D", m_carpeta / "datos", "-U", "atipicos", "-A", "trust", "-E", "UTF8",
        "--locale=C.UTF-8", "--no-sync" });
    std::ofstream(m_carpeta / "datos/postgresql.conf", std::ios::app)
        << "listen_addresses = ''\nunix_socket_directories = '" << m_carpeta.string()
        << "'\nmax_connections = 200\nshared_buffers = 64MB\nautovacuum = off\n"
        << (duradero ? "" : "fsync = off\n");
    const auto accesos = lee(m_carpeta / "datos/pg_hba.conf");
    std::ofstream(m_carpeta / "datos/pg_hba.conf") << "local all con_clave scram-sha-256\n" << accesos;
    arranca();
}

ServidorPostgresql::~ServidorPostgresql()
{
    static_cast<void>(
        ejecuta({ m_programas / "pg_ctl", "stop", "-D", m_carpeta / "datos", "-m", "immediate", "-w" },
            m_carpeta / "salida.txt"));
    std::error_code da_igual;
    fs::remove_all(m_carpeta, da_igual);
}

void ServidorPostgresql::arranca()
{
    exige({ m_programas / "pg_ctl", "start", "-D", m_carpeta / "datos", "-l", m_carpeta / "servidor.txt",
        "-w" });
}

void ServidorPostgresql::detiene()
{
    exige({ m_programas / "pg_ctl", "stop", "-D", m_carpeta / "datos", "-m", "immediate", "-w" });
}

std::string ServidorPostgresql::direccion(const std::string& base, const std::string& usuario) const
{
    return "postgresql://" + usuario + "@/" + base + "?host=" + m_carpeta.string();
}

std::string ServidorPostgresql::cadena_odbc(const std::string& base) const
{
    return "DRIVER={PostgreSQL Unicode};SERVER=" + m_carpeta.string()
        + ";UID=atipicos;PROTOCOL=7.4-0;DATABASE=" + base;
}

fs::path ServidorPostgresql::enchufe() const { return m_carpeta / ".s.PGSQL.5432"; }

void ServidorPostgresql::crea_base(const std::string& base, const std::string& plantilla) const
{
    exige({ m_programas / "psql", "-X", "-q", "-v", "ON_ERROR_STOP=1", "-d", direccion("postgres"), "-c",
        "CREATE DATABASE \"" + base + "\" TEMPLATE \"" + plantilla + "\"" });
}

void ServidorPostgresql::borra_base(const std::string& base) const
{
    exige({ m_programas / "psql", "-X", "-q", "-v", "ON_ERROR_STOP=1", "-d", direccion("postgres"), "-c",
        "DROP DATABASE \"" + base + "\" WITH (FORCE)" });
}

std::string ServidorPostgresql::psql(const std::string& base, const std::string& sql) const
{
    const auto salida = m_carpeta / "psql.txt";
    fs::remove(salida);
    ejecuta({ m_programas / "psql", "-X", "-q", "-A", "-t", "-d", direccion(base), "-c", sql }, salida);
    return lee(salida);
}

int ServidorPostgresql::guion(
    const std::string& base, const fs::path& fichero, const std::string& usuario, std::string& dicho) const
{
    // The server's user may not reach where the file is.
    const auto suyo = m_carpeta / "guion.sql";
    std::ofstream(suyo) << lee(fichero);
    const auto salida = m_carpeta / "guion.txt";
    fs::remove(salida);
    const int estado = ejecuta(
        { m_programas / "psql", "-X", "-q", "-A", "-t", "-d", direccion(base, usuario), "-f", suyo }, salida);
    dicho = lee(salida);
    return estado;
}

int ServidorPostgresql::ejecuta(const std::vector<std::string>& orden, const fs::path& salida) const
{
    const auto* cuenta = sin_privilegios();
    const pid_t hijo = fork();
    if (hijo == 0)
        sustituye(orden, salida, cuenta);
    int estado = -1;
    waitpid(hijo, &estado, 0);
    return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
}

void ServidorPostgresql::exige(const std::vector<std::string>& orden) const
{
    const auto salida = m_carpeta / "salida.txt";
    if (const int estado = ejecuta(orden, salida); estado != 0)
        throw std::runtime_error(orden.front() + " ended with " + std::to_string(estado) + ":\n" + lee(salida)
            + lee(m_carpeta / "servidor.txt"));
}

} // namespace atipicos::pruebas
