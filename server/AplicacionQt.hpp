#pragma once

namespace atipicos::server {

/// Whether there is a display to open windows on, and no application of the host that cannot have any.
[[nodiscard]] bool hay_pantalla();

/// Makes the application object that windows need, unless the host has one; from then on the component stays
/// loaded. Raises an error where there is no display, or the host's application cannot have windows.
void aplicacion();

} // namespace atipicos::server
