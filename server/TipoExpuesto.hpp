#pragma once

#include "server/Clase.hpp"

namespace atipicos::server {

/// The type information of a class as the system gives it to hosts, made of the table that the class is
/// called by. A hold for the caller; null where there is no such thing, elsewhere than on Windows. Throws a
/// `Fallo` with the system's result when it cannot be made.
[[nodiscard]] ITypeInfo* tipo_de(const Clase& clase);

} // namespace atipicos::server
