#pragma once

#include "engines/postgresql/Enlace.hpp"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace atipicos::postgresql {

/// Statements that travel together, and which of them is the one that it is about.
struct Envio {
    std::vector<Orden> ordenes;
    std::size_t lugar = 0;
};

/// How far the server has been told of the transaction of its session. Its beginning, and the savepoint `u`
/// of a unit, travel with the next statement: a transaction without statements costs nothing.
///
/// Behind the last change stands a savepoint `s`, moved along with each change, so that a statement that
/// fails undoes itself alone. Before the first change there is none: then everything is undone, which is
/// nothing.
class Puntos {
public:
    void empieza() noexcept { *this = {}; }
    void pon() noexcept; ///< `u`, in the place of the one before
    void vuelve() noexcept; ///< to `u`, which is no more afterwards

    [[nodiscard]] bool empezada() const noexcept { return m_empezada; } ///< as the server knows it
    [[nodiscard]] bool cambiada() const noexcept { return m_cambiada; } ///< something, or locked it

    /// The statement with what must go before and behind it. `cambia`: it changes or locks something.
    [[nodiscard]] Envio con(const Orden& orden, bool cambia) const;
    void lograda(bool cambia) noexcept; ///< the whole of it was done
    /// The statement failed, and those before it were done or, `previas` false, were not. Gives what undoes
    /// the failure and nothing else.
    [[nodiscard]] const char* fallida(bool previas) noexcept;

    /// The commit with what must go before it; nothing when the server knows of no transaction.
    [[nodiscard]] std::vector<Orden> confirmacion() const;

private:
    enum class Unidad : std::uint8_t {
        sin_punto,
        por_poner,
        puesto,
        por_mover, ///< it is where the transaction before began
        por_volver,
    };

    void agrega_previas(std::vector<Orden>& ordenes) const;
    void cumple_previas() noexcept;

    Unidad m_unidad = Unidad::sin_punto;
    bool m_empezada = false;
    bool m_tras_cambio = false; ///< `s` is set
    bool m_cambiada = false;
};

} // namespace atipicos::postgresql
