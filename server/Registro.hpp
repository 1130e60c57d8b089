#pragma once

#include "automation/com.hpp"

namespace atipicos::server {

/// Registers the public classes for the current user: their names and identifiers lead to this library. Needs
/// no rights of an administrator, and does no harm when it is done again.
///
/// Elsewhere than on Windows there is nothing to write: whoever loads the library asks it for a class.
[[nodiscard]] automation::HRESULT registra();

/// Takes back what `registra` wrote, whoever wrote it.
[[nodiscard]] automation::HRESULT borra_registro();

} // namespace atipicos::server
