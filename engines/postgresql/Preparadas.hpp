#pragma once

#include "engines/postgresql/Enlace.hpp"
#include "engines/sql/Formas.hpp"
#include "engines/sql/Transacciones.hpp"

#include <array>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::postgresql {

/// The statements of a session that the server keeps prepared: one for each shape that a side has run more
/// than once, and for each text of the engine's own.
class Preparadas {
public:
    static constexpr auto bloqueando = "\nFOR UPDATE"; ///< behind a query that is to lock its rows

    /// A statement as it travels when it is prepared.
    struct Pedido {
        Orden orden;
        bool& como_texto; ///< set: the next ones of its shape go as text
    };

    /// A statement of a side, until the next call. With `bloquea` its rows are to be locked. Nothing when it
    /// is to go as text. Raises the errors of the rewriting.
    [[nodiscard]] std::optional<Pedido> de_lado(
        sql::Lado lado, std::string_view sql, bool bloquea, const sql::Catalogo& catalogo, Donde donde);
    [[nodiscard]] Preparada* propia(std::string_view sql); ///< null: it is to be sent as it is

    void olvida_formas() noexcept; ///< when tables are no longer what they were

private:
    /// What is kept of a shape. The server spends on preparing what it saves the second time: a statement
    /// that comes only once goes as text.
    struct Guardada {
        std::unique_ptr<Preparada> preparada;
        std::size_t veces = 0;
        bool como_texto = false;
    };
    struct DeForma {
        std::array<Guardada, 2> guardadas; ///< without and with the lock
        std::string bloqueando; ///< the text with the lock
    };
    using Formas = sql::Formas<DeForma>;

    [[nodiscard]] bool toma_valores(const Formas& formas, const sql::Forma& forma);
    static Preparada& prepara(Guardada& guardada, const sql::Forma& forma, const Formas& formas);

    static constexpr std::size_t maximo_de_propias = 64;

    std::array<Formas, 2> m_formas{ Formas(sql::Numeros::con_tipo), Formas(sql::Numeros::con_tipo) };
    std::map<std::string, Guardada, std::less<>> m_propias;
    std::vector<Texto> m_valores; ///< of the statement asked for last
};

} // namespace atipicos::postgresql
