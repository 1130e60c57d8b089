#include "browser/frmExportarVisor.hpp"

#include "browser/ExportarLista.hpp"
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

    CargoListado cargo_de(const VSFlexGrid& vsCab, int fila)
    {
        QStringList celdas;
        for (int columna = 0; columna < vsCab.Cols(); ++columna)
            celdas << vsCab.TextMatrix(fila, columna);
        return cargo_de_fila(de_qt(celdas.join(u'\t')));
    }

}

QString exporta_vsCab(const VSFlexGrid& vsCab, QWidget* ventana)
{
    QString fichero = pide_fichero(ventana);
    if (fichero.isEmpty())
        return {};
    const OrigenLista lista = [&](const CadaCargo& cada) {
        for (int fila = 1; fila < vsCab.Rows(); ++fila)
            cada(cargo_de(vsCab, fila));
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
