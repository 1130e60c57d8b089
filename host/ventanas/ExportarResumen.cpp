#include "host/ventanas/ExportarResumen.hpp"

#include "controls/FicherosEnCastellano.hpp"
#include "controls/Texto.hpp"
#include "host/graficos/DibujaResumen.hpp"
#include "host/resumen/ResumenEnFichero.hpp"
#include "runtime/Error.hpp"
#include "runtime/SalidaSegura.hpp"

#include <QFileDialog>
#include <QFileInfo>

namespace atipicos::app {

namespace {

    const QStringList tipos{ QStringLiteral("Libro de cálculo (*.xlsx)"),
        QStringLiteral("Texto separado por punto y coma (*.csv)"), QStringLiteral("Datos JSON (*.json)"),
        QStringLiteral("Imagen de los gráficos (*.png)"), QStringLiteral("Dibujo de los gráficos (*.svg)"),
        QStringLiteral("Documento con los gráficos (*.pdf)") };

    /// The letters between the point and the parenthesis.
    QString sufijo(const QString& tipo) { return tipo.section(QStringLiteral("*."), 1).chopped(1); }

    /// The order of names is that of days.
    QString en_nombre(Date fecha)
    {
        const auto texto = a_qt(fecha.texto());
        return texto.mid(6) + u'-' + texto.mid(3, 2) + u'-' + texto.left(2);
    }

}

QString pide_fichero_de_resumen(const PeticionResumen& peticion, QWidget* ventana)
{
    QFileDialog dialogo(ventana, QStringLiteral("Exportar el resumen"));
    dialogo.setObjectName(QStringLiteral("dlgExportarResumen"));
    FicherosEnCastellano::pon(dialogo);
    dialogo.setAcceptMode(QFileDialog::AcceptSave);
    dialogo.setNameFilters(tipos);
    dialogo.setDefaultSuffix(sufijo(tipos.front()));
    dialogo.selectFile(QStringLiteral("Resumen por %1 %2 a %3")
                           .arg(a_qt(nombre_de(peticion.por)), en_nombre(peticion.periodo.desde),
                               en_nombre(peticion.periodo.hasta)));
    QObject::connect(&dialogo, &QFileDialog::filterSelected, &dialogo,
        [&dialogo](const QString& tipo) { dialogo.setDefaultSuffix(sufijo(tipo)); });
    return dialogo.exec() == QDialog::Accepted ? dialogo.selectedFiles().value(0) : QString();
}

void guarda_resumen(const ResumenCargos& resumen, const ResumenCargos& meses, const QString& fichero)
{
    const auto formato = QFileInfo(fichero).suffix().toLower();
    const bool conocido = std::any_of(
        tipos.begin(), tipos.end(), [&](const QString& tipo) { return sufijo(tipo) == formato; });
    if (!conocido)
        throw Error(1, "atipicos",
            "No se sabe en qué formato escribir «" + de_qt(fichero)
                + "»: el nombre ha de acabar en .xlsx, .csv, .json, .png, .svg o .pdf.");
    SalidaSegura salida(de_qt(fichero));
    if (formato == QLatin1String("csv"))
        resumen_en_csv(salida.flujo(), resumen);
    else if (formato == QLatin1String("json"))
        resumen_en_json(salida.flujo(), resumen);
    else if (formato == QLatin1String("xlsx"))
        resumen_en_xlsx(salida.flujo(), resumen);
    else
        salida.flujo() << dibuja_resumen(resumen, meses, de_qt(formato));
    salida.termina();
}

} // namespace atipicos::app
