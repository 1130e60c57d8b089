#pragma once

#include "engines/sql/Unidad.hpp"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace atipicos::app {

/// Saves that are committed together, so that many of them wait for the disk once, and are over soon, so that
/// no other workstation waits for long. The first units are small: what goes wrong at their end costs little.
class Tanda {
public:
    using Reloj = std::chrono::steady_clock;

    /// Charges that are numbered by one counter.
    struct Serie {
        std::int16_t ejercicio = 0;
        std::int16_t almacen = 0;
        friend bool operator==(const Serie&, const Serie&) = default;
    };

    /// Without `transacciones` every save commits itself. `por_serie`: the database locks the counters one by
    /// one; saves of two series, in any order, would be waiting for others that wait for them.
    Tanda(std::shared_ptr<sql::Transacciones> transacciones, bool por_serie,
        std::function<Reloj::time_point()> ahora = &Reloj::now);

    [[nodiscard]] bool abierta() const noexcept { return m_unidad.has_value(); }

    /// Whether a save of that series may still come into it.
    [[nodiscard]] bool admite(const Serie& serie) const;

    void empieza(const Serie& serie); ///< a save: begins the unit with the first one; raises what is wrong

    /// Commits what it holds. Having raised an error it holds nothing, and nothing of it is kept.
    void cierra();

    /// Lets others in, who look every few milliseconds, once they have been kept out long enough.
    void descansa();

private:
    [[nodiscard]] std::chrono::nanoseconds la_mas_larga() const;

    std::shared_ptr<sql::Transacciones> m_transacciones;
    bool m_por_serie;
    std::function<Reloj::time_point()> m_ahora;
    std::optional<sql::Unidad> m_unidad;
    Serie m_serie;
    std::size_t m_cuantas = 0;
    std::size_t m_maximo = 1;
    Reloj::time_point m_comienzo;
    Reloj::time_point m_ultima; ///< when the last save began
    std::chrono::nanoseconds m_larga{}; ///< the longest save of the unit, but for the last
    std::chrono::nanoseconds m_ocupado{}; ///< since others were let in
};

} // namespace atipicos::app
