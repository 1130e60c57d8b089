// The editor's save, from the button on, and its cancelling.
#include "editor/frmCompras_Atipicos.hpp"
#include "editor/GuardarAtipico.hpp"

#include "context/Cajas.hpp"
#include "context/HastaElFinal.hpp"
#include "context/modComun.hpp"
#include "context/trap.hpp"
#include "controls/Texto.hpp"
#include "posting/frmCompras_Atipicos_Contabilizar.hpp"
#include "posting/GenerarPrev.hpp"
#include "printing/frmImpresora.hpp"
#include "printing/ImprimirAtipico.hpp"
#include "ui_frmCompras_Atipicos.h"

#include <QScopedValueRollback>

#include <utility>

namespace atipicos {

void frmCompras_Atipicos::cmdAceptar_Click()
{
    if (m_guardando)
        return;
    const QScopedValueRollback guardando(m_guardando, true);
    if (hay_lineas()) {
        // Its accelerator leaves no box, by which a code would be looked up.
        m_ui->txtAlmacen->Completa();
        m_ui->txtProv->Completa();
        m_ui->txtFecha->Completa();
        if (!deja_la_linea())
            return;
    }
    trap("frmCompras_Atipicos:cmdAceptar_Click", [this] {
        if (!hay_lineas())
            return;
        const auto resultado
            = GuardarAtipico(m_edicion.cargo(), cargo_tecleado(), [this](const Contabilizacion& datos) {
                  auto previsiones = pide_previsiones(datos);
                  if (previsiones)
                      guarda_borrador(true);
                  return previsiones;
              });
        if (resultado.estado == ResultadoGuardado::Estado::Fallido)
            guarda_borrador();
        if (resultado.estado != ResultadoGuardado::Estado::Guardado)
            return;
        if (resultado.InsertarFallido)
            m_borrador.Dejar(); // the charge may not have been written, and the form lets go of it
        else
            m_borrador.Quitar();
        modComun::Avisos()->mostrar(mensaje_guardado(resultado));
        Imprimir_Atipico();
        empieza_otro();
    });
}

/// Error 13, in words, for what is no day.
Date frmCompras_Atipicos::fecha_del_cargo() const
{
    if (const auto fecha = m_ui->txtFecha->Fecha())
        return *fecha;
    throw Error(numero_error::tipos_no_coinciden, "QVORComprasAtip",
        de_qt(m_ui->txtFecha->Falta()) + " Corrija la fecha del cargo y acéptelo de nuevo.");
}

CargoTecleado frmCompras_Atipicos::cargo_tecleado() const
{
    CargoTecleado tecleado;
    tecleado.Codigo = Codigo;
    tecleado.Almacen = m_ui->txtAlmacen->Codigo();
    tecleado.Proveedor = m_ui->txtProv->Codigo();
    tecleado.NombreProveedor = de_qt(m_ui->txtProv->Nombre());
    tecleado.Fecha = fecha_del_cargo();
    tecleado.Observaciones = de_qt(m_ui->txtObservaciones->Texto());
    tecleado.Franquiciado = m_ui->chkFranquiciado->isChecked();
    m_edicion.Rellenar(tecleado);
    return tecleado;
}

std::optional<std::vector<Prevision>> frmCompras_Atipicos::pide_previsiones(const Contabilizacion& datos)
{
    frmCompras_Atipicos_Contabilizar dialogo(datos, this);
    dialogo.exec();
    if (!dialogo.Aceptado()) {
        set_CincoBotones(true);
        return std::nullopt;
    }
    std::vector<Prevision> previsiones;
    for (int i = 1; i <= dialogo.PrevPago_NroVencimientos(); ++i)
        previsiones.push_back({ dialogo.PrevPago_Importe(i), dialogo.PrevPago_TipoDoc(i),
            dialogo.PrevPago_Vencimiento(i), dialogo.PrevPago_Banco(i) });
    return previsiones;
}

/// Offers to print the charge that has just been saved. It traps its own errors: the charge is stored, and
/// must not stay in the form to be stored again.
void frmCompras_Atipicos::Imprimir_Atipico()
{
    trap("frmCompras_Atipicos:Imprimir_Atipico", [this] {
        if (!hay_lineas())
            return;
        const auto& cargo = m_edicion.cargo();
        ImprimirAtipico({ cargo.Cod_Ejercicio, cargo.Cod_Almacen, cargo.Codigo, cargo.Proveedor },
            [this] { return frmImpresora::pregunta(modComun::EmpresaOrvalin(), this); });
    });
}

void frmCompras_Atipicos::empieza_otro()
{
    set_CincoBotones(false);
    HastaElFinal pasos; // whatever fails, no line that was saved stays to be saved again
    pasos.haz([this] { Limpiar_Cabecera(); });
    pasos.haz([this] { Limpiar_Linea(); });
    pasos.haz([this] { Nuevo_Atipico(); });
    m_ui->vsCargos->set_Rows(1);
    pasos.termina();
}

void frmCompras_Atipicos::cmdCancelar_Click()
{
    trap("frmCompras_Atipicos:cmdCancelar_Click", [this] {
        if (hay_lineas()
            && confirma("¿Esta seguro que desea cancelar el Atípico?", "Confirmar")) { // sic: "Esta"
            m_borrador.Quitar();
            empieza_otro();
        }
    });
}

} // namespace atipicos
