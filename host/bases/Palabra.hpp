#pragma once

#include <string>

namespace atipicos::bases {

/// The text as one word of a command line, between quotes where a shell would take it otherwise.
[[nodiscard]] std::string como_palabra(const std::string& texto);

} // namespace atipicos::bases
