#pragma once

#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <string>
#include <string_view>

/// Values written into the texts of statements.
namespace atipicos::sql {

/// The text between single quotes, those inside it doubled. Error 5 when it holds a NUL, which would end
/// the statement there.
[[nodiscard]] std::string literal(std::string_view texto, Donde donde = Donde::aqui());

[[nodiscard]] std::string literal(Date fecha); ///< regional text between single quotes
[[nodiscard]] std::string literal(Currency importe, Donde donde = Donde::aqui()); ///< plain number

} // namespace atipicos::sql
