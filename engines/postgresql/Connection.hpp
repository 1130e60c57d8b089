#pragma once

#include "engines/postgresql/Procedencia.hpp"
#include "engines/postgresql/Sesion.hpp"
#include "engines/sql/Pareja.hpp"
#include "platform/adodb/Connection.hpp"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace atipicos::postgresql {

/// Asks the accounting side for the names of its database in three-part names.
using LeeBases = std::function<std::vector<std::string>(adodb::Connection& contabilidad)>;

/// A connection to a PostgreSQL server on which statements mean what they mean on SQL Server: a session of
/// its own, or one side of a session that it shares with another connection.
///
/// The beginning of a transaction travels with its first statement; without any nothing is sent. A lost
/// connection is opened again between transactions: by a query or the first statement of a transaction that
/// finds it lost, or by the operation after the one that was told so.
///
/// Only one thread at a time may use a session and its recordsets.
class Connection final : public adodb::Connection {
public:
    [[nodiscard]] static std::shared_ptr<Connection> Abrir(
        const Opciones& opciones, Donde donde = Donde::aqui());

    /// Two products in one session. Plain names of management are looked for in `esquema`, those of
    /// accounting in `dbo`; three-part names lead there from both, for the names in `bases` and those that
    /// `lee_bases` gives.
    [[nodiscard]] static sql::Pareja AbrirPareja(
        const Opciones& opciones, const LeeBases& lee_bases = {}, Donde donde = Donde::aqui());

    /// Rolls back what it has begun: the session may be another's too.
    ~Connection() override;

    void Execute(const std::string& sql, std::int32_t* afectadas = nullptr,
        adodb::CommandType tipo = adodb::CommandType::Text, Donde donde = Donde::aqui()) override;
    void BeginTrans(Donde donde = Donde::aqui()) override;
    void CommitTrans(Donde donde = Donde::aqui()) override;
    void RollbackTrans(Donde donde = Donde::aqui()) override;
    [[nodiscard]] std::unique_ptr<adodb::Recordset> CreateRecordset() override;

    /// The statement as this database wants it.
    [[nodiscard]] std::string reescribe(const std::string& sql, Donde donde);

    /// Runs one statement, written as SQL Server wants it.
    [[nodiscard]] Respuesta pide(const std::string& sql, Donde donde);
    /// The same for a query whose rows are read in their order; the answer may hold the first of them alone.
    [[nodiscard]] Respuesta pide_para_leer(const std::string& sql, Lectura& lectura, Donde donde);
    [[nodiscard]] Sesion& sesion() const noexcept { return *m_sesion; }
    /// The same for a query whose rows are to stay locked until the transaction ends. The lock holds others
    /// off also when there is no row yet: of two that mean to add it the second one waits, and finds it.
    [[nodiscard]] Respuesta pide_bloqueando(const std::string& sql, Donde donde);
    /// Runs an INSERT or UPDATE of the engine's own, as it is.
    [[nodiscard]] Respuesta escribe(const std::string& sql, std::span<const Variant> valores, Donde donde);

    [[nodiscard]] bool en_transaccion() const noexcept;
    [[nodiscard]] const Tablas& tablas() const noexcept { return m_sesion->tablas(); }
    /// Where the rows of a query of this side come from; it refers to `consulta`.
    [[nodiscard]] Procedencia procedencia(const std::string& consulta) const
    {
        return { consulta, m_sesion->catalogo(m_lado), tablas() };
    }
    [[nodiscard]] PGconn* base() const noexcept { return m_sesion->base(); }

private:
    Connection(std::shared_ptr<Sesion> sesion, sql::Lado lado);
    void admite(const std::string& sql, bool escribe, Donde donde) const;

    std::shared_ptr<Sesion> m_sesion;
    sql::Lado m_lado;
};

} // namespace atipicos::postgresql
