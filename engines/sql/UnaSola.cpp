#include "engines/sql/UnaSola.hpp"

#include <array>
#include <utility>

namespace atipicos::sql {

namespace {

    /// Reserved words that begin a statement of Transact-SQL and stand inside no query or change of rows.
    constexpr std::array<std::string_view, 38> comienzos{ "ALTER", "BACKUP", "BEGIN", "BULK", "CHECKPOINT",
        "CLOSE", "COMMIT", "CREATE", "DBCC", "DEALLOCATE", "DECLARE", "DELETE", "DENY", "DROP", "EXEC",
        "EXECUTE", "FETCH", "GOTO", "GRANT", "IF", "INSERT", "KILL", "MERGE", "OPEN", "PRINT", "RAISERROR",
        "RECONFIGURE", "RESTORE", "RETURN", "REVERT", "REVOKE", "ROLLBACK", "SAVE", "SHUTDOWN", "TRUNCATE",
        "UPDATE", "USE", "WAITFOR" };
    constexpr std::array<std::string_view, 4> de_filas{ "DELETE", "INSERT", "SELECT", "UPDATE" };
    constexpr std::array<std::string_view, 4> enlaces{ "ALL", "EXCEPT", "INTERSECT", "UNION" };

    bool sin_punto_y_coma(const Vista& vista, bool disparador) noexcept
    {
        for (std::size_t i = 0; i + 1 < vista.size(); ++i) {
            const bool acaba = vista.es(i - 1, "END") && vista.es(i - 2, ";");
            if (vista.es(i, ";") && (acaba || !disparador))
                return false;
        }
        return true;
    }

    /// Behind the first word, and outside parentheses: SET belongs to the first UPDATE, SELECT to an INSERT
    /// without VALUES or to what links it to another SELECT.
    bool sin_otro_comienzo(const Vista& vista) noexcept
    {
        bool cabe_set = vista.es(0, "UPDATE");
        bool cabe_select = vista.es(0, "INSERT");
        int profundidad = 0;
        for (std::size_t i = 1; i < vista.size(); ++i) {
            profundidad += vista.es(i, "(") ? 1 : vista.es(i, ")") ? -1 : 0;
            if (vista.es_una_de(i, comienzos))
                return false;
            if (vista.es(i, "VALUES"))
                cabe_select = false;
            if (vista.es(i, "SET") && !std::exchange(cabe_set, false))
                return false;
            if (vista.es(i, "SELECT") && profundidad <= 0 && !vista.es_una_de(i - 1, enlaces)
                && !std::exchange(cabe_select, false))
                return false;
        }
        return true;
    }

}

bool es_una_sola(std::string_view sql, const Vista& vista, bool transact) noexcept
{
    return sin_punto_y_coma(vista, crea_disparador(sql))
        && (!transact || !vista.es_una_de(0, de_filas) || sin_otro_comienzo(vista));
}

} // namespace atipicos::sql
