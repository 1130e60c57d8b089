#pragma once

#include "platform/adodb/Connection.hpp"

#include <map>
#include <string>
#include <vector>

namespace atipicos::pruebas {

/// The rows with which a query is answered.
struct Tabla {
    std::vector<std::string> campos;
    std::vector<std::vector<Variant>> filas;
};

/// A connection without a database: it writes down, letter by letter, everything it is asked for, and
/// answers queries with prepared rows. Asked for a column that they have not it raises an error, and says on
/// the standard error which column, of which query, and which line of the program wants it.
class ConexionDePrueba final : public adodb::Connection {
public:
    /// "BEGIN", "COMMIT", "ROLLBACK", "EXEC " + text, "OPEN <cursor> <lock> " + text,
    /// "ADDNEW", "UPDATE field=value …", "CLOSE".
    std::vector<std::string> dichas;

    void responde(const std::string& comienzo, Tabla tabla); ///< to queries that begin so; else no rows
    void afecta(const std::string& comienzo, std::int32_t filas); ///< rows affected; else 1
    void falla(const std::string& comienzo, std::string descripcion); ///< statements that begin so fail

    void Execute(const std::string& sql, std::int32_t* afectadas, adodb::CommandType, Donde donde) override;
    void BeginTrans(Donde) override { dichas.emplace_back("BEGIN"); }
    void CommitTrans(Donde) override { dichas.emplace_back("COMMIT"); }
    void RollbackTrans(Donde) override { dichas.emplace_back("ROLLBACK"); }
    std::unique_ptr<adodb::Recordset> CreateRecordset() override;

    [[nodiscard]] const Tabla& respuesta(const std::string& sql) const;
    void comprueba(const std::string& sql, Donde donde) const; ///< raises the prepared failure

private:
    std::map<std::string, Tabla> m_respuestas;
    std::map<std::string, std::int32_t> m_afectadas;
    std::map<std::string, std::string> m_fallos;
};

} // namespace atipicos::pruebas
