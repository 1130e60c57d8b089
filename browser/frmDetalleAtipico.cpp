#include "browser/frmDetalleAtipico.hpp"

#include "browser/RejillasVisorQt.hpp"
#include "context/modComun.hpp"
#include "context/trap.hpp"
#include "controls/SinDibujar.hpp"
#include "controls/Texto.hpp"
#include "ui_frmDetalleAtipico.h"

namespace atipicos {

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
    setFocusProxy(m_ui->vsDetalles);
}

frmDetalleAtipico::~frmDetalleAtipico() = default;

void frmDetalleAtipico::Prepara()
{
    const auto& empresa = modComun::comparte_EmpresaOrvalin();
    const auto& conexion = modComun::comparte_ConexionOrvalin();
    m_ui->txtAlmacenDet->Prepara(empresa, conexion);
    m_ui->txtProveedorDet->Prepara(empresa, conexion);
    m_ui->vsDetalles->set_Rows(1);
}

void frmDetalleAtipico::Cargar_Cabecera(const ClaveCargo& clave, std::int32_t proveedor, const QString& fecha)
{
    m_ui->lblCodigo->setText(QStringLiteral("Código: ") + a_qt(clave.Codigo));
    m_ui->txtAlmacenDet->set_Codigo(clave.Almacen);
    m_ui->txtAlmacenDet->Buscar();
    m_ui->txtProveedorDet->set_Codigo(proveedor);
    m_ui->txtProveedorDet->Buscar();
    m_ui->txtFechaDet->setText(fecha);
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
            anexa_fila(fila, linea, modComun::EmpresaOrvalin().DecimalesPrecio());
            rejilla.AddItem(QByteArray::fromStdString(fila));
        });
    });
}

} // namespace atipicos
