#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace atipicos::app {

struct FilaCsv {
    int numero = 0; ///< line of the file on which the row begins, 1-based; blank lines count
    std::vector<std::string> campos;
};

/// The rows of a text with ";" between fields and fields with separators, quotes or line breaks between
/// quotes; blank lines are left out. Raises an error that names the row when the quotes are out of place.
[[nodiscard]] std::vector<FilaCsv> lee_csv(std::string_view contenido);

} // namespace atipicos::app
