#pragma once

#include "bench/Desnudo.hpp"
#include "engines/sqlite/Connection.hpp"

#include <string>
#include <vector>

namespace atipicos::bench {

struct Dicha {
    bool contable = false; ///< on the accounting connection
    std::string sql;
};
using Guion = std::vector<Dicha>; ///< the statements of one operation, as the database ran them

/// Notes every statement that a connection runs, with its values in it.
class Taquigrafo {
public:
    Taquigrafo(adodb::Connection& conexion, bool contable, Guion& guion)
        : m_contable(contable)
        , m_guion(guion)
    {
        auto* base = dynamic_cast<sqlite::Connection&>(conexion).base();
        sqlite3_trace_v2(base, SQLITE_TRACE_STMT, &Taquigrafo::anota, this);
    }

private:
    static int anota(unsigned, void* quien, void* instruccion, void*)
    {
        auto* yo = static_cast<Taquigrafo*>(quien);
        char* sql = sqlite3_expanded_sql(static_cast<sqlite3_stmt*>(instruccion));
        const std::string texto = sql;
        sqlite3_free(sql);
        // What the engine looks up for itself, and what that runs in turn, is not part of the floor.
        if (!texto.starts_with("--") && texto.find("pragma_") == std::string::npos)
            yo->m_guion.push_back({ yo->m_contable, texto });
        return 0;
    }

    bool m_contable;
    Guion& m_guion;
};

} // namespace atipicos::bench
