#include "controls/SalidaQt.hpp"

#include "controls/Correo.hpp"
#include "controls/EscritorPdf.hpp"
#include "controls/FicherosEnCastellano.hpp"
#include "controls/ImpresoraQt.hpp"
#include "controls/Texto.hpp"

#include <QApplication>
#include <QFileDialog>
#include <QPrinter>

#include <utility>

namespace atipicos {

SalidaQt::SalidaQt(Visor visor)
    : m_visor(std::move(visor))
{
}

void SalidaQt::imprime(const Report& report, const std::string& impresora, Donde donde)
{
    QPrinter elegida(busca_impresora(impresora, donde), QPrinter::HighResolution);
    imprime_report(report, elegida, donde);
}

void SalidaQt::muestra(std::shared_ptr<const Report> report, Donde) { m_visor(std::move(report)); }

void SalidaQt::guarda(const Report& report, Donde donde) { pregunta_y_guarda_pdf(report, donde); }

void SalidaQt::envia(const Report& report, Donde donde)
{
    const auto fichero = Correo::fichero_nuevo(a_qt(report.nombre_de_fichero()), donde);
    guarda_pdf(report, fichero, donde);
    Correo::entrega(fichero, a_qt(report.asunto()), donde);
}

void pregunta_y_guarda_pdf(const Report& report, Donde donde)
{
    auto* ventana = QApplication::activeModalWidget() != nullptr ? QApplication::activeModalWidget()
                                                                 : QApplication::activeWindow();
    QFileDialog pregunta(
        ventana, QStringLiteral("Guardar como PDF"), {}, QStringLiteral("Documento PDF (*.pdf)"));
    FicherosEnCastellano::pon(pregunta);
    pregunta.setAcceptMode(QFileDialog::AcceptSave);
    pregunta.setDefaultSuffix(QStringLiteral("pdf"));
    pregunta.selectFile(a_qt(report.nombre_de_fichero()).replace(u'/', u'-') + QStringLiteral(".pdf"));
    if (pregunta.exec() == QDialog::Accepted)
        guarda_pdf(report, pregunta.selectedFiles().constFirst(), donde);
}

} // namespace atipicos
