#include "controls/FicherosEnCastellano.hpp"

#include <QDateTime>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QTreeView>

#include <array>
#include <utility>

namespace atipicos {

namespace {

    enum Columna { nombre, tamano, tipo, modificado };

    constexpr std::array titulos{ "Nombre", "Tamaño", "Tipo", "Modificado" };

    QLocale castellano() { return { QLocale::Spanish, QLocale::Spain }; }

    QString tipo_de(const QFileInfo& fichero)
    {
        if (fichero.isRoot())
            return QStringLiteral("Unidad");
        if (fichero.isDir())
            return QStringLiteral("Carpeta");
        const QString extension = fichero.suffix().toUpper();
        return extension.isEmpty() ? QStringLiteral("Fichero") : QStringLiteral("Fichero ") + extension;
    }

    /// Its lists are read by what stands beside them, which Qt does not say.
    void pon_etiquetas(const QFileDialog& dialogo)
    {
        for (const auto& [rotulo, lista] :
            { std::pair{ "lookInLabel", "lookInCombo" }, { "fileTypeLabel", "fileTypeCombo" } })
            if (auto* etiqueta = dialogo.findChild<QLabel*>(QLatin1String(rotulo)))
                etiqueta->setBuddy(dialogo.findChild<QWidget*>(QLatin1String(lista)));
    }

    /// Qt leaves room for a year of two digits; the names give what is missing.
    void ensancha_dias(const QFileDialog& dialogo)
    {
        const auto* ficheros = dialogo.findChild<QTreeView*>(QStringLiteral("treeView"));
        if (ficheros == nullptr)
            return;
        auto& cabecera = *ficheros->header();
        const int falta = ficheros->fontMetrics().horizontalAdvance(QStringLiteral("00/00/0000 00:00 ww"))
            - cabecera.sectionSize(modificado);
        cabecera.resizeSection(modificado, cabecera.sectionSize(modificado) + falta);
        cabecera.resizeSection(nombre, cabecera.sectionSize(nombre) - falta);
    }

}

void FicherosEnCastellano::pon(QFileDialog& dialogo)
{
    dialogo.setLocale(castellano());
    dialogo.setProxyModel(new FicherosEnCastellano(&dialogo));
    pon_etiquetas(dialogo);
    ensancha_dias(dialogo);
}

QVariant FicherosEnCastellano::data(const QModelIndex& celda, int papel) const
{
    const auto* ficheros = qobject_cast<const QFileSystemModel*>(sourceModel());
    if (papel != Qt::DisplayRole || ficheros == nullptr || celda.column() == nombre)
        return QIdentityProxyModel::data(celda, papel);
    const QFileInfo fichero = ficheros->fileInfo(mapToSource(celda));
    switch (celda.column()) {
    case tamano:
        return fichero.isDir() ? QString() : castellano().formattedDataSize(fichero.size(), 0);
    case tipo:
        return tipo_de(fichero);
    case modificado:
        return castellano().toString(fichero.lastModified(), QStringLiteral("dd/MM/yyyy H:mm"));
    default:
        return QIdentityProxyModel::data(celda, papel);
    }
}

QVariant FicherosEnCastellano::headerData(int columna, Qt::Orientation sentido, int papel) const
{
    if (papel != Qt::DisplayRole || sentido != Qt::Horizontal || columna < nombre || columna > modificado)
        return QIdentityProxyModel::headerData(columna, sentido, papel);
    return QString::fromUtf8(titulos.at(static_cast<std::size_t>(columna)));
}

} // namespace atipicos
