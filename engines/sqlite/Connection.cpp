#include "engines/sqlite/Connection.hpp"

#include "engines/sql/Tokens.hpp"
#include "engines/sqlite/Recordset.hpp"

#include <utility>

namespace atipicos::sqlite {

Connection::Connection(std::shared_ptr<Sesion> sesion, sql::Lado lado)
    : m_sesion(std::move(sesion))
    , m_lado(lado)
{
}

Connection::~Connection()
{
    if (m_sesion.use_count() > 1) // one that ends undoes it by itself
        m_sesion->transacciones().abandona(m_lado);
}

std::shared_ptr<Connection> Connection::Abrir(const Opciones& opciones, Donde donde)
{
    return std::make_shared<Connection>(Sesion::abre(opciones, donde), sql::Lado::gestion);
}

sql::Pareja Connection::AbrirPareja(const Opciones& opciones, const Segundo& segundo, Donde donde)
{
    return pareja_de(Sesion::abre(opciones, donde), segundo);
}

sql::Pareja Connection::pareja_de(const std::shared_ptr<Sesion>& sesion, const Segundo& segundo)
{
    for (const auto lado : { sql::Lado::gestion, sql::Lado::contabilidad })
        sesion->catalogo(lado).agrega_base(segundo.base, segundo.prefijo);
    sesion->catalogo(sql::Lado::contabilidad).pon_propio(segundo.prefijo);
    return { std::make_shared<Connection>(sesion, sql::Lado::gestion),
        std::make_shared<Connection>(sesion, sql::Lado::contabilidad),
        std::shared_ptr<sql::Transacciones>(sesion, &sesion->transacciones()) };
}

void Connection::admite(const std::string& sql, bool escribe, Donde donde)
{
    m_sesion->transacciones().admite(m_lado, sql, escribe, donde);
}

std::string Connection::reescribe(const std::string& sql, Donde donde)
{
    return m_sesion->reescribe(m_lado, sql, donde);
}

Prestada Connection::prepara(const std::string& sql, Donde donde)
{
    return m_sesion->prepara(m_lado, sql, donde);
}

void Connection::Execute(const std::string& sql, std::int32_t* afectadas, adodb::CommandType, Donde donde)
{
    admite(sql, !sql::no_cambia_nada(sql), donde);
    m_sesion->guarda_lecturas(donde);
    m_sesion->ejecuta(prepara(sql, donde), afectadas, donde);
    m_sesion->ejecutada(sql);
}

void Connection::BeginTrans(Donde donde) { m_sesion->transacciones().empieza(m_lado, donde); }

void Connection::CommitTrans(Donde donde) { m_sesion->transacciones().confirma(m_lado, donde); }

void Connection::RollbackTrans(Donde donde) { m_sesion->transacciones().deshace(m_lado, donde); }

bool Connection::en_transaccion() const noexcept { return m_sesion->transacciones().en_transaccion(m_lado); }

std::unique_ptr<adodb::Recordset> Connection::CreateRecordset() { return std::make_unique<Recordset>(*this); }

} // namespace atipicos::sqlite
