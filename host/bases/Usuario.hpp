#pragma once

#include <string>

namespace atipicos::bases {

/// Who runs this program on this machine: by name where he has one, else by number.
[[nodiscard]] std::string usuario_de_la_maquina();

} // namespace atipicos::bases
