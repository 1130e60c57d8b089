// The editor's lines: accepted from the entry row, taken back, commented, removed.
#include "editor/frmCompras_Atipicos.hpp"

#include "context/Cajas.hpp"
#include "context/modComun.hpp"
#include "context/trap.hpp"
#include "controls/Texto.hpp"
#include "editor/frmEditor_Comentarios.hpp"
#include "editor/RejillaAtipicoQt.hpp"
#include "ui_frmCompras_Atipicos.h"

#include <utility>

namespace atipicos {

void frmCompras_Atipicos::txtImporte_Intro()
{
    try {
        acepta_linea();
    } catch (...) {
        const Error error = error_en_curso();
        avisa("Error inesperado. Repita la operación\r" + error.descripcion());
        if (error.numero() == frmCompras_Atipicos_Linea::no_existe_articulo)
            m_ui->fraLin->Enfocar();
    }
    guarda_borrador();
}

/// What a line needs of the header; the first thing that is missing is told.
bool frmCompras_Atipicos::cabecera_completa()
{
    if (!m_ui->txtAlmacen->Elegido()) {
        m_ui->txtAlmacen->setEnabled(true);
        m_ui->txtAlmacen->setFocus();
        avisa("Debe especificar el Almacén");
        return false;
    }
    if (!m_ui->txtProv->Elegido()) {
        m_ui->txtProv->setEnabled(true);
        m_ui->txtProv->setFocus();
        avisa("Debe especificar el Proveedor");
        return false;
    }
    if (!m_ui->txtFecha->Fecha()) {
        avisa("Debe seleccionar una Fecha válida", Icono::exclamacion, "¡ Atencion !"); // sic: no accent
        m_ui->txtFecha->setFocus();
        return false;
    }
    return true;
}

void frmCompras_Atipicos::acepta_linea()
{
    if (!cabecera_completa())
        return;
    auto& rejilla = *m_ui->vsCargos;
    const auto fila = m_edicion.Aceptar_Linea(
        m_ui->fraLin->Linea(), [this](std::int32_t articulo) { return m_ui->fraLin->CtaAtipicos(articulo); });
    muestra_fila(fila);
    muestra_total();
    if (rejilla.Rows() > 1)
        set_CincoBotones(true);
    rejilla.set_Row(0);
    empieza_linea();
}

/// The entry row as it is after a line has been accepted.
void frmCompras_Atipicos::empieza_linea()
{
    m_ui->fraLin->Poner_a_cero();
    muestra_cambio();
    m_ui->fraLin->Enfocar();
}

/// Gives up the change of a line and nothing else; the line stays as it is in the grid.
void frmCompras_Atipicos::deja_el_cambio()
{
    m_ui->fraLin->Enfocar(); // first: a number gets its form when its box is left
    m_edicion.Dejar_Linea();
    empieza_linea();
}

void frmCompras_Atipicos::muestra_cambio() { m_ui->pista->set_Linea(m_edicion.intLineaActual()); }

void frmCompras_Atipicos::muestra_fila(int fila)
{
    const auto& tecleada = m_edicion.filas()[static_cast<std::size_t>(fila) - 1];
    pon_fila(*m_ui->vsCargos, fila, a_qt(tecleada.texto(decimales_costo())));
}

/// Whether what is keyed in and was not accepted as a line may go. Back to the row otherwise.
bool frmCompras_Atipicos::deja_la_linea()
{
    if (!m_ui->fraLin->Pendiente())
        return true;
    bool la_deja = false;
    trap("frmCompras_Atipicos:deja_la_linea", [&] {
        la_deja
            = confirma("Hay una línea tecleada que no se ha añadido al cargo.\r\r¿Desea continuar sin ella?");
    });
    if (!la_deja)
        m_ui->fraLin->Enfocar();
    return la_deja;
}

void frmCompras_Atipicos::cmdModificar_Click()
{
    if (m_ui->vsCargos->Rows() >= 2 && m_ui->vsCargos->Row() >= 1 && !deja_la_linea())
        return;
    trap("frmCompras_Atipicos:cmdModificar_Click", [this] {
        const int fila = m_ui->vsCargos->Row();
        if (m_ui->vsCargos->Rows() < 2 || fila < 1)
            return;
        const LineaTecleada linea = m_edicion.Modificar_Linea(fila);
        muestra_cambio();
        m_ui->fraLin->set_Linea(linea);
        m_ui->fraLin->Enfocar();
    });
}

void frmCompras_Atipicos::cmdEliminar_Click()
{
    trap("frmCompras_Atipicos:cmdEliminar_Click", [this] {
        const int fila = m_ui->vsCargos->Row();
        if (!hay_lineas() || fila < 1
            || !confirma("¿Está seguro que desea eliminar el atípico seleccionado?"))
            return;
        m_edicion.Eliminar_Linea(fila);
        m_ui->vsCargos->RemoveItem(fila);
        muestra_total();
        muestra_cambio(); // of the one that has gone, or of one that has moved up
        if (hay_lineas())
            return;
        if (m_ui->cmdEliminar
                ->hasFocus()) // disabled it would hand the focus on, to the button that closes the form
            m_ui->fraLin->Enfocar();
        set_CincoBotones(false);
        m_ui->txtAlmacen->setEnabled(es_oficina_central());
        m_ui->fraLin->Limpiar_Observaciones();
    });
    guarda_borrador();
}

void frmCompras_Atipicos::cmdComent_Click()
{
    trap("frmCompras_Atipicos:cmdComent_Click", [this] {
        const int fila = m_ui->vsCargos->Row();
        if (!hay_lineas() || fila < 1)
            return;
        frmEditor_Comentarios editor(this);
        editor.set_Conexion(modComun::ConexionOrvalin());
        editor.set_cEmpresa(modComun::EmpresaOrvalin());
        editor.set_Comentario(m_edicion.filas()[static_cast<std::size_t>(fila) - 1].linea.Observaciones);
        editor.exec();
        if (!editor.Aceptado())
            return;
        m_edicion.Comentar_Linea(fila, editor.Comentario());
        muestra_fila(fila);
    });
    guarda_borrador();
}

} // namespace atipicos
