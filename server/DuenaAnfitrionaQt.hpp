#pragma once

#include "automation/Despacho.hpp"
#include "controls/Duena.hpp"
#include "runtime/Error.hpp"

namespace atipicos::server {

/// The window that stands behind an object of the host: the one whose handle its `hWnd` gives. None for no
/// object. Errors: those of the object, 438 when it has no `hWnd`, 13 when that is no whole number, 1002 when
/// it is 0.
[[nodiscard]] Duena duena_de(const automation::Despacho& ventana, Donde donde = Donde::aqui());

} // namespace atipicos::server
