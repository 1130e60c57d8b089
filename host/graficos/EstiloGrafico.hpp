#pragma once

#include <QColor>
#include <QFont>

#include <cstddef>

class QPalette;

namespace atipicos::app {

/// Colours and letters of a chart, and how much there is room for.
struct EstiloGrafico {
    QColor fondo;
    QColor texto;
    QColor rejilla; ///< lines behind the drawing
    QColor ahora;
    QColor antes; ///< of the year before; told apart by more than its colour
    QFont letra;
    std::size_t barras; ///< groups there is room for; the others are drawn as one
    int meses; ///< names of months there is room for, under a line
    bool con_leyenda; ///< under the line too, which has the colours of the bars

    /// As the windows look at the moment, light or dark; for half a window.
    [[nodiscard]] static EstiloGrafico de_pantalla(const QPalette& paleta, const QFont& letra);
    /// For paper and files: black on white, letters of `pixeles`.
    [[nodiscard]] static EstiloGrafico de_papel(int pixeles);
};

} // namespace atipicos::app
