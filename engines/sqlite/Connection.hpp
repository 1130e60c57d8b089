#pragma once

#include "engines/sql/Pareja.hpp"
#include "engines/sqlite/Sesion.hpp"

#include <memory>
#include <string>

namespace atipicos::sqlite {

/// The tables of a second product in the same file.
struct Segundo {
    std::string base = "Bexmor"; ///< `base.dbo.Tabla` means its tables
    std::string prefijo = "Bexmor_"; ///< begins the names of its tables in the file
};

/// A connection to a database file: write-ahead log, foreign keys on, and a transaction takes the write lock
/// at once (`BEGIN IMMEDIATE`), so that it cannot find out at its end that another came first.
///
/// Some failures, a full disk among them, make SQLite undo the whole transaction at once. From then on every
/// statement is refused until `RollbackTrans`: alone it would be stored outside any transaction.
///
/// Only one thread at a time may use a connection, its recordsets and the other connection of its session.
class Connection final : public adodb::Connection {
public:
    /// A session with one connection. Raises an error that names the file and what is wrong with it.
    [[nodiscard]] static std::shared_ptr<Connection> Abrir(
        const Opciones& opciones, Donde donde = Donde::aqui());
    /// Two connections over one session: plain names are on the first the tables as they are called in the
    /// file, and on the second those of `segundo`.
    [[nodiscard]] static sql::Pareja AbrirPareja(
        const Opciones& opciones, const Segundo& segundo = {}, Donde donde = Donde::aqui());
    /// The same over a session that is open.
    [[nodiscard]] static sql::Pareja pareja_de(const std::shared_ptr<Sesion>& sesion, const Segundo& segundo);

    Connection(std::shared_ptr<Sesion> sesion, sql::Lado lado);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() override; ///< undoes what it has begun

    void Execute(const std::string& sql, std::int32_t* afectadas = nullptr,
        adodb::CommandType tipo = adodb::CommandType::Text, Donde donde = Donde::aqui()) override;
    void BeginTrans(Donde donde = Donde::aqui()) override;
    void CommitTrans(Donde donde = Donde::aqui()) override;
    void RollbackTrans(Donde donde = Donde::aqui()) override;
    [[nodiscard]] std::unique_ptr<adodb::Recordset> CreateRecordset() override;

    /// Raises an error when a statement may not be run now; `escribe`: it changes or locks something.
    void admite(const std::string& sql, bool escribe, Donde donde);
    /// The statement as this database wants it.
    [[nodiscard]] std::string reescribe(const std::string& sql, Donde donde);
    /// The same prepared, with its values; it stays alive until the loan is given back.
    [[nodiscard]] Prestada prepara(const std::string& sql, Donde donde);
    [[nodiscard]] bool en_transaccion() const noexcept;
    [[nodiscard]] Sesion& sesion() const noexcept { return *m_sesion; }
    [[nodiscard]] sqlite3* base() const noexcept { return m_sesion->base(); }

private:
    std::shared_ptr<Sesion> m_sesion;
    sql::Lado m_lado;
};

} // namespace atipicos::sqlite
