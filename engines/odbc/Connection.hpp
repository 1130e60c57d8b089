#pragma once

#include "engines/odbc/Sesion.hpp"
#include "engines/sql/Pareja.hpp"
#include "platform/adodb/Connection.hpp"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace atipicos::odbc {

/// The names of the accounting database in three-part names, asked of the accounting side itself.
using LeeBases = std::function<std::vector<std::string>(adodb::Connection& contabilidad)>;

/// A connection through an ODBC driver, alone or as one of two over one session. SQL Server gets the
/// statements as they are; other products, told apart by the name that the driver gives, get them rewritten.
///
/// A transaction that the product has undone by itself after an error stays refused until it is rolled back.
/// A lost connection is opened again between transactions: by a query or the beginning of a transaction that
/// finds it lost, or by the operation after the one that was told so.
///
/// Only one thread at a time may use a session, its connections and their recordsets.
class Connection final : public adodb::Connection {
public:
    [[nodiscard]] static std::shared_ptr<Connection> Abrir(
        const Opciones& opciones, Donde donde = Donde::aqui());

    /// Both products over one line, on whose session plain names are those of management. Plain names of the
    /// accounting side are those of the database `Bexmor` of SQL Server, of the schema `dbo` of PostgreSQL,
    /// and in a file of SQLite those that begin with `Bexmor_`. Three-part names lead there from both sides
    /// for the names that `lee_bases` gives, or `Bexmor` when there is none; SQL Server knows them by itself.
    /// Raises an error for any other product, and whatever `lee_bases` raises.
    [[nodiscard]] static sql::Pareja AbrirPareja(
        const Opciones& opciones, const LeeBases& lee_bases = {}, Donde donde = Donde::aqui());

    /// Rolls back what it has begun: the session may be another's too.
    ~Connection() override;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void Execute(const std::string& sql, std::int32_t* afectadas = nullptr,
        adodb::CommandType tipo = adodb::CommandType::Text, Donde donde = Donde::aqui()) override;
    void BeginTrans(Donde donde = Donde::aqui()) override;
    void CommitTrans(Donde donde = Donde::aqui()) override;
    void RollbackTrans(Donde donde = Donde::aqui()) override;
    [[nodiscard]] std::unique_ptr<adodb::Recordset> CreateRecordset() override;

    /// The statement as this product wants it.
    [[nodiscard]] std::string reescribe(const std::string& sql, Donde donde);
    /// Runs a statement written as the product wants it, and undoes what a failing one has done.
    Respuesta ejecuta(const std::string& sql, Donde donde);
    /// The same for a query whose rows are to stay locked until the transaction ends. The lock holds others
    /// off also when there is no row yet: of two that mean to add it the second one waits, and finds it.
    /// `original`: the query before it was rewritten, the same for all who share its rows.
    [[nodiscard]] Respuesta pide_bloqueando(const std::string& sql, const std::string& original, Donde donde);
    /// The columns of a table's primary key; asked of the driver once in a session.
    [[nodiscard]] const std::vector<std::string>& columnas_clave(const TablaNombrada& tabla, Donde donde);

    /// Makes true and false of the small numbers that were declared BIT.
    void vuelve_bits(Respuesta& respuesta) const { m_sesion->vuelve_bits(respuesta); }

    [[nodiscard]] const Servidor& servidor() const noexcept { return m_sesion->servidor(); }
    [[nodiscard]] bool en_transaccion() const noexcept
    {
        return m_sesion->transacciones().en_transaccion(m_lado);
    }

private:
    Connection(std::shared_ptr<Sesion> sesion, sql::Lado lado);
    Respuesta ejecuta(const std::string& sql, bool escribe, Donde donde);

    std::shared_ptr<Sesion> m_sesion;
    sql::Lado m_lado;
};

} // namespace atipicos::odbc
