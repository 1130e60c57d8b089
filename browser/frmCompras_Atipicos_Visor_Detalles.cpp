// The browser's second tab, and the buttons that go through the list.
#include "browser/frmCompras_Atipicos_Visor.hpp"

#include "ui_frmCompras_Atipicos_Visor.h"

#include <QKeyEvent>

namespace atipicos {

void frmCompras_Atipicos_Visor::vsCab_KeyPress()
{
    if (m_ui->vsCab->Row() < 1)
        return;
    m_ui->Tabs->setCurrentIndex(detalles); // which loads them
    m_ui->tabDetalles->setFocus();
}

void frmCompras_Atipicos_Visor::Tabs_SelectedChanged()
{
    if (!en_detalles())
        return;
    if (m_ui->vsCab->Row() > 0)
        Cargar_Cabecera();
    else
        m_ui->tabDetalles->Vacia();
}

void frmCompras_Atipicos_Visor::Cargar_Cabecera()
{
    const auto& cargo = elegido();
    const auto clave = clave_de(cargo);
    Ejercicio = clave.Ejercicio;
    Almacen_Inicial = clave.Almacen;
    Proveedor_Inicial = cargo.Proveedor;
    m_ui->tabDetalles->Cargar_Cabecera(clave, cargo);
    m_ui->tabDetalles->Cargar_Detalles(clave);
}

bool frmCompras_Atipicos_Visor::en_detalles() const { return m_ui->Tabs->currentIndex() == detalles; }

/// On the list the grid itself moves its row.
void frmCompras_Atipicos_Visor::teclea_en_lista(Qt::Key tecla, Qt::KeyboardModifiers con)
{
    if (m_ui->vsCab->Rows() < 2)
        return;
    m_ui->vsCab->setFocus();
    QKeyEvent pulsada(QEvent::KeyPress, tecla, con);
    QCoreApplication::sendEvent(m_ui->vsCab, &pulsada);
}

void frmCompras_Atipicos_Visor::muestra_fila(int fila)
{
    m_ui->vsCab->set_Row(fila);
    Cargar_Cabecera();
}

void frmCompras_Atipicos_Visor::cmdPrimero_Click()
{
    if (en_detalles())
        muestra_fila(1);
    else
        teclea_en_lista(Qt::Key_Home, Qt::ControlModifier);
}

void frmCompras_Atipicos_Visor::cmdAnterior_Click()
{
    if (!en_detalles())
        teclea_en_lista(Qt::Key_Up);
    else if (m_ui->vsCab->Row() > 1)
        muestra_fila(m_ui->vsCab->Row() - 1);
}

void frmCompras_Atipicos_Visor::cmdSiguiente_Click()
{
    if (!en_detalles())
        teclea_en_lista(Qt::Key_Down);
    else if (m_ui->vsCab->Row() < m_ui->vsCab->Rows() - 1)
        muestra_fila(m_ui->vsCab->Row() + 1);
}

void frmCompras_Atipicos_Visor::cmdUltimo_Click()
{
    if (en_detalles())
        muestra_fila(m_ui->vsCab->Rows() - 1);
    else
        teclea_en_lista(Qt::Key_End, Qt::ControlModifier);
}

} // namespace atipicos
