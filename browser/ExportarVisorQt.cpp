#include "browser/ExportarVisorQt.hpp"

#include "controls/FicherosEnCastellano.hpp"
#include "controls/Texto.hpp"
#include "controls/VSFlexGrid.hpp"
#include "runtime/SalidaSegura.hpp"

#include <QDate>
#include <QFileDialog>

namespace atipicos {

namespace {

    /// The order of names is that of days; a date that is none stays as it was typed.
    QString dia(const std::string& fecha)
    {
        const auto leida = Date::de_texto(fecha);
        if (!leida)
            return a_qt(fecha).replace(u'/', u'-');
        return QDate(leida->anio(), leida->mes(), leida->dia()).toString(Qt::ISODate);
    }

    QString pide_fichero(const QString& nombre, QWidget* ventana)
    {
        QFileDialog dialogo(ventana, QStringLiteral("Exportar la lista"));
        dialogo.setObjectName(QStringLiteral("dlgExportar"));
        FicherosEnCastellano::pon(dialogo);
        dialogo.setAcceptMode(QFileDialog::AcceptSave);
        dialogo.setNameFilters({ QStringLiteral("Libro de cálculo (*.xlsx)"),
            QStringLiteral("Texto separado por punto y coma (*.csv)") });
        dialogo.setDefaultSuffix(QStringLiteral("xlsx"));
        dialogo.selectFile(nombre);
        QObject::connect(&dialogo, &QFileDialog::filterSelected, &dialogo, [&dialogo](const QString& filtro) {
            dialogo.setDefaultSuffix(
                filtro.contains(QLatin1String("csv")) ? QStringLiteral("csv") : QStringLiteral("xlsx"));
        });
        return dialogo.exec() == QDialog::Accepted ? dialogo.selectedFiles().value(0) : QString();
    }

}

QString nombre_de_fichero(const FiltroAtipicos& filtro)
{
    QString nombre = QStringLiteral("Atípicos %1 a %2").arg(dia(filtro.FechaI), dia(filtro.FechaF));
    if (filtro.Almacen > 0)
        nombre += QStringLiteral(", almacén %1").arg(filtro.Almacen);
    if (filtro.Proveedor > 0)
        nombre += QStringLiteral(", proveedor %1").arg(filtro.Proveedor);
    return nombre;
}

QString exporta_lista(const OrigenLista& lista, const QString& nombre, QWidget* ventana)
{
    QString fichero = pide_fichero(nombre, ventana);
    if (fichero.isEmpty())
        return {};
    SalidaSegura salida(de_qt(fichero));
    if (fichero.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive))
        exporta_csv(salida.flujo(), lista);
    else
        exporta_xlsx(salida.provisional(), lista);
    salida.termina();
    return fichero;
}

QString exporta_vsCab(
    const VSFlexGrid& vsCab, const std::vector<CargoListado>& cargos, const QString& nombre, QWidget* ventana)
{
    const OrigenLista lista = [&](const CadaCargo& cada) {
        for (int fila = 1; fila < vsCab.Rows(); ++fila)
            cada(cargos.at(static_cast<std::size_t>(vsCab.RowData(fila))));
    };
    return exporta_lista(lista, nombre, ventana);
}

} // namespace atipicos
