#include "browser/ExportarVisorQt.hpp"

#include "browser/ExportarLista.hpp"
#include "controls/FicherosEnCastellano.hpp"
#include "controls/Texto.hpp"
#include "controls/VSFlexGrid.hpp"
#include "runtime/SalidaSegura.hpp"

#include <QFileDialog>

namespace atipicos {

namespace {

    QString pide_fichero(QWidget* ventana)
    {
        QFileDialog dialogo(ventana, QStringLiteral("Exportar la lista"));
        dialogo.setObjectName(QStringLiteral("dlgExportar"));
        FicherosEnCastellano::pon(dialogo);
        dialogo.setAcceptMode(QFileDialog::AcceptSave);
        dialogo.setNameFilters({ QStringLiteral("Libro de cálculo (*.xlsx)"),
            QStringLiteral("Texto separado por punto y coma (*.csv)") });
        dialogo.setDefaultSuffix(QStringLiteral("xlsx"));
        QObject::connect(&dialogo, &QFileDialog::filterSelected, &dialogo, [&dialogo](const QString& filtro) {
            dialogo.setDefaultSuffix(
                filtro.contains(QLatin1String("csv")) ? QStringLiteral("csv") : QStringLiteral("xlsx"));
        });
        return dialogo.exec() == QDialog::Accepted ? dialogo.selectedFiles().value(0) : QString();
    }

}

QString exporta_vsCab(const VSFlexGrid& vsCab, const std::vector<CargoListado>& cargos, QWidget* ventana)
{
    QString fichero = pide_fichero(ventana);
    if (fichero.isEmpty())
        return {};
    const OrigenLista lista = [&](const CadaCargo& cada) {
        for (int fila = 1; fila < vsCab.Rows(); ++fila)
            cada(cargos.at(static_cast<std::size_t>(vsCab.RowData(fila))));
    };
    SalidaSegura salida(de_qt(fichero));
    if (fichero.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive))
        exporta_csv(salida.flujo(), lista);
    else
        exporta_xlsx(salida.provisional(), lista);
    salida.termina();
    return fichero;
}

} // namespace atipicos
