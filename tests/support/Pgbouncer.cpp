#include "tests/support/Pgbouncer.hpp"

#include "tests/support/ServidorPostgresql.hpp"

#include <chrono>
#include <csignal>
#include <fstream>
#include <grp.h>
#include <pwd.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace atipicos::pruebas {

namespace {

    constexpr auto programa_pgbouncer = "/usr/sbin/pgbouncer";
    constexpr auto puerto = "6432";

    /// It refuses to be run by root, and must reach the server's socket.
    void sin_privilegios_de(const std::filesystem::path& carpeta)
    {
        if (geteuid() != 0)
            return;
        const auto* cuenta = getpwnam("postgres");
        if (cuenta == nullptr || chown(carpeta.c_str(), cuenta->pw_uid, cuenta->pw_gid) != 0
            || setgroups(0, nullptr) != 0 || setgid(cuenta->pw_gid) != 0 || setuid(cuenta->pw_uid) != 0)
            _exit(126);
    }

    /// Whether it takes connections: the socket is there some time before that.
    bool atiende(const std::filesystem::path& enchufe)
    {
        sockaddr_un lugar{ .sun_family = AF_UNIX, .sun_path = {} };
        enchufe.string().copy(lugar.sun_path, sizeof lugar.sun_path - 1);
        const int prueba = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): as the system asks for it
        const bool bien = connect(prueba, reinterpret_cast<const sockaddr*>(&lugar), sizeof lugar) == 0;
        close(prueba);
        return bien;
    }

}

std::string Pgbouncer::falta()
{
    return std::filesystem::exists(programa_pgbouncer) ? ServidorPostgresql::falta()
                                                       : "no pgbouncer here: install the package pgbouncer";
}

Pgbouncer::Pgbouncer(const ServidorPostgresql& servidor, const std::string& modo, int sesiones)
    : m_carpeta(servidor.enchufe().parent_path() / ("pgbouncer_" + modo))
{
    namespace fs = std::filesystem;
    fs::create_directory(m_carpeta);
    std::ofstream(m_carpeta / "usuarios.txt") << "\"atipicos\" \"\"\n\"ana\" \"\"\n";
    const auto ajustes = m_carpeta / "pgbouncer.ini";
    std::ofstream(ajustes) << "[databases]\n* = host=" << servidor.enchufe().parent_path().string()
                           << "\n[pgbouncer]\nlisten_addr =\nlisten_port = " << puerto
                           << "\nunix_socket_dir = " << m_carpeta.string()
                           << "\nauth_type = trust\nauth_file = " << (m_carpeta / "usuarios.txt").string()
                           << "\npool_mode = " << modo
                           << "\nmax_client_conn = 1000\ndefault_pool_size = " << sesiones
                           << "\nignore_startup_parameters = extra_float_digits, options\nlogfile = "
                           << (m_carpeta / "registro.txt").string() << '\n';
    m_proceso = fork();
    if (m_proceso == 0) {
        sin_privilegios_de(m_carpeta);
        execl(programa_pgbouncer, programa_pgbouncer, "-q", ajustes.c_str(), nullptr);
        _exit(127);
    }
    while (!atiende(m_carpeta / (std::string(".s.PGSQL.") + puerto))) {
        if (waitpid(m_proceso, nullptr, WNOHANG) == m_proceso)
            throw std::runtime_error("pgbouncer has not started");
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

Pgbouncer::~Pgbouncer()
{
    kill(m_proceso, SIGTERM);
    waitpid(m_proceso, nullptr, 0);
    std::error_code da_igual;
    std::filesystem::remove_all(m_carpeta, da_igual);
}

std::string Pgbouncer::direccion(const std::string& base, const std::string& usuario) const
{
    return "postgresql://" + usuario + "@/" + base + "?host=" + m_carpeta.string() + "&port=" + puerto;
}

} // namespace atipicos::pruebas
