#pragma once

#include "platform/adodb/Connection.hpp"

#include <string>
#include <vector>

namespace atipicos::orvalin {

/// The names by which the accounting companies say that their database is called. Where both products share
/// one database all of them mean its accounting schema.
[[nodiscard]] std::vector<std::string> nombres_de_bexmor(adodb::Connection& bexmor, Donde donde);

} // namespace atipicos::orvalin
