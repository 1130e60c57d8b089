#pragma once

#include <QObject>

#include <vector>

namespace atipicos {

class VSFlexGrid;

/// Lets columns of a grid, and controls, follow the size of their form. The design size of a form is the one
/// at which they have the widths that they were registered with; whatever it is wider, because it opens so or
/// is made so, has been gained, and each of them takes its share of it. Columns share what is lost in the
/// same way.
class Anclaje final : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Anclaje)
public:
    explicit Anclaje(VSFlexGrid& rejilla); ///< belongs to the grid

    void AgregarColumna(
        int columna, int porcentaje); ///< with its width of now; after all widths have been set

    /// Anchors a control that a layout places: never narrower than `twips`.
    static void AgregarControl(QWidget& control, int twips, int porcentaje);

    /// Pixels that the grid has inside its frame when the form has its design size: its columns fill it.
    [[nodiscard]] int AnchoDeDiseno() const;

    void Reajustar(); ///< done by itself whenever the grid changes its width

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    struct Columna {
        int columna;
        int ancho; ///< pixels
        int porcentaje;
    };

    VSFlexGrid& m_rejilla;
    std::vector<Columna> m_columnas;
};

} // namespace atipicos
