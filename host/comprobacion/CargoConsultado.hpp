#pragma once

#include "browser/DetalleAtipico.hpp"
#include "browser/ListaAtipicos.hpp"
#include "host/comprobacion/ClaveAsiento.hpp"
#include "runtime/Date.hpp"

#include <optional>

namespace atipicos::app {

/// The header of a stored charge as a command asks for it; the names are those of the catalogues.
struct CargoConsultado {
    CargoListado cabecera;
    std::int16_t EmpContable = 0;
    Date Hora;

    /// Where its entry stands: the accounting year is that of its date.
    [[nodiscard]] ClaveAsiento asiento() const;
};

/// The charge of that key in the current company, or nothing when there is none.
[[nodiscard]] std::optional<CargoConsultado> busca_cargo(const ClaveCargo& clave);

/// Raises the error that says that there is no such charge.
[[noreturn]] void no_existe(const ClaveCargo& clave);

} // namespace atipicos::app
