#pragma once

#include "charges/ClaveCargo.hpp"
#include "controls/Formulario.hpp"
#include "host/bases/Lugar.hpp"
#include "host/comprobacion/HistorialCargo.hpp"
#include "host/orvalin/Catalogos.hpp"
#include "host/ventanas/HiloLector.hpp"

#include <optional>

class QGridLayout;
class QLabel;
class QLineEdit;
class QSpinBox;

namespace atipicos {
class qvAlmacen;
class VSFlexGrid;
}

namespace atipicos::app {

class Sesion;

/// Who has recorded, changed or deleted a charge, or reversed its entry: a list of what was done, and of the
/// chosen one the values before and after. Also of a charge that is gone. It reads without being waited for.
///
/// Enter in a field and F5 read; Escape closes it.
class frmHistorial final : public Formulario {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmHistorial)
public:
    frmHistorial(Sesion& sesion, const bases::Lugar& lugar, QWidget* parent = nullptr); ///< both outlive it

    void Muestra(const ClaveCargo& clave); ///< puts it into the fields, and reads
    void Leer(); ///< of the charge that the fields say, or tells what is missing in them

protected:
    void keyPressEvent(QKeyEvent* tecla) override;

private:
    /// What was read of a charge.
    struct Leido {
        ClaveCargo clave;
        HistorialCargo historial;
        bool repartida = false; ///< the database writes down nothing of what is done now
    };

    void hace_campos(QGridLayout& caja);
    void hace_listas();
    [[nodiscard]] std::optional<ClaveCargo> clave();
    void vacia();
    void muestra(const Leido& leido);
    void muestra_datos();

    bases::Lugar m_lugar;
    std::vector<orvalin::Ficha> m_usuarios;
    QLineEdit* m_codigo;
    QSpinBox* m_ejercicio;
    qvAlmacen* m_almacen;
    QLabel* m_estado;
    VSFlexGrid* m_sucesos;
    VSFlexGrid* m_datos;
    std::vector<Suceso> m_leidos; ///< by row
    HiloLector m_lector; ///< ends first
};

/// Opens the window of histories, or brings the one of `padre` to the front; with a charge, on it.
void abre_historial(
    Sesion& sesion, const bases::Lugar& lugar, const std::optional<ClaveCargo>& cargo, QWidget& padre);

} // namespace atipicos::app
