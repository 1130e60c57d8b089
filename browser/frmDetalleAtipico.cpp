#include "browser/frmDetalleAtipico.hpp"

#include "browser/RejillasVisorQt.hpp"
#include "context/modComun.hpp"
#include "context/trap.hpp"
#include "controls/SinDibujar.hpp"
#include "controls/Texto.hpp"
#include "runtime/Celdas.hpp"
#include "runtime/Formato.hpp"
#include "ui_frmDetalleAtipico.h"

namespace atipicos {

namespace {

    /// "…" where the sum is more than an amount can hold.
    std::string total(const CargoListado& cargo)
    {
        try {
            return texto_pantalla(cargo.Importe + cargo.Impuesto_Importe, 2);
        } catch (const Error&) {
            return "…";
        }
    }

    QString importes(const CargoListado& cargo)
    {
        return a_qt("Base: " + texto_pantalla(cargo.Importe, 2) + "     Impuesto ("
            + texto_pantalla(cargo.Impuesto, 2) + " %): " + texto_pantalla(cargo.Impuesto_Importe, 2)
            + "     Total: " + total(cargo));
    }

    QString asiento(const CargoListado& cargo)
    {
        return cargo.Asiento > 0 ? QStringLiteral("Asiento: %1").arg(cargo.Asiento)
                                 : QStringLiteral("Sin asiento");
    }

    std::string fila(const qvoremp::PrevisionCargo& prevision)
    {
        std::string celdas = std::to_string(prevision.Numero) + '\t';
        prevision.Vencimiento.anexa_texto(celdas);
        celdas += '\t';
        anexa_pantalla(celdas, prevision.Importe, 2);
        celdas += '\t';
        anexa_celda(celdas, prevision.Documento);
        return celdas;
    }

}

frmDetalleAtipico::frmDetalleAtipico(QWidget* parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::frmDetalleAtipico>())
{
    m_ui->setupUi(this);
    m_ui->txtAlmacenDet->set_NombreAccesible(QStringLiteral("Almacén del atípico"));
    m_ui->txtProveedorDet->set_NombreAccesible(QStringLiteral("Proveedor del atípico"));
    m_ui->txtAlmacenDet->set_SoloLectura(true);
    m_ui->txtProveedorDet->set_SoloLectura(true);
    prepara_vsDetalles(*m_ui->vsDetalles);
    prepara_vsPrevisiones(*m_ui->vsPrevisiones);
    setFocusProxy(m_ui->vsDetalles);
}

frmDetalleAtipico::~frmDetalleAtipico() = default;

void frmDetalleAtipico::Prepara()
{
    const auto empresa = modComun::EmpresaOrvalin();
    const auto conexion = modComun::ConexionOrvalin();
    m_ui->txtAlmacenDet->Prepara(empresa, conexion);
    m_ui->txtProveedorDet->Prepara(empresa, conexion);
    m_ui->vsPrevisiones->setVisible(modComun::PrevisionesCargo() != nullptr);
    Vacia();
}

void frmDetalleAtipico::Vacia()
{
    m_ui->lblCodigo->setText(QStringLiteral("Código: "));
    m_ui->txtAlmacenDet->set_Codigo(0);
    m_ui->txtProveedorDet->set_Codigo(0);
    m_ui->txtFechaDet->Limpiar();
    m_ui->lblAsientoDet->clear();
    m_ui->txtObservDet->clear();
    m_ui->lblImportesDet->clear();
    m_ui->vsDetalles->set_Rows(1);
    m_ui->vsPrevisiones->set_Rows(1);
    m_ui->vsPrevisiones->set_Aviso({});
}

void frmDetalleAtipico::Cargar_Cabecera(const ClaveCargo& clave, const CargoListado& cargo)
{
    m_ui->lblCodigo->setText(QStringLiteral("Código: ") + a_qt(clave.Codigo));
    m_ui->txtAlmacenDet->set_Codigo(clave.Almacen);
    m_ui->txtAlmacenDet->Buscar();
    m_ui->txtProveedorDet->set_Codigo(cargo.Proveedor);
    m_ui->txtProveedorDet->Buscar();
    m_ui->txtFechaDet->set_Fecha(cargo.Fecha);
    m_ui->lblAsientoDet->setText(asiento(cargo));
    m_ui->txtObservDet->setPlainText(a_qt(cargo.Observ));
    m_ui->lblImportesDet->setText(importes(cargo));
    muestra_previsiones(clave);
}

/// They are beside what the tab is for: no box when they cannot be read.
void frmDetalleAtipico::muestra_previsiones(const ClaveCargo& clave)
{
    auto& rejilla = *m_ui->vsPrevisiones;
    rejilla.set_Rows(1);
    const auto* previsiones = modComun::PrevisionesCargo();
    if (previsiones == nullptr)
        return;
    try {
        const auto leidas = previsiones->lee(clave.Ejercicio, clave.Almacen, clave.Codigo);
        rejilla.set_Aviso(QStringLiteral("Sin previsiones de pago"));
        const SinDibujar sin_dibujar(rejilla);
        for (const auto& prevision : leidas)
            rejilla.AddItem(QByteArray::fromStdString(fila(prevision)));
    } catch (const Error& error) {
        rejilla.set_Aviso(
            QStringLiteral("No se han podido leer las previsiones de pago: ") + a_qt(error.descripcion()));
    }
}

void frmDetalleAtipico::Cargar_Detalles(const ClaveCargo& clave)
{
    trap("frmCompras_Atipicos_Visor:Cargar_Detalles", [&] {
        auto& rejilla = *m_ui->vsDetalles;
        rejilla.set_Rows(1);
        const SinDibujar sin_dibujar(rejilla);
        std::string fila;
        atipicos::Cargar_Detalles(clave, [&](const LineaDetalle& linea) {
            fila.clear();
            anexa_fila(fila, linea, modComun::EmpresaOrvalin()->DecimalesPrecio());
            rejilla.AddItem(QByteArray::fromStdString(fila));
        });
    });
}

} // namespace atipicos
