#pragma once

#include "tests/support/ConexionEspia.hpp"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::bench {

/// What a connection was asked for, in the words of whoever asked.
struct Dicha {
    enum class Clase : std::uint8_t {
        instruccion,
        bloqueo, ///< a query whose rows are to be written back
        empieza,
        confirma,
        deshace,
    };

    bool contable = false; ///< on the accounting connection
    Clase clase = Clase::instruccion;
    std::string sql = {};
};
using Guion = std::vector<Dicha>; ///< one operation

/// What the spies have seen. A row read under a lock and written back is a counter: its query, and an UPDATE
/// by its key. A counter must have begun, because a row that is added is not told from one that is changed.
[[nodiscard]] inline Guion transcribe(const pruebas::Parte& parte)
{
    using Clase = Dicha::Clase;
    constexpr std::string_view contabilidad = "contabilidad ";
    constexpr std::string_view todo_de = "SELECT * FROM ";
    Guion guion;
    for (const auto& dicha : parte.dichas) {
        const bool contable = dicha.starts_with(contabilidad);
        const auto que = dicha.substr(dicha.find(' ') + 1);
        if (que == "BEGIN")
            guion.push_back({ contable, Clase::empieza });
        else if (que == "COMMIT")
            guion.push_back({ contable, Clase::confirma });
        else if (que == "ROLLBACK")
            guion.push_back({ contable, Clase::deshace });
        else if (que.starts_with("EXEC ") || que.starts_with("OPEN "))
            guion.push_back({ contable, Clase::instruccion, que.substr(5) });
        else {
            if (guion.empty() || guion.back().contable != contable || !guion.back().sql.starts_with(todo_de))
                throw std::runtime_error("not understood: " + dicha);
            guion.back().clase = Clase::bloqueo;
            const auto resto = guion.back().sql.substr(todo_de.size()); // tabla WHERE …
            const auto fin = resto.find(' ');
            guion.push_back({ contable, Clase::instruccion,
                "UPDATE " + resto.substr(0, fin) + " SET Numero = Numero + 1" + resto.substr(fin) });
        }
    }
    return guion;
}

} // namespace atipicos::bench
