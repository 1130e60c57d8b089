#pragma once

namespace atipicos {

/// Has what only the mouse can drag (between two parts of a window, at its corner) read as a separator:
/// Qt 6.4 tells AT-SPI that it does not know what it is. Of the whole program, once.
void lee_tiradores();

} // namespace atipicos
