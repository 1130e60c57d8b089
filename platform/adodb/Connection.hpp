#pragma once

#include "runtime/Error.hpp"
#include "runtime/Variant.hpp"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

/// The few operations of a database connection that the component uses. Statements are plain texts,
/// written for SQL Server; an engine gives them that meaning on its own database.
namespace atipicos::adodb {

enum class CursorType : std::uint8_t { ForwardOnly, Keyset, Static };
enum class LockType : std::uint8_t { ReadOnly, Pessimistic };
enum class CommandType : std::uint8_t { Text };

/// What kind of thing went wrong in the database, whatever the database is.
enum class Categoria : std::uint8_t {
    instruccion, ///< the statement is not one the database understands, or a value in it is not valid
    restriccion, ///< a key or a condition of a table refuses it
    bloqueo, ///< another user held what was needed for too long
    solo_lectura, ///< the database does not let itself be written
    conexion, ///< not open, not reachable or lost
    no_existe, ///< the server is there, and has no such database, or none that this user may enter
    otra,
};

/// An error of the database: its own text as description, the statement that failed, and its kind.
class ErrorBaseDatos : public Error {
public:
    ErrorBaseDatos(Categoria categoria, std::string fuente, std::string descripcion, std::string instruccion,
        Donde donde);
    /// The same with the number that the database gave, which says its kind where it is one of those above.
    ErrorBaseDatos(std::int32_t numero, std::string fuente, std::string descripcion, std::string instruccion,
        Donde donde);

    [[nodiscard]] Categoria categoria() const noexcept { return m_categoria; }
    [[nodiscard]] const std::string& instruccion() const noexcept { return m_instruccion; }

private:
    Categoria m_categoria;
    std::string m_instruccion;
};

/// One column of a recordset. It belongs to the recordset, reads its current row, and is valid until
/// `Close`: fetch it once before a loop over the rows.
class Field {
public:
    Field() = default;
    Field(const Field&) = delete;
    Field& operator=(const Field&) = delete;
    virtual ~Field() = default;

    [[nodiscard]] virtual const std::string& Name() const noexcept = 0;

    /// The value in the current row. Money columns give `Currency`, date columns `Date`, bit columns `bool`.
    [[nodiscard]] virtual Variant Value(Donde donde = Donde::aqui()) const = 0;

    /// Appends the text of the current row's value to `destino`; null and empty append nothing.
    /// For texts and whole numbers; it saves a copy where rows come by the hundred thousand.
    virtual void anexa_texto(std::string& destino) const = 0;

    /// Sets the value in the row being added or changed; written by `Recordset::Update`.
    virtual void Value(const Variant& valor, Donde donde = Donde::aqui()) = 0;
};

/// The rows that a query returns. Destroying it closes it; changes without `Update` are dropped.
class Recordset {
public:
    Recordset() = default;
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;
    virtual ~Recordset() = default;

    /// Runs `sql` and stands on the first row. With `LockType::Pessimistic` the rows stay locked against
    /// other users until the transaction ends, or until `Update` or `Close` when there is none.
    virtual void Open(const std::string& sql, CursorType cursor, LockType bloqueo,
        CommandType tipo = CommandType::Text, Donde donde = Donde::aqui())
        = 0;

    [[nodiscard]] virtual bool Eof() const noexcept = 0; ///< past the last row, or no rows at all
    virtual void MoveNext(Donde donde = Donde::aqui()) = 0;
    [[nodiscard]] virtual std::size_t Count() const noexcept = 0; ///< number of fields

    /// The field of that name, compared without case. Raises an error of the database when there is none.
    [[nodiscard]] virtual Field& Fields(std::string_view nombre, Donde donde = Donde::aqui()) = 0;
    [[nodiscard]] virtual Field& Fields(std::size_t posicion, Donde donde = Donde::aqui()) = 0; ///< 0-based

    virtual void AddNew(Donde donde = Donde::aqui()) = 0; ///< starts a new row, all of it null
    virtual void Update(Donde donde = Donde::aqui()) = 0; ///< writes the new or changed row
    virtual void Close(Donde donde = Donde::aqui()) = 0;
};

/// An open connection. All failures raise `ErrorBaseDatos`; a statement that fails undoes itself alone
/// and leaves the transaction usable.
class Connection {
public:
    Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    virtual ~Connection() = default;

    /// Runs one statement that returns no rows; text after the first statement is refused.
    /// `afectadas`, when given, receives the number of rows affected.
    virtual void Execute(const std::string& sql, std::int32_t* afectadas = nullptr,
        CommandType tipo = CommandType::Text, Donde donde = Donde::aqui())
        = 0;

    virtual void BeginTrans(Donde donde = Donde::aqui()) = 0;
    virtual void CommitTrans(Donde donde = Donde::aqui()) = 0;
    virtual void RollbackTrans(Donde donde = Donde::aqui()) = 0;

    /// A closed recordset of this connection; it must not outlive it.
    [[nodiscard]] virtual std::unique_ptr<Recordset> CreateRecordset() = 0;
};

} // namespace atipicos::adodb
