#pragma once

#include "engines/postgresql/Enlace.hpp"
#include "engines/sql/Reescritura.hpp"
#include "engines/sql/Vigencia.hpp"
#include "platform/adodb/Connection.hpp"

#include <initializer_list>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace atipicos::postgresql {

/// A table that rows can be written back to.
struct TablaConClave {
    std::string nombre;
    std::string calificado; ///< with its schema, quoted
    std::vector<std::string> clave; ///< columns of its primary key
};

/// A connection to a PostgreSQL server on which statements mean what they mean on SQL Server.
///
/// Inside a transaction a savepoint stands behind the last change, moved along in the round trip of the
/// statement that makes it, so that one that fails undoes itself alone. Queries leave it where it is: they
/// call no function that writes. A lost connection is opened again between transactions: by a query or the
/// beginning of a transaction that finds it lost, or by the operation after the one that was told so.
///
/// Only one thread at a time may use a connection and its recordsets.
class Connection final : public adodb::Connection {
public:
    [[nodiscard]] static std::shared_ptr<Connection> Abrir(
        const Opciones& opciones, Donde donde = Donde::aqui());

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
    /// The same for a query whose rows are to stay locked until the transaction ends. The lock holds others
    /// off also when there is no row yet: of two that mean to add it the second one waits, and finds it.
    [[nodiscard]] Respuesta pide_bloqueando(const std::string& sql, Donde donde);
    /// Runs one statement of the engine's own, as it is.
    [[nodiscard]] Respuesta ejecuta(const std::string& sql, std::span<const Variant> valores, Donde donde);

    [[nodiscard]] bool en_transaccion() const noexcept { return m_en_transaccion; }
    [[nodiscard]] Tipo tipo_de_columna(const PGresult* respuesta, int columna) const;
    [[nodiscard]] const TablaConClave* tabla(Oid numero) const; ///< null: not known
    [[nodiscard]] PGconn* base() const noexcept { return m_enlace.get(); }

private:
    Connection(const Opciones& opciones, Donde donde);
    [[nodiscard]] Respuesta ejecuta_protegida(const Orden& orden, Donde donde);
    /// Outside a transaction; gives the answer to the first.
    [[nodiscard]] Respuesta ejecuta_fuera(std::initializer_list<Orden> ordenes, Donde donde);
    void lee_catalogo(Donde donde);
    void asegura_enlace(Donde donde);
    void comprueba_transaccion(const char* instruccion, Donde donde) const; ///< that one is open

    Enlace m_enlace;
    sql::Catalogo m_catalogo;
    sql::Vigencia m_vigencia; ///< of what has been read of the catalogue
    std::map<Oid, TablaConClave> m_tablas;
    std::set<std::pair<Oid, int>> m_bits; ///< BIT columns, by table and number
    bool m_en_transaccion = false; ///< also when it is lost with the connection
};

} // namespace atipicos::postgresql
