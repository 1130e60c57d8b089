#include "host/ventanas/frmPrincipal.hpp"

#include "context/Cajas.hpp"
#include "context/modComun.hpp"
#include "context/trap.hpp"
#include "controls/Texto.hpp"
#include "controls/VSFlexGrid.hpp"
#include "host/ventanas/CargosElegidos.hpp"
#include "host/ventanas/EmpresasRecientes.hpp"
#include "host/ventanas/frmAnular.hpp"
#include "host/ventanas/frmEmpresa.hpp"
#include "host/ventanas/frmFichas.hpp"
#include "host/ventanas/frmHistorial.hpp"
#include "host/ventanas/PanelBorradores.hpp"
#include "host/ventanas/PanelCargos.hpp"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QStatusBar>

#include <utility>

// The windows that the main window opens.
namespace atipicos::app {

namespace {

    constexpr int lo_que_dura_un_aviso = 10'000; ///< milliseconds

}

void frmPrincipal::elige_otra()
{
    frmEmpresa dialogo(this);
    dialogo.Propon(EmpresasRecientes().lista().value(0));
    if (dialogo.exec() == QDialog::Accepted && dialogo.Elegido())
        cambia_a(*dialogo.Elegido());
}

/// The window closes, unless the person has something to save in it, and another opens.
void frmPrincipal::cambia_a(const bases::Lugar& lugar)
{
    m_siguiente = lugar;
    if (!close())
        m_siguiente.reset();
}

void frmPrincipal::abre_fichas(std::unique_ptr<OrigenDeFichas> (*origen)(AmbitoDeFichas))
{
    trap(
        "frmPrincipal:abre_fichas",
        [&] {
            frmFichas(origen({ m_sesion.bases, m_sesion.empresa->Codigo(Donde::aqui()),
                          m_sesion.empresa->EmpresaProveedores() }),
                this)
                .exec();
            m_ha_trabajado = true;
        },
        TextoError::SoloDescripcion);
}

void frmPrincipal::anula_sueltos()
{
    if (frmAnular(m_sesion, m_lugar, this).exec() == QDialog::Accepted)
        actualiza();
}

void frmPrincipal::abre_editor()
{
    m_ha_trabajado = true;
    m_editor.set_EmpresaOrvalin(m_sesion.empresa);
    m_editor.set_ConexionOrvalin(m_sesion.bases.orvalin);
    m_editor.Show(0, this);
}

/// It opens on what the user last searched for, and with the list of it; open already it is left as it is.
void frmPrincipal::abre_visor() { muestra_visor(m_ultima_busqueda.lee(modComun::reloj().hoy())); }

void frmPrincipal::muestra_visor(const frmclsComprasAtipVisor::Busqueda& busqueda)
{
    m_ha_trabajado = true;
    const auto* abierto = findChild<QWidget*>(QStringLiteral("frmCompras_Atipicos_Visor"));
    const bool de_nuevo = abierto == nullptr || !abierto->isVisible();
    m_visor.set_EmpresaOrvalin(m_sesion.empresa);
    m_visor.set_ConexionOrvalin(m_sesion.bases.orvalin);
    m_visor.Fecha_Inicial = busqueda.Fecha_Inicial;
    m_visor.Fecha_Final = busqueda.Fecha_Final;
    m_visor.Almacen_Inicial = busqueda.Almacen;
    m_visor.Proveedor_Inicial = busqueda.Proveedor;
    m_visor.Show(0, this);
    auto* ultima_caja = findChild<QWidget*>(QStringLiteral("txtFechaF"));
    if (!de_nuevo || ultima_caja == nullptr)
        return;
    QKeyEvent intro(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(ultima_caja, &intro);
}

/// On what no person has searched for, and which is not remembered until one searches for something else.
void frmPrincipal::muestra_visor_de_nuevo(const frmclsComprasAtipVisor::Busqueda& busqueda)
{
    if (auto* abierto = findChild<QWidget*>(QStringLiteral("frmCompras_Atipicos_Visor")))
        abierto->close();
    m_del_programa = busqueda;
    muestra_visor(busqueda);
}

/// The list of its day, warehouse and supplier, with the charge chosen.
void frmPrincipal::abre_cargo(const CargoResumido& cargo)
{
    const auto dia = cargo.fecha.solo_dia();
    muestra_visor_de_nuevo({ dia, dia, cargo.almacen, cargo.proveedor });
    auto* lista = findChild<VSFlexGrid*>(QStringLiteral("vsCab"));
    for (int fila = 1; lista != nullptr && fila < lista->Rows(); ++fila)
        if (de_qt(lista->TextMatrix(fila, 0).trimmed()) == cargo.codigo)
            lista->set_Row(fila);
}

void frmPrincipal::con_elegidos(const char* etiqueta, QString (CargosElegidos::*que)(QWidget*) const)
{
    auto elegidos = m_cargos->Elegidos();
    if (elegidos.empty()) {
        avisa("Elija antes en los últimos cargos los que quiere.");
        return;
    }
    trap(
        etiqueta,
        [&] {
            const CargosElegidos cargos(m_sesion, m_lugar, std::move(elegidos));
            if (const auto dicho = (cargos.*que)(this); !dicho.isEmpty())
                statusBar()->showMessage(dicho, lo_que_dura_un_aviso);
        },
        TextoError::SoloDescripcion);
}

/// Of the first of them, if any; another one can be keyed in, also one that is no longer in any list.
void frmPrincipal::abre_historial_del_elegido()
{
    std::optional<ClaveCargo> cual;
    if (const auto elegidos = m_cargos->Elegidos(); !elegidos.empty())
        cual = { elegidos.front().ejercicio, elegidos.front().almacen, elegidos.front().codigo };
    trap(
        "frmPrincipal:abre_historial", [&] { abre_historial(m_sesion, m_lugar, cual, *this); },
        TextoError::SoloDescripcion);
}

/// The launcher's own form, as new: what was being keyed in there without a line stays as a draft.
QWidget* frmPrincipal::abre_editor_vacio()
{
    if (auto* abierto = findChild<QWidget*>(QStringLiteral("frmCompras_Atipicos")))
        abierto->close();
    abre_editor();
    return findChild<QWidget*>(QStringLiteral("frmCompras_Atipicos"));
}

QWidget* frmPrincipal::abre_visor_en(std::int16_t ejercicio, std::int16_t almacen)
{
    muestra_visor_de_nuevo({ Date::de_dia(ejercicio, 1, 1).value_or(Date{}),
        Date::de_dia(ejercicio, 12, 31).value_or(Date{}), almacen, 0 });
    return findChild<QWidget*>(QStringLiteral("frmCompras_Atipicos_Visor"));
}

void frmPrincipal::recupera(const std::filesystem::path& fichero)
{
    if (m_editor.sin_guardar()) {
        avisa("Hay otro cargo sin guardar en su ventana. Guárdelo o ciérrela antes de recuperar éste.");
        abre_editor();
        return;
    }
    trap(
        "frmPrincipal:recupera", [&] { m_recuperacion.Recuperar(fichero); }, TextoError::SoloDescripcion);
    m_borradores->Actualiza();
}

void frmPrincipal::descarta(const std::filesystem::path& fichero)
{
    trap(
        "frmPrincipal:descarta", [&] { m_recuperacion.Descartar(fichero); }, TextoError::SoloDescripcion);
    m_borradores->Actualiza();
}

} // namespace atipicos::app
