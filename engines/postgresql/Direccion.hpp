#pragma once

#include "runtime/Error.hpp"

#include <chrono>
#include <map>
#include <string>

namespace atipicos::postgresql {

/// What the address of a database says, taken apart.
struct Direccion {
    std::map<std::string, std::string> parametros; ///< those of the client library
    bool preparadas = true; ///< `preparadas=no` is ours: statements are not to be prepared
    /// `reintento=30` is ours: for how many seconds it is tried to open a lost line again; 0: once.
    std::chrono::seconds reintento{ 120 };
};

/// Raises an error when the address is not understood, or bears a password, which it does not repeat.
[[nodiscard]] Direccion lee_direccion(std::string direccion, Donde donde);

} // namespace atipicos::postgresql
