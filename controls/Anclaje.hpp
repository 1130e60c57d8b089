#pragma once

#include <QObject>

#include <vector>

namespace atipicos {

class VSFlexGrid;

/// Lets columns of a grid follow its width: of what the grid gains or loses against the widths that its
/// columns had when they were registered, each registered column takes its share.
class Anclaje final : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Anclaje)
public:
    explicit Anclaje(VSFlexGrid& rejilla); ///< belongs to the grid

    void AgregarColumna(int columna, int porcentaje); ///< with its width of now
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
