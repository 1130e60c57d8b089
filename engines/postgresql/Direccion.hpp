#pragma once

#include "runtime/Error.hpp"

#include <map>
#include <string>

namespace atipicos::postgresql {

/// What the address of a database says, taken apart.
struct Direccion {
    std::map<std::string, std::string> parametros; ///< those of the client library
    bool preparadas = true; ///< `preparadas=no` is ours: statements are not to be prepared
};

/// Raises an error when the address is not understood, or bears a password, which it does not repeat.
[[nodiscard]] Direccion lee_direccion(std::string direccion, Donde donde);

} // namespace atipicos::postgresql
