#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace atipicos::app {

/// The text in lower case without accents, as one looks for a name: "Ñandú" and "nandu" are the same.
/// UTF-8; letters beyond those of the languages of western Europe stay as they are.
[[nodiscard]] std::string plano(std::string_view texto);

/// The words of a plain text.
[[nodiscard]] std::vector<std::string> palabras(std::string_view plano);

} // namespace atipicos::app
