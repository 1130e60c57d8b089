#include "engines/postgresql/Connection.hpp"

#include "engines/postgresql/Recordset.hpp"
#include "engines/sql/Tokens.hpp"

#include <cstdlib>
#include <utility>

namespace atipicos::postgresql {

namespace {

    constexpr auto esquema_contable = "dbo.";

    std::vector<Texto> textos_de(std::span<const Variant> valores, Donde donde)
    {
        std::vector<Texto> textos;
        textos.reserve(valores.size());
        for (const auto& valor : valores)
            textos.push_back(texto_de(valor, donde));
        return textos;
    }

    void agrega_bases(Sesion& sesion, const std::vector<std::string>& nombres)
    {
        for (const auto lado : { sql::Lado::gestion, sql::Lado::contabilidad })
            for (const auto& nombre : nombres)
                sesion.catalogo(lado).agrega_base(nombre, esquema_contable);
    }

}

Connection::Connection(std::shared_ptr<Sesion> sesion, sql::Lado lado)
    : m_sesion(std::move(sesion))
    , m_lado(lado)
{
}

std::shared_ptr<Connection> Connection::Abrir(const Opciones& opciones, Donde donde)
{
    auto sesion = std::make_shared<Sesion>(opciones, donde);
    agrega_bases(*sesion, opciones.bases);
    return std::shared_ptr<Connection>(new Connection(std::move(sesion), sql::Lado::gestion));
}

sql::Pareja Connection::AbrirPareja(const Opciones& opciones, const LeeBases& lee_bases, Donde donde)
{
    auto sesion = std::make_shared<Sesion>(opciones, donde);
    sesion->catalogo(sql::Lado::contabilidad).pon_propio(esquema_contable);
    agrega_bases(*sesion, opciones.bases);
    const std::shared_ptr<Connection> contabilidad(new Connection(sesion, sql::Lado::contabilidad));
    if (lee_bases)
        agrega_bases(*sesion, lee_bases(*contabilidad));
    return { std::shared_ptr<Connection>(new Connection(sesion, sql::Lado::gestion)), contabilidad,
        std::shared_ptr<sql::Transacciones>(sesion, &sesion->transacciones()) };
}

Connection::~Connection()
{
    if (m_sesion.use_count() > 1) // one that ends undoes it by itself
        m_sesion->transacciones().abandona(m_lado);
}

void Connection::Execute(const std::string& sql, std::int32_t* afectadas, adodb::CommandType, Donde donde)
{
    const auto respuesta = pide(sql, donde);
    if (afectadas != nullptr)
        *afectadas = std::atoi(PQcmdTuples(respuesta.get()));
    m_sesion->ejecutada(sql);
}

Respuesta Connection::pide(const std::string& sql, Donde donde)
{
    const bool cambia = !sql::iguales(sql::primera_palabra(sql), "SELECT");
    admite(sql, cambia, donde);
    return m_sesion->pide(m_lado, sql, cambia, false, donde);
}

Respuesta Connection::pide_para_leer(const std::string& sql, Lectura& lectura, Donde donde)
{
    if (!sql::iguales(sql::primera_palabra(sql), "SELECT"))
        return pide(sql, donde);
    admite(sql, false, donde);
    return m_sesion->pide_para_leer(m_lado, sql, lectura, donde);
}

Respuesta Connection::pide_bloqueando(const std::string& sql, Donde donde)
{
    admite(sql, true, donde);
    auto respuesta = m_sesion->pide(m_lado, sql, true, true, donde);
    if (PQntuples(respuesta.get()) > 0)
        return respuesta;
    const std::vector<Texto> clave{ sql };
    static_cast<void>(
        m_sesion->ejecuta({ "SELECT pg_advisory_xact_lock(hashtextextended($1, 0))", clave }, false, donde));
    return m_sesion->pide(m_lado, sql, true, true, donde);
}

Respuesta Connection::escribe(const std::string& sql, std::span<const Variant> valores, Donde donde)
{
    admite(sql, true, donde);
    const auto textos = textos_de(valores, donde); // before anything is sent: a value may have no text
    return m_sesion->ejecuta({ sql.c_str(), textos, m_sesion->preparada(sql) }, true, donde);
}

void Connection::admite(const std::string& sql, bool escribe, Donde donde) const
{
    m_sesion->transacciones().admite(m_lado, sql, escribe, donde);
}

void Connection::BeginTrans(Donde donde) { m_sesion->transacciones().empieza(m_lado, donde); }

void Connection::CommitTrans(Donde donde) { m_sesion->transacciones().confirma(m_lado, donde); }

void Connection::RollbackTrans(Donde donde) { m_sesion->transacciones().deshace(m_lado, donde); }

std::unique_ptr<adodb::Recordset> Connection::CreateRecordset() { return std::make_unique<Recordset>(*this); }

std::string Connection::reescribe(const std::string& sql, Donde donde)
{
    return m_sesion->reescribe(m_lado, sql, donde);
}

bool Connection::en_transaccion() const noexcept { return m_sesion->transacciones().en_transaccion(m_lado); }

} // namespace atipicos::postgresql
