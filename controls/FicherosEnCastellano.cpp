#include "controls/FicherosEnCastellano.hpp"

#include <QDateTime>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QLocale>

#include <array>

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

}

void FicherosEnCastellano::pon(QFileDialog& dialogo)
{
    dialogo.setLocale(castellano());
    dialogo.setProxyModel(new FicherosEnCastellano(&dialogo));
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
