// What the browser does with the chosen charge: export of the list, print, deletion, change.
#include "browser/frmCompras_Atipicos_Visor.hpp"

#include "browser/EliminarAtipico.hpp"
#include "browser/ExportarVisorQt.hpp"
#include "browser/TextosVisorQt.hpp"
#include "context/Cajas.hpp"
#include "context/modComun.hpp"
#include "editor/frmCompras_Atipicos.hpp"
#include "printing/frmImpresora.hpp"
#include "printing/ImprimirAtipico.hpp"
#include "ui_frmCompras_Atipicos_Visor.h"

namespace atipicos {

void frmCompras_Atipicos_Visor::cmdExportar_Click()
{
    const QString fichero = exporta_vsCab(*m_ui->vsCab, m_cargos, nombre_de_fichero(m_buscado), this);
    if (!fichero.isEmpty())
        m_ui->lblEstado->setText(QStringLiteral("Exportado a ") + fichero);
}

void frmCompras_Atipicos_Visor::cmdImprimir_Click()
{
    if (m_ui->vsCab->Row() < 1)
        return;
    const auto& cargo = elegido();
    const auto clave = clave_de(cargo);
    ImprimirAtipico({ clave.Ejercicio, clave.Almacen, clave.Codigo, cargo.Proveedor },
        [this] { return frmImpresora::pregunta(modComun::EmpresaOrvalin(), this); });
}

void frmCompras_Atipicos_Visor::cmdEliminar_Click()
{
    auto& rejilla = *m_ui->vsCab;
    const int fila = rejilla.Row();
    if (fila < 1)
        return;
    const auto clave = clave_de(elegido());
    const auto asiento = elegido().Asiento;
    if (!confirma("Deberá ir a contabilidad y eliminar manualmente el asiento asociado "
            + (asiento > 0 ? std::to_string(asiento) : std::string())
            + ".\r\n\r\n¿Está seguro que desea eliminar el atípico seleccionado?"))
        return;
    if (!EliminarAtipico(clave))
        return;
    rejilla.RemoveItem(fila);
    m_ui->lblEstado->setText(textos_visor::eliminado(clave));
    deja_detalles();
    if (rejilla.Rows() < 2)
        set_Comandos(false);
    busca();
}

/// The details still show a charge that is gone: should the search that follows fail, they must not be what
/// the next command is given for.
void frmCompras_Atipicos_Visor::deja_detalles()
{
    m_ui->tabDetalles->Vacia();
    if (!en_detalles())
        return;
    m_ui->Tabs->setCurrentIndex(documentos);
    m_ui->vsCab->setFocus();
}

void frmCompras_Atipicos_Visor::cmdModificar_Click()
{
    if (m_ui->vsCab->Row() < 1
        || !confirma(
            "Se va a generar un nuevo asiento, asegúrese de eliminar el ya existente en Contabilidad "
            "junto a sus previsiones de pago.\r\n\r\n¿Desea Continuar?"))
        return;
    m_ui->Tabs->setCurrentIndex(documentos);
    const auto clave = clave_de(elegido());
    auto& editor = frmCompras_Atipicos::compartido();
    editor.Codigo = clave.Codigo;
    editor.Ejercicio = clave.Ejercicio;
    editor.Almacen = clave.Almacen;
    m_abierto = clave;
    editor.Show(1, this);
    busca();
}

} // namespace atipicos
