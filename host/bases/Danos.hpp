#pragma once

#include "host/bases/Bases.hpp"

#include <string>
#include <vector>

namespace atipicos::bases {

/// What the database product finds wrong with its own file: pages, indexes, rows that name others which are
/// not there. Reads all of it. Empty: nothing, or it is on a server, which answers for its files itself.
[[nodiscard]] std::vector<std::string> danos(const Bases& bases);

} // namespace atipicos::bases
