#pragma once

#include <QColor>
#include <QPainterPath>

#include <vector>

class QIODevice;
class QPainter;

namespace atipicos {

/// A drawing of lines on a square of 16 by 16, read from the part of SVG that the component's icons need:
/// `path` with M, L, H, V, C and Z, all absolute, and `circle`; attributes `fill`, `stroke` and
/// `stroke-width`, which `svg` hands down.
class DibujoSvg {
public:
    /// Whatever is not understood is left out.
    [[nodiscard]] static DibujoSvg lee(QIODevice& fichero);

    [[nodiscard]] bool vacio() const noexcept { return m_trazos.empty(); }

    /// `currentColor` is `corriente`.
    void pinta(QPainter& pintor, const QRectF& donde, const QColor& corriente) const;

    static constexpr double lado = 16;

private:
    /// How something is drawn, in the words of the file.
    struct Tinta {
        QString relleno = QStringLiteral("none");
        QString linea = QStringLiteral("none");
        double grueso = 1;
    };
    struct Trazo {
        QPainterPath forma;
        Tinta tinta;
    };

    std::vector<Trazo> m_trazos;
};

} // namespace atipicos
