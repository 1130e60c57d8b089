#pragma once

#include "controls/Formulario.hpp"
#include "host/bases/Lugar.hpp"
#include "host/comprobacion/AsientoSinCargo.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/ventanas/HiloLector.hpp"

#include <vector>

class QDateEdit;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace atipicos {
class VSFlexGrid;
}

namespace atipicos::app {

/// The entries that no charge has any more, each with what it is, and the button that reverses those that are
/// certain to be left over. They are looked for by a thread, because all books are read for that.
class frmAnular final : public Formulario {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmAnular)
public:
    frmAnular(Sesion& sesion, const bases::Lugar& lugar, QWidget* parent = nullptr); ///< both outlive it

private:
    void hace_lista();
    void hace_pie(QVBoxLayout& caja);
    void lee();
    void muestra(const std::vector<AsientoSinCargo>& todos);
    void anula();

    Sesion& m_sesion;
    std::vector<AsientoSinCargo> m_sobran;
    QLabel* m_estado;
    VSFlexGrid* m_rejilla;
    QDateEdit* m_fecha;
    QPushButton* m_anular;
    HiloLector m_lector; ///< ends first
};

} // namespace atipicos::app
