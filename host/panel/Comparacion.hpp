#pragma once

#include "host/panel/Ambito.hpp"
#include "host/sql/Periodo.hpp"
#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <optional>

namespace atipicos::app {

/// What the charges of some days come to.
struct Totales {
    std::int64_t cuantos = 0;
    Currency base;
    Currency impuesto;

    [[nodiscard]] Currency total() const { return base + impuesto; }
    friend bool operator==(const Totales&, const Totales&) = default;
};

/// The periods that are compared, each with as many days as the one beside it has so far: this month until
/// today, the month before until the same day of it, and so the year.
struct Periodos {
    Periodo mes;
    Periodo mes_anterior;
    Periodo anio;
    Periodo anio_anterior;

    [[nodiscard]] static Periodos de(Date hoy);
};

struct Comparacion {
    Periodos periodos;
    Totales mes;
    Totales mes_anterior;
    Totales anio;
    Totales anio_anterior;
};

/// One statement, which the database adds up by days; nothing when given up.
[[nodiscard]] std::optional<Comparacion> compara(const Ambito& ambito, Date hoy, const Sigue& sigue);

/// By how much the second is more than the first, in percent without decimals; nothing from 0.
[[nodiscard]] std::optional<std::int64_t> cambio(Currency antes, Currency ahora);

} // namespace atipicos::app
