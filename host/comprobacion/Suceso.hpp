#pragma once

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

/// A save of a changed charge deletes its rows and writes all of them again, and the database writes both
/// down. Makes one change of what went and came again at once, by the same hand; a line that came again as it
/// was has not been changed, and is left out. The rest stays in its order.
[[nodiscard]] std::vector<Suceso> sin_reescritos(std::vector<Suceso> sucesos);

} // namespace atipicos::app
