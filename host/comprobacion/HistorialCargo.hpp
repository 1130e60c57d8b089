#pragma once

#include "charges/ClaveCargo.hpp"
#include "platform/adodb/Connection.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace atipicos::app {

/// A row as a person may compare it: texts by the names of its columns.
using FilaLeida = std::map<std::string, std::string>;

/// Something that has been done to a charge, as the database wrote it down.
struct Suceso {
    enum class Que : std::uint8_t { alta, cambio, baja, anulacion };

    Que que = Que::alta;
    Date momento;
    std::int32_t linea = 0; ///< 0: the header
    std::string usuario; ///< whom the header names, or who reversed; empty: it is not written down
    std::string login; ///< as machine or server knows him; empty: another program on a file
    std::string puesto;
    std::optional<FilaLeida> antes = {}; ///< nothing: it was not there
    std::optional<FilaLeida> despues = {}; ///< nothing: it is gone
    std::string asiento = {}; ///< of a reversal: the entry, and the one that reverses it
};

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
