// What is kept of a charge until it is saved.
#include "editor/frmCompras_Atipicos.hpp"

#include "context/modComun.hpp"
#include "context/trap.hpp"
#include "controls/Texto.hpp"
#include "ui_frmCompras_Atipicos.h"

#include <QApplication>
#include <QLabel>

namespace atipicos {

void frmCompras_Atipicos::empieza_borrador()
{
    m_cargado.clear();
    for (const auto& fila : m_edicion.filas())
        m_cargado += fila.texto(decimales_costo()) + '\n';
    m_borrador.Empezar(lo_tecleado());
    m_lblBorrador->hide();
    m_ui->cmdSalir->setToolTip(modComun::comparte_Borradores()
            ? QStringLiteral("Cierra la ventana; lo que no se haya guardado queda como borrador (Alt+S)")
            : QStringLiteral("Cierra la ventana; lo que no se haya guardado se pierde (Alt+S)"));
}

Borrador frmCompras_Atipicos::lo_tecleado() const
{
    Borrador tecleado;
    rellena(tecleado, m_edicion);
    if (!Codigo.empty()) {
        tecleado.Codigo = Codigo;
        tecleado.Ejercicio = Ejercicio;
        tecleado.AlmacenDelCargo = Almacen;
        tecleado.Cargado = m_cargado;
    }
    tecleado.Almacen = m_ui->txtAlmacen->Codigo();
    tecleado.Proveedor = m_ui->txtProv->Codigo();
    tecleado.NombreProveedor = de_qt(m_ui->txtProv->Nombre());
    tecleado.Fecha = de_qt(m_ui->txtFecha->text());
    tecleado.Observaciones = de_qt(m_ui->txtObservaciones->toPlainText());
    tecleado.Franquiciado = m_ui->chkFranquiciado->isChecked();
    tecleado.HayEnCurso = m_ui->fraLin->Pendiente();
    if (tecleado.HayEnCurso)
        tecleado.EnCurso = en_borrador(m_ui->fraLin->Linea());
    else
        tecleado.FilaEnCambio = 0;
    return tecleado;
}

/// Apart from the traps of the procedures: that a charge cannot be kept is no reason not to go on with it.
/// `guardandose`: its save begins now.
void frmCompras_Atipicos::guarda_borrador(bool guardandose)
{
    try {
        Borrador tecleado = lo_tecleado();
        tecleado.Guardandose = guardandose;
        const std::string fallo = m_borrador.Guardar(tecleado);
        m_lblBorrador->setText(fallo.empty()
                ? QString()
                : QStringLiteral("Lo tecleado no queda a salvo hasta que guarde el cargo: ") + a_qt(fallo));
        m_lblBorrador->setVisible(!fallo.empty());
    } catch (...) {
        m_lblBorrador->setText(a_qt(error_en_curso().descripcion()));
        m_lblBorrador->show();
    }
}

/// The header may be changed after the last line has been accepted.
void frmCompras_Atipicos::guarda_al_cambiar_de_campo()
{
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* dejado, QWidget*) {
        if (dejado != nullptr && hay_lineas() && !m_guardando && m_ui->fraCab1->isAncestorOf(dejado))
            guarda_borrador();
    });
}

} // namespace atipicos
