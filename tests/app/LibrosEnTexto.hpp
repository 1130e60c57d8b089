#pragma once

#include <string>

namespace atipicos::bases {
struct Bases;
}

namespace atipicos::pruebas {

/// All charges with what hangs on them, as a bookkeeper reads them: a block for each charge, with its lines,
/// its entry, the record of its tax and its forecasts. Everything that is stored of them is in it but the
/// moment of the save.
[[nodiscard]] std::string libros_en_texto(const bases::Bases& bases);

} // namespace atipicos::pruebas
