#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

namespace atipicos::pruebas {

/// How well one colour can be told from another, 1 to 21, as WCAG 2 counts it; 4.5 is enough for a text.
inline double contraste(const QColor& uno, const QColor& otro)
{
    const auto luminancia = [](const QColor& color) {
        const auto lineal
            = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
        return 0.2126 * lineal(color.redF()) + 0.7152 * lineal(color.greenF())
            + 0.0722 * lineal(color.blueF());
    };
    const auto [menor, mayor] = std::minmax({ luminancia(uno), luminancia(otro) }); // a pair of values
    return (mayor + 0.05) / (menor + 0.05);
}

} // namespace atipicos::pruebas
