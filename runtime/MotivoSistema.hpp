#pragma once

#include <string>

namespace atipicos {

/// What an error number of the operating system (`errno`) means, in Spanish, to follow a colon: "no existe".
[[nodiscard]] std::string motivo_sistema(int numero);

} // namespace atipicos
