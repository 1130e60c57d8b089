#pragma once

#include "host/bases/Lugar.hpp"

#include <filesystem>
#include <string>

namespace atipicos::bases {

/// The command by which the product of a server copies its databases into `destino`, without a password in
/// it. The server is asked which product it is: raises an error when it cannot be reached.
[[nodiscard]] std::string orden_de_copia(
    const Lugar& lugar, const std::filesystem::path& destino, Donde donde = Donde::aqui());

} // namespace atipicos::bases
