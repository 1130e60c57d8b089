#include "engines/odbc/Connection.hpp"

#include "engines/odbc/Escritura.hpp"
#include "engines/odbc/Recordset.hpp"
#include "engines/sql/Reescritura.hpp"
#include "engines/sql/Tokens.hpp"

#include <utility>

namespace atipicos::odbc {

namespace {

    using adodb::Categoria;
    using adodb::ErrorBaseDatos;
    using sql::Lado;

    bool solo_lee(const std::string& sql) { return sql::iguales(sql::primera_palabra(sql), "SELECT"); }

}

Connection::Connection(std::shared_ptr<Sesion> sesion, Lado lado)
    : m_sesion(std::move(sesion))
    , m_lado(lado)
{
}

std::shared_ptr<Connection> Connection::Abrir(const Opciones& opciones, Donde donde)
{
    auto sesion = std::make_shared<Sesion>(opciones, donde);
    for (const auto& [base, esquema] : opciones.bases)
        sesion->catalogo(Lado::gestion).agrega_base(base, esquema + ".");
    return std::shared_ptr<Connection>(new Connection(std::move(sesion), Lado::gestion));
}

sql::Pareja Connection::AbrirPareja(const Opciones& opciones, const LeeBases& lee_bases, Donde donde)
{
    const auto sesion = std::make_shared<Sesion>(opciones, donde);
    const auto& servidor = sesion->servidor();
    if (*servidor.prefijo_contable == '\0')
        throw ErrorBaseDatos(Categoria::conexion, fuente,
            "Sólo SQL Server, PostgreSQL y SQLite pueden llevar gestión y contabilidad por la misma línea.",
            {}, donde);
    sql::Pareja pareja{ std::shared_ptr<Connection>(new Connection(sesion, Lado::gestion)),
        std::shared_ptr<Connection>(new Connection(sesion, Lado::contabilidad)),
        std::shared_ptr<sql::Transacciones>(sesion, &sesion->transacciones()) };
    sesion->catalogo(Lado::contabilidad).pon_propio(servidor.prefijo_contable);
    const auto bases = lee_bases ? lee_bases(*pareja.contabilidad) : std::vector<std::string>{ "Bexmor" };
    for (const auto& nombre : bases)
        for (const auto lado : { Lado::gestion, Lado::contabilidad })
            if (!servidor.dialecto.transact)
                sesion->catalogo(lado).agrega_base(nombre, servidor.prefijo_contable);
    return pareja;
}

Connection::~Connection()
{
    if (m_sesion.use_count() > 1) // one that ends undoes it by itself
        m_sesion->transacciones().abandona(m_lado);
}

void Connection::Execute(const std::string& sql, std::int32_t* afectadas, adodb::CommandType, Donde donde)
{
    const auto respuesta = ejecuta(reescribe(sql, donde), donde);
    if (afectadas != nullptr)
        *afectadas = respuesta.afectadas;
    m_sesion->ejecutada(sql);
}

std::string Connection::reescribe(const std::string& sql, Donde donde)
{
    if (!m_sesion->conoce_las_tablas()) {
        m_sesion->transacciones().admite(m_lado, sql, false, donde);
        m_sesion->lee_catalogo(donde);
    }
    return sql::reescribe(sql, m_sesion->catalogo(m_lado), donde);
}

Respuesta Connection::ejecuta(const std::string& sql, Donde donde)
{
    return ejecuta(sql, !solo_lee(sql), donde);
}

Respuesta Connection::ejecuta(const std::string& sql, bool escribe, Donde donde)
{
    if (sql.find('\0') != std::string::npos)
        throw ErrorBaseDatos(Categoria::instruccion, fuente,
            "La instrucción contiene un carácter nulo, que la base de datos no admite.", sql, donde);
    m_sesion->transacciones().admite(m_lado, sql, escribe, donde);
    return m_sesion->ejecuta(sql, donde);
}

Respuesta Connection::pide_bloqueando(const std::string& sql, const std::string& original, Donde donde)
{
    const auto bloqueando = con_bloqueo(sql, servidor());
    auto respuesta = ejecuta(bloqueando, true, donde);
    if (!respuesta.filas.empty() || *servidor().bloqueo_de_nada == '\0')
        return respuesta;
    ejecuta(servidor().bloqueo_de_nada + literal(original, servidor(), donde) + ", 0))", true, donde);
    return ejecuta(bloqueando, true, donde);
}

void Connection::BeginTrans(Donde donde) { m_sesion->transacciones().empieza(m_lado, donde); }

void Connection::CommitTrans(Donde donde) { m_sesion->transacciones().confirma(m_lado, donde); }

void Connection::RollbackTrans(Donde donde) { m_sesion->transacciones().deshace(m_lado, donde); }

std::unique_ptr<adodb::Recordset> Connection::CreateRecordset() { return std::make_unique<Recordset>(*this); }

const std::vector<std::string>& Connection::columnas_clave(const TablaNombrada& tabla, Donde donde)
{
    m_sesion->transacciones().admite(m_lado, "SQLPrimaryKeys", false, donde);
    return m_sesion->columnas_clave(tabla, donde);
}

} // namespace atipicos::odbc
