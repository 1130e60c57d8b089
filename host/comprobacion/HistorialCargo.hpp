#pragma once

#include "charges/ClaveCargo.hpp"
#include "host/comprobacion/Suceso.hpp"
#include "platform/adodb/Connection.hpp"

#include <cstdint>
#include <vector>

namespace atipicos::app {

struct HistorialCargo {
    /// In their order, reversals of the entries that it has had included. None: nothing has been done to it
    /// since the database writes it down.
    std::vector<Suceso> sucesos;
    bool existe = false; ///< the charge is there now
};

/// What has been done to the charge of that key in a management company. Raises the errors of the database;
/// its user may not be let read it.
[[nodiscard]] HistorialCargo historial_de(
    adodb::Connection& orvalin, std::int16_t empresa, const ClaveCargo& clave);

} // namespace atipicos::app
