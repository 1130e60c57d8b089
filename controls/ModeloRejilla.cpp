#include "controls/ModeloRejilla.hpp"

#include <QFont>

#include <algorithm>

namespace atipicos {

namespace {

    /// Where cell `columna` of a tab-separated row begins and ends.
    QByteArrayView celda(const QByteArray& fila, int columna)
    {
        qsizetype inicio = 0;
        for (int i = 0; i < columna; ++i) {
            const auto tabulador = fila.indexOf('\t', inicio);
            if (tabulador < 0)
                return {};
            inicio = tabulador + 1;
        }
        const auto fin = fila.indexOf('\t', inicio);
        return QByteArrayView(fila).sliced(inicio, (fin < 0 ? fila.size() : fin) - inicio);
    }

    QString en_una_linea(QString texto)
    {
        texto.replace(QLatin1String("\r\n"), QLatin1String(" "));
        return texto.replace(u'\r', u' ').replace(u'\n', u' ');
    }

}

ModeloRejilla::ModeloRejilla(QObject* parent)
    : QAbstractTableModel(parent)
{
}

void ModeloRejilla::set_Cols(int columnas)
{
    beginResetModel();
    const auto cuantas = static_cast<std::size_t>(std::max(columnas, 0));
    m_titulos.resize(static_cast<qsizetype>(cuantas));
    m_alineaciones.resize(cuantas, Qt::AlignLeft | Qt::AlignVCenter);
    endResetModel();
}

void ModeloRejilla::set_ColAlignment(int columna, Qt::Alignment alineacion)
{
    m_alineaciones.at(static_cast<std::size_t>(columna)) = alineacion;
}

void ModeloRejilla::set_ColNombre(int columna, const QString& nombre) { m_nombres[columna] = nombre; }

int ModeloRejilla::Rows() const noexcept { return static_cast<int>(m_filas.size()) + 1; }

void ModeloRejilla::set_Rows(int filas)
{
    const int datos = std::max(filas - 1, 0);
    if (datos < m_publicadas) {
        beginRemoveRows({}, datos, m_publicadas - 1);
        m_publicadas = datos;
        m_filas.resize(static_cast<std::size_t>(datos));
        endRemoveRows();
        return;
    }
    m_filas.resize(static_cast<std::size_t>(datos));
    publica();
}

void ModeloRejilla::AddItem(const QByteArray& fila, int dato)
{
    m_filas.push_back({ fila, dato });
    publica();
}

const ModeloRejilla::Guardada& ModeloRejilla::guardada(int fila) const
{
    return m_filas.at(static_cast<std::size_t>(fila) - 1);
}

QByteArrayView ModeloRejilla::Fila(int fila) const { return guardada(fila).texto; }

int ModeloRejilla::RowData(int fila) const { return guardada(fila).dato; }

void ModeloRejilla::RemoveItem(int fila)
{
    const int posicion = fila - 1;
    if (posicion < 0 || posicion >= Rows() - 1)
        return;
    const bool visible = posicion < m_publicadas;
    if (visible) {
        beginRemoveRows({}, posicion, posicion);
        --m_publicadas;
    }
    m_filas.erase(m_filas.begin() + posicion);
    if (visible)
        endRemoveRows();
}

QString ModeloRejilla::TextMatrix(int fila, int columna) const
{
    if (fila < 0 || fila >= Rows() || columna < 0 || columna >= m_titulos.size())
        return {};
    return fila == 0 ? m_titulos.at(columna) : QString::fromUtf8(celda(guardada(fila).texto, columna));
}

void ModeloRejilla::set_TextMatrix(int fila, int columna, const QString& texto)
{
    if (fila < 0 || fila >= Rows() || columna < 0 || columna >= m_titulos.size())
        return;
    QString limpio = texto;
    limpio.replace(u'\t', u' ');
    if (fila == 0) {
        m_titulos[columna] = limpio;
        emit headerDataChanged(Qt::Horizontal, columna, columna);
        return;
    }
    auto& destino = m_filas.at(static_cast<std::size_t>(fila) - 1).texto;
    QByteArrayList celdas = destino.split('\t');
    celdas.resize(m_titulos.size());
    celdas[columna] = limpio.toUtf8();
    destino = celdas.join('\t');
    if (fila <= m_publicadas)
        emit dataChanged(index(fila - 1, columna), index(fila - 1, columna));
}

void ModeloRejilla::Ordena(int columna, Clase clase, bool descendente)
{
    std::vector<QString> celdas;
    celdas.reserve(m_filas.size());
    for (const auto& fila : m_filas)
        celdas.push_back(QString::fromUtf8(celda(fila.texto, columna)));
    const auto orden = orden_de(celdas, clase, descendente);

    emit layoutAboutToBeChanged({}, VerticalSortHint);
    std::vector<Guardada> filas;
    filas.reserve(m_filas.size());
    std::vector<int> nuevas(m_filas.size()); // where each row has gone
    for (const auto antes : orden) {
        nuevas[antes] = static_cast<int>(filas.size());
        filas.push_back(std::move(m_filas[antes]));
    }
    m_filas = std::move(filas);
    const auto indices = persistentIndexList();
    for (const auto& indice : indices)
        changePersistentIndex(indice, index(nuevas[static_cast<std::size_t>(indice.row())], indice.column()));
    emit layoutChanged({}, VerticalSortHint);
}

void ModeloRejilla::set_Marcada(int dato)
{
    m_marcada = dato;
    if (m_publicadas > 0)
        emit dataChanged(index(0, 0), index(m_publicadas - 1, columnCount() - 1));
}

void ModeloRejilla::set_Redraw(bool activo)
{
    m_dibuja = activo;
    publica();
}

void ModeloRejilla::publica()
{
    const int todas = static_cast<int>(m_filas.size());
    if (!m_dibuja || todas == m_publicadas)
        return;
    beginInsertRows({}, m_publicadas, todas - 1);
    m_publicadas = todas;
    endInsertRows();
}

int ModeloRejilla::rowCount(const QModelIndex& padre) const { return padre.isValid() ? 0 : m_publicadas; }

int ModeloRejilla::columnCount(const QModelIndex& padre) const
{
    return padre.isValid() ? 0 : static_cast<int>(m_titulos.size());
}

QVariant ModeloRejilla::data(const QModelIndex& indice, int papel) const
{
    if (!indice.isValid())
        return {};
    switch (papel) {
    case Qt::DisplayRole:
        return en_una_linea(TextMatrix(indice.row() + 1, indice.column()));
    case Qt::ToolTipRole: // what does not fit in the column can still be read
        return TextMatrix(indice.row() + 1, indice.column()).toHtmlEscaped();
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(m_alineaciones.at(static_cast<std::size_t>(indice.column())));
    case Qt::FontRole: {
        if (!marcada(indice.row() + 1))
            return {};
        QFont negrita;
        negrita.setBold(true);
        return negrita;
    }
    case Qt::AccessibleDescriptionRole: // bold cannot be heard
        return marcada(indice.row() + 1) ? QStringLiteral("marcada") : QVariant();
    default:
        return {};
    }
}

bool ModeloRejilla::marcada(int fila) const { return m_marcada >= 0 && RowData(fila) == m_marcada; }

QVariant ModeloRejilla::headerData(int seccion, Qt::Orientation orientacion, int papel) const
{
    if (orientacion != Qt::Horizontal || seccion < 0 || seccion >= m_titulos.size())
        return {};
    if (papel == Qt::AccessibleTextRole)
        return m_nombres.value(seccion, m_titulos.at(seccion));
    if (papel == Qt::DisplayRole)
        return m_titulos.at(seccion);
    if (papel == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignCenter));
    return {};
}

} // namespace atipicos
