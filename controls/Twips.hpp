#pragma once

#include <QWidget>

#include <cmath>

namespace atipicos {

/// A length in twips (1440 to the inch) as pixels of the screen that `widget` is on.
[[nodiscard]] inline int twips_a_pixeles(int twips, const QWidget& widget)
{
    return static_cast<int>(std::lround(twips * widget.logicalDpiX() / 1440.0));
}

} // namespace atipicos
