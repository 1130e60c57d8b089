#pragma once

#include "platform/adodb/Connection.hpp"

#include <string>
#include <string_view>

/// Fields of the current row, read so that a null counts as nothing.
namespace atipicos::adodb {

[[nodiscard]] std::string texto(Recordset& rs, std::string_view campo, Donde donde = Donde::aqui()); ///< ""
[[nodiscard]] std::int16_t entero(Recordset& rs, std::string_view campo, Donde donde = Donde::aqui()); ///< 0

} // namespace atipicos::adodb
