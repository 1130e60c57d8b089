#include "controls/VSFlexGrid.hpp"

#include "controls/CabeceraUnida.hpp"
#include "controls/ModeloRejilla.hpp"
#include "controls/Twips.hpp"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

namespace atipicos {

VSFlexGrid::VSFlexGrid(QWidget* parent)
    : QTableView(parent)
    , m_modelo(new ModeloRejilla(this))
    , m_cabecera(new CabeceraUnida(this))
{
    setModel(m_modelo);
    setHorizontalHeader(m_cabecera);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + fontMetrics().height() / 2);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setAlternatingRowColors(true);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
}

int VSFlexGrid::Cols() const { return m_modelo->columnCount(); }

void VSFlexGrid::set_Cols(int columnas)
{
    m_modelo->set_Cols(columnas);
    m_alineaciones.resize(static_cast<std::size_t>(columnas), Qt::AlignLeft | Qt::AlignVCenter);
    m_mas_largo.assign(static_cast<std::size_t>(columnas), 0);
}

int VSFlexGrid::Rows() const { return m_modelo->Rows(); }

void VSFlexGrid::set_Rows(int filas)
{
    m_modelo->set_Rows(filas);
    if (filas > 1)
        return;
    m_ordenada = -1; // what comes next has an order of its own
    m_cabecera->setSortIndicatorShown(false);
}

int VSFlexGrid::Row() const
{
    const auto elegidas = selectionModel()->selectedRows();
    return elegidas.isEmpty() ? 0 : elegidas.front().row() + 1;
}

void VSFlexGrid::set_Row(int fila)
{
    if (fila < 1 || fila >= Rows()) {
        setCurrentIndex({});
        clearSelection();
        return;
    }
    selectRow(fila - 1);
}

QString VSFlexGrid::TextMatrix(int fila, int columna) const { return m_modelo->TextMatrix(fila, columna); }

void VSFlexGrid::set_TextMatrix(int fila, int columna, const QString& texto)
{
    m_modelo->set_TextMatrix(fila, columna, texto);
    if (fila > 0 && fila < Rows())
        ajusta_ancho(fila);
}

void VSFlexGrid::AddItem(const QString& fila) { AddItem(fila.toUtf8()); }

void VSFlexGrid::AddItem(const QByteArray& fila, int dato)
{
    m_modelo->AddItem(fila, dato);
    ajusta_ancho(Rows() - 1);
}

int VSFlexGrid::RowData(int fila) const { return m_modelo->RowData(fila); }

void VSFlexGrid::RemoveItem(int fila)
{
    const int elegida = Row();
    m_modelo->RemoveItem(fila);
    if (elegida == fila)
        set_Row(std::min(fila, Rows() - 1));
}

int VSFlexGrid::ColWidth(int columna) const { return columnWidth(columna); }

void VSFlexGrid::set_ColWidth(int columna, int twips)
{
    setColumnWidth(columna, twips_a_pixeles(twips, *this));
}

void VSFlexGrid::set_ColAlignment(int columna, Qt::Alignment alineacion)
{
    m_alineaciones.at(static_cast<std::size_t>(columna)) = alineacion;
    m_modelo->set_ColAlignment(columna, alineacion);
}

void VSFlexGrid::set_ColHidden(int columna, bool oculta) { setColumnHidden(columna, oculta); }

void VSFlexGrid::set_ColNombre(int columna, const QString& nombre)
{
    m_modelo->set_ColNombre(columna, nombre);
}

void VSFlexGrid::set_MergeRow(bool unida) { m_cabecera->set_Unida(unida); }

void VSFlexGrid::set_ColOrden(int columna, Clase clase)
{
    if (m_ordenes.empty())
        connect(m_cabecera, &QHeaderView::sectionClicked, this, &VSFlexGrid::ordena_por);
    m_ordenes[columna] = clase;
}

void VSFlexGrid::ordena_por(int columna)
{
    if (const auto orden = m_ordenes.find(columna); orden != m_ordenes.end()) {
        m_descendente = columna == m_ordenada && !m_descendente;
        m_ordenada = columna;
        m_modelo->Ordena(columna, orden->second, m_descendente);
        if (Row() > 0)
            scrollTo(currentIndex());
    }
    // The heading has moved its mark by itself, whatever was clicked.
    m_cabecera->setSortIndicatorShown(m_ordenada >= 0);
    m_cabecera->setSortIndicator(m_ordenada, m_descendente ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void VSFlexGrid::set_Redraw(bool activo) { m_modelo->set_Redraw(activo); }

void VSFlexGrid::set_Aviso(const QString& aviso)
{
    m_aviso = aviso;
    setAccessibleDescription(aviso);
    viewport()->update();
}

void VSFlexGrid::set_Marcada(int dato) { m_modelo->set_Marcada(dato); }

/// A click below the rows, or with Ctrl on the chosen one, would leave none chosen.
QItemSelectionModel::SelectionFlags VSFlexGrid::selectionCommand(
    const QModelIndex& indice, const QEvent* evento) const
{
    if (!indice.isValid())
        return QItemSelectionModel::NoUpdate;
    const auto orden = QTableView::selectionCommand(indice, evento);
    if (orden.testAnyFlags(QItemSelectionModel::Deselect | QItemSelectionModel::Toggle))
        return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
    return orden;
}

/// Measures a number only when it has more characters than any before it.
void VSFlexGrid::ajusta_ancho(int fila)
{
    bool ajustado = false;
    QByteArrayView resto = m_modelo->Fila(fila);
    for (int columna = 0; columna < Cols(); ++columna) {
        const auto tabulador = resto.indexOf('\t');
        const auto celda = tabulador < 0 ? resto : resto.first(tabulador);
        resto = tabulador < 0 ? QByteArrayView() : resto.sliced(tabulador + 1);
        const auto lugar = static_cast<std::size_t>(columna);
        if (celda.size() <= m_mas_largo[lugar] || !m_alineaciones[lugar].testFlag(Qt::AlignRight)
            || isColumnHidden(columna))
            continue;
        m_mas_largo[lugar] = celda.size();
        const int necesario = fontMetrics().horizontalAdvance(QString::fromUtf8(celda) + QLatin1String("00"));
        if (necesario > columnWidth(columna)) {
            setColumnWidth(columna, necesario);
            ajustado = true;
        }
    }
    if (ajustado)
        emit AnchoAjustado();
}

void VSFlexGrid::copia() const
{
    QStringList celdas;
    for (int columna = 0; columna < Cols(); ++columna)
        if (!isColumnHidden(columna))
            celdas << m_modelo->index(Row() - 1, columna).data().toString();
    QApplication::clipboard()->setText(celdas.join(u'\t'));
}

void VSFlexGrid::paintEvent(QPaintEvent* evento)
{
    QTableView::paintEvent(evento);
    QPainter pintor(viewport());
    if (Rows() <= 1 && !m_aviso.isEmpty()) {
        pintor.setPen(palette().color(QPalette::Text));
        pintor.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, m_aviso);
    }
    if (hasFocus()) {
        pintor.setPen(QPen(palette().color(QPalette::Link), 2));
        pintor.drawRect(viewport()->rect().adjusted(1, 1, -1, -1));
    }
}

void VSFlexGrid::focusInEvent(QFocusEvent* evento)
{
    QTableView::focusInEvent(evento);
    viewport()->update(); // by itself it would paint no more than the chosen row
}

void VSFlexGrid::focusOutEvent(QFocusEvent* evento)
{
    QTableView::focusOutEvent(evento);
    viewport()->update();
}

void VSFlexGrid::keyPressEvent(QKeyEvent* tecla)
{
    const int ultima = Rows() - 1;
    const bool sin_fila = Row() == 0;
    if (tecla->matches(QKeySequence::Copy)) {
        if (!sin_fila)
            copia();
        return;
    }
    switch (tecla->key()) {
    case Qt::Key_Home:
        set_Row(1);
        return;
    case Qt::Key_End:
        set_Row(ultima);
        return;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        if (!sin_fila)
            break;
        set_Row(1); // nothing was chosen: begin at the top
        return;
    default:
        break;
    }
    QTableView::keyPressEvent(tecla);
}

} // namespace atipicos
