#include "host/ventanas/CargosElegidos.hpp"

#include "browser/ExportarVisorQt.hpp"
#include "browser/ListaAtipicos.hpp"
#include "context/Cajas.hpp"
#include "controls/FicherosEnCastellano.hpp"
#include "controls/Texto.hpp"
#include "host/documento/DocumentosUnidos.hpp"
#include "host/documento/ImpresionCargo.hpp"
#include "host/ventanas/AvanceDeTarea.hpp"
#include "host/ventanas/DocumentosEnPdf.hpp"
#include "host/ventanas/SalidaDeVentanas.hpp"
#include "printing/frmImpresora.hpp"

#include <QFileDialog>

#include <set>
#include <utility>

namespace atipicos::app {

namespace {

    QString cuantos_son(std::size_t cuantos)
    {
        return cuantos == 1 ? QStringLiteral("un cargo") : QStringLiteral("%1 cargos").arg(cuantos);
    }

    /// What is shown of a charge in the list, as it is now.
    void lee_fila(const CargoResumido& cargo, const CadaCargo& cada)
    {
        const auto dia = cargo.fecha.texto();
        bool hallado = false;
        Cargar_Atipicos({ dia, dia, cargo.almacen, cargo.proveedor }, [&](const CargoListado& listado) {
            if (listado.Codigo != cargo.codigo || hallado)
                return;
            hallado = true;
            cada(listado);
        });
        if (!hallado)
            throw Error(1, "atipicos",
                "El cargo " + cargo.codigo + " del almacén " + std::to_string(cargo.almacen)
                    + " ya no es del " + dia
                    + ", o se ha eliminado. Actualice la lista (F5) y vuelva a elegir.");
    }

    QString pide_pdf(const QString& nombre, QWidget* ventana)
    {
        QFileDialog pregunta(
            ventana, QStringLiteral("Guardar como PDF"), {}, QStringLiteral("Documento PDF (*.pdf)"));
        pregunta.setObjectName(QStringLiteral("dlgImprimirElegidos"));
        FicherosEnCastellano::pon(pregunta);
        pregunta.setAcceptMode(QFileDialog::AcceptSave);
        pregunta.setDefaultSuffix(QStringLiteral("pdf"));
        pregunta.selectFile(nombre);
        return pregunta.exec() == QDialog::Accepted ? pregunta.selectedFiles().constFirst() : QString();
    }

}

CargosElegidos::CargosElegidos(Sesion& sesion, const bases::Lugar& lugar, std::vector<CargoResumido> cargos)
    : m_sesion(sesion)
    , m_lugar(lugar)
    , m_cargos(std::move(cargos))
{
}

std::vector<ClaveCargo> CargosElegidos::claves() const
{
    std::vector<ClaveCargo> claves;
    claves.reserve(m_cargos.size());
    for (const auto& cargo : m_cargos)
        claves.push_back({ cargo.ejercicio, cargo.almacen, cargo.codigo });
    return claves;
}

std::shared_ptr<const Report> CargosElegidos::documento(const QString& que, QWidget* ventana) const
{
    const DocumentosEnPdf documentos(m_sesion, orvalin::Plantilla::de_lugar(m_lugar));
    std::vector<std::shared_ptr<const Report>> todos;
    AvanceDeTarea avance(que, m_cargos.size(), ventana);
    try {
        for (const auto& clave : claves()) {
            todos.push_back(documentos.documento(clave));
            avance.paso();
        }
    } catch (const AvanceDeTarea::Dejada&) {
        return nullptr;
    }
    return std::make_shared<orvalin::DocumentosUnidos>(std::move(todos), m_sesion.empresa->Nombre());
}

/// What is for one supplier is not for another one to read.
bool CargosElegidos::van_en_un_mensaje() const
{
    std::set<std::int32_t> proveedores;
    for (const auto& cargo : m_cargos)
        proveedores.insert(cargo.proveedor);
    return proveedores.size() < 2
        || confirma("Los cargos elegidos son de " + std::to_string(proveedores.size())
            + " proveedores y van juntos en un solo mensaje: quien lo reciba los lee todos.\r\n\r\n¿Desea un "
              "solo mensaje con todos?");
}

QString CargosElegidos::imprime(QWidget* ventana) const
{
    const auto destino = frmImpresora::pregunta(m_sesion.empresa, ventana);
    if (!destino)
        return {};
    const bool por_correo = destino->Dispositivo == qvoremp::dispositivo::correo
        || destino->Dispositivo2 == qvoremp::dispositivo::correo;
    if (por_correo && !van_en_un_mensaje())
        return {};
    const auto unidos = documento(QStringLiteral("Preparando los documentos"), ventana);
    if (!unidos)
        return {};
    const auto salida = salida_de_ventanas();
    for (const auto dispositivo : { destino->Dispositivo, destino->Dispositivo2 })
        orvalin::saca(unidos, dispositivo, destino->Impresora, *salida);
    return QStringLiteral("Hecho: el documento de %1").arg(cuantos_son(m_cargos.size()));
}

QString CargosElegidos::guarda_pdf(QWidget* ventana) const
{
    const auto fichero
        = pide_pdf(m_cargos.size() == 1 ? a_qt(m_cargos.front().codigo)
                                        : QStringLiteral("Reclamaciones, %1 cargos").arg(m_cargos.size()),
            ventana);
    if (fichero.isEmpty())
        return {};
    AvanceDeTarea avance(QStringLiteral("Guardando como PDF"), m_cargos.size(), ventana);
    try {
        DocumentosEnPdf(m_sesion, orvalin::Plantilla::de_lugar(m_lugar))
            .en_un_fichero(claves(), de_qt(fichero), [&] { avance.paso(); });
    } catch (const AvanceDeTarea::Dejada&) {
        return {};
    }
    return QStringLiteral("Guardado en ") + fichero;
}

QString CargosElegidos::exporta(QWidget* ventana) const
{
    QString fichero;
    try {
        fichero = exporta_lista(
            [&](const CadaCargo& cada) {
                AvanceDeTarea avance(QStringLiteral("Exportando"), m_cargos.size(), ventana);
                for (const auto& cargo : m_cargos) {
                    lee_fila(cargo, cada);
                    avance.paso();
                }
            },
            m_cargos.size() == 1 ? a_qt(m_cargos.front().codigo)
                                 : QStringLiteral("Atípicos, %1 cargos").arg(m_cargos.size()),
            ventana);
    } catch (const AvanceDeTarea::Dejada&) {
        return {};
    }
    return fichero.isEmpty() ? QString() : QStringLiteral("Exportado a ") + fichero;
}

QString CargosElegidos::envia(QWidget* ventana) const
{
    if (!van_en_un_mensaje())
        return {};
    const auto unidos = documento(QStringLiteral("Preparando el mensaje"), ventana);
    if (!unidos)
        return {};
    salida_de_ventanas()->envia(*unidos);
    return QStringLiteral("Su programa de correo tiene el mensaje con %1: ponga a quién va y envíelo")
        .arg(cuantos_son(m_cargos.size()));
}

} // namespace atipicos::app
