#include "tests/support/ServidorPostgresql.hpp"

#include "tests/support/ProgramasPostgresql.hpp"

#include <atomic>
#include <fstream>
#include <libpq-fe.h>
#include <memory>
#include <stdexcept>
#include <string>

namespace atipicos::pruebas {

namespace {

    namespace fs = std::filesystem;

    /// One statement through the client library: hundreds of databases are made, and a psql for each would
    /// take longer than its answer.
    void ordena(const std::string& direccion, const std::string& sql)
    {
        const std::unique_ptr<PGconn, decltype(&PQfinish)> linea(PQconnectdb(direccion.c_str()), &PQfinish);
        const std::unique_ptr<PGresult, decltype(&PQclear)> respuesta(
            PQexec(linea.get(), sql.c_str()), &PQclear);
        if (PQresultStatus(respuesta.get()) != PGRES_COMMAND_OK)
            throw std::runtime_error(sql + ": " + PQerrorMessage(linea.get()));
    }

}

std::string ServidorPostgresql::falta()
{
    return programas_postgresql().empty() ? "no PostgreSQL server here: install the package postgresql" : "";
}

ServidorPostgresql::ServidorPostgresql(bool duradero)
    : m_programas(programas_postgresql())
{
    m_carpeta = carpeta_de_postgresql();
    crea_cluster(m_carpeta, m_carpeta / "datos");
    std::ofstream(m_carpeta / "datos/postgresql.conf", std::ios::app)
        << "listen_addresses = ''\nunix_socket_directories = '" << m_carpeta.string()
        << "'\nmax_connections = 200\nshared_buffers = 64MB\nautovacuum = off\n"
        << (duradero ? "" : "fsync = off\n");
    const auto accesos = lee_texto(m_carpeta / "datos/pg_hba.conf");
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
    ordena(direccion("postgres"), "CREATE DATABASE \"" + base + "\" TEMPLATE \"" + plantilla + "\"");
}

void ServidorPostgresql::borra_base(const std::string& base) const
{
    ordena(direccion("postgres"), "DROP DATABASE \"" + base + "\" WITH (FORCE)");
}

std::string ServidorPostgresql::psql(const std::string& base, const std::string& sql) const
{
    static std::atomic<int> cuantas; // asked in several threads, each has an answer of its own
    const auto salida = m_carpeta / ("psql_" + std::to_string(++cuantas) + ".txt");
    ejecuta({ m_programas / "psql", "-X", "-q", "-A", "-t", "-d", direccion(base), "-c", sql }, salida);
    auto dicho = lee_texto(salida);
    fs::remove(salida);
    return dicho;
}

int ServidorPostgresql::guion(
    const std::string& base, const fs::path& fichero, const std::string& usuario, std::string& dicho) const
{
    // The server's user may not reach where the file is.
    const auto suyo = m_carpeta / "guion.sql";
    std::ofstream(suyo) << lee_texto(fichero);
    const auto salida = m_carpeta / "guion.txt";
    fs::remove(salida);
    const int estado = ejecuta(
        { m_programas / "psql", "-X", "-q", "-A", "-t", "-d", direccion(base, usuario), "-f", suyo }, salida);
    dicho = lee_texto(salida);
    return estado;
}

int ServidorPostgresql::ejecuta(const std::vector<std::string>& orden, const fs::path& salida) const
{
    return ejecuta_como_postgresql(orden, salida);
}

void ServidorPostgresql::exige(const std::vector<std::string>& orden) const
{
    exige_como_postgresql(orden, m_carpeta);
}

} // namespace atipicos::pruebas
