#include "tests/support/ServidorConReserva.hpp"

#include "tests/support/ProgramasPostgresql.hpp"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <sys/shm.h>
#include <thread>

namespace atipicos::pruebas {

namespace {

    namespace fs = std::filesystem;

    std::vector<pid_t> hijos_de(pid_t padre)
    {
        std::vector<pid_t> hijos;
        for (const auto& proceso : fs::directory_iterator("/proc")) {
            const auto numero = std::atoi(proceso.path().filename().c_str());
            const auto estado = numero > 0 ? lee_texto(proceso.path() / "stat") : std::string();
            const auto tras_el_nombre = estado.rfind(')'); // then come its state and its father
            if (tras_el_nombre != std::string::npos
                && std::atoi(estado.c_str() + tras_el_nombre + 4) == padre)
                hijos.push_back(numero);
        }
        return hijos;
    }

}

ServidorConReserva::ServidorConReserva()
    : m_programas(programas_postgresql())
    , m_carpeta(carpeta_de_postgresql())
{
    crea_cluster(m_carpeta, datos(0));
    std::ofstream(datos(0) / "postgresql.conf", std::ios::app)
        << "listen_addresses = ''\nmax_connections = 60\nshared_buffers = 32MB\nautovacuum = off\nfsync = "
           "off\n"
           "dynamic_shared_memory_type = mmap\nsynchronous_standby_names = '*'\n";
    arranca(0);
    repone();
}

ServidorConReserva::~ServidorConReserva()
{
    for (const std::size_t cual : { 1 - m_primario, m_primario })
        static_cast<void>(
            ejecuta({ m_programas / "pg_ctl", "stop", "-D", datos(cual), "-m", "immediate", "-w" }));
    std::error_code da_igual;
    fs::remove_all(m_carpeta, da_igual);
}

fs::path ServidorConReserva::datos(std::size_t cual) const { return enchufe(cual) / "datos"; }

fs::path ServidorConReserva::enchufe(std::size_t cual) const
{
    return m_carpeta / (cual == 0 ? "uno" : "dos");
}

fs::path ServidorConReserva::enchufe_del_primario() const { return enchufe(m_primario) / ".s.PGSQL.5432"; }

fs::path ServidorConReserva::carpeta_de_la_reserva() const { return enchufe(1 - m_primario); }

std::string ServidorConReserva::direccion(const std::string& base) const
{
    return "postgresql://atipicos@/" + base + "?host=" + enchufe(0).string() + "," + enchufe(1).string()
        + "&target_session_attrs=read-write";
}

void ServidorConReserva::crea_base(const std::string& base) const
{
    exige({ m_programas / "psql", "-X", "-q", "-d", direccion("postgres"), "-c", "CREATE DATABASE " + base });
}

std::string ServidorConReserva::psql(const std::string& base, const std::string& sql) const
{
    const auto salida = m_carpeta / "psql.out";
    fs::remove(salida);
    ejecuta_como_postgresql(
        { m_programas / "psql", "-X", "-q", "-A", "-t", "-d", direccion(base), "-c", sql }, salida);
    return lee_texto(salida);
}

void ServidorConReserva::mata()
{
    // Its first line is the process, the number of the shared memory that it leaves the second one of the
    // seventh.
    std::istringstream escrito(lee_texto(datos(m_primario) / "postmaster.pid"));
    std::string linea;
    std::getline(escrito, linea);
    const pid_t primero = std::atoi(linea.c_str());
    if (primero <= 0)
        throw std::runtime_error("the server does not say which process it is");
    for (int i = 2; i <= 7; ++i)
        std::getline(escrito, linea);
    const auto hijos = hijos_de(primero);
    kill(primero, SIGKILL);
    for (const auto hijo : hijos)
        kill(hijo, SIGKILL);
    while (kill(primero, 0) == 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    int clave = 0;
    int memoria = -1;
    if (std::istringstream(linea) >> clave >> memoria)
        shmctl(memoria, IPC_RMID, nullptr);
}

void ServidorConReserva::asciende()
{
    m_primario = 1 - m_primario;
    exige({ m_programas / "pg_ctl", "promote", "-D", datos(m_primario), "-w" });
}

void ServidorConReserva::repone()
{
    const auto reserva = 1 - m_primario;
    fs::remove_all(datos(reserva));
    exige({ m_programas / "pg_basebackup", "-D", datos(reserva), "-d",
        "postgresql://atipicos@/postgres?host=" + enchufe(m_primario).string(), "-R", "-c", "fast", "-X",
        "stream", "--no-sync" });
    arranca(reserva);
    while (psql("postgres",
               "SELECT COUNT(*) FROM pg_stat_replication WHERE sync_state = 'sync' AND state = 'streaming'")
        != "1\n")
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
}

void ServidorConReserva::arranca(std::size_t cual) const
{
    exige({ m_programas / "pg_ctl", "start", "-D", datos(cual), "-l", m_carpeta / "servidor.txt", "-w", "-o",
        "-c unix_socket_directories=" + enchufe(cual).string() });
}

int ServidorConReserva::ejecuta(const std::vector<std::string>& orden) const
{
    return ejecuta_como_postgresql(orden, m_carpeta / "salida.txt");
}

void ServidorConReserva::exige(const std::vector<std::string>& orden) const
{
    exige_como_postgresql(orden, m_carpeta);
}

} // namespace atipicos::pruebas
