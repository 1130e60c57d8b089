#pragma once

#include "controls/OrdenFilas.hpp"

#include <QTableView>

#include <map>
#include <vector>

namespace atipicos {

class CabeceraUnida;
class ModeloRejilla;

/// A grid of texts: rows are added as tab-separated text and chosen whole. Row 0 is the header row, data rows
/// count from 1; columns count from 0. A line break inside a cell is shown as a blank and kept.
///
/// Up, Down, Page Up, Page Down, Home and End move the chosen row (Home and End to the first and the last,
/// with or without Ctrl); Ctrl+C copies it. Tab leaves the grid. A click on the heading of a column that has
/// an order puts the rows in it, and a second one the other way round; the chosen row stays chosen. Mouse and
/// keys choose another row, never none: whatever is clicked, one row stays chosen once there is one.
class VSFlexGrid : public QTableView {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(VSFlexGrid)
public:
    explicit VSFlexGrid(QWidget* parent = nullptr);

    [[nodiscard]] int Cols() const;
    void set_Cols(int columnas);
    [[nodiscard]] int Rows() const; ///< with the header row
    void set_Rows(int filas); ///< 1 leaves the header row alone
    [[nodiscard]] int Row() const; ///< the chosen row, 0 for none
    void set_Row(int fila); ///< outside 1 to `Rows` - 1: none

    [[nodiscard]] QString TextMatrix(int fila, int columna) const; ///< empty outside the grid
    void set_TextMatrix(int fila, int columna, const QString& texto); ///< a tab in `texto` becomes a blank
    void AddItem(const QString& fila);
    /// The same in UTF-8, which is how the rows are kept; `dato` stays with the row wherever it is put.
    void AddItem(const QByteArray& fila, int dato = 0);
    [[nodiscard]] int RowData(int fila) const; ///< its `dato`; `fila` from 1 to `Rows` - 1
    void RemoveItem(int fila); ///< does nothing outside 1 to `Rows` - 1; the row that moves up is chosen

    [[nodiscard]] int ColWidth(int columna) const; ///< pixels
    void set_ColWidth(int columna, int twips);
    void set_ColAlignment(int columna, Qt::Alignment alineacion); ///< columns to the right never cut a text
    void set_ColHidden(int columna, bool oculta);
    void set_ColNombre(int columna, const QString& nombre); ///< read to whoever does not see the heading
    void set_MergeRow(bool unida); ///< equal neighbours of the header row show as one
    void set_ColOrden(int columna, Clase clase); ///< its heading puts the rows in order
    void set_Redraw(bool activo); ///< off while many rows are added
    void set_Aviso(const QString& aviso); ///< stands in the grid while it has no rows
    void set_Marcada(int dato); ///< the row of that `dato` is marked; -1: none

signals:
    void AnchoAjustado(); ///< a column has grown because a number did not fit

protected:
    void keyPressEvent(QKeyEvent* tecla) override;
    void paintEvent(QPaintEvent* evento) override;
    [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(
        const QModelIndex& indice, const QEvent* evento = nullptr) const override;
    void focusInEvent(QFocusEvent* evento) override;
    void focusOutEvent(QFocusEvent* evento) override;

private:
    void ajusta_ancho(int fila);
    void copia() const;
    void ordena_por(int columna);

    ModeloRejilla* m_modelo;
    CabeceraUnida* m_cabecera;
    QString m_aviso;
    std::vector<Qt::Alignment> m_alineaciones;
    std::map<int, Clase> m_ordenes; ///< of the columns that have one
    int m_ordenada = -1; ///< column by which the rows are in order; -1: as they were added
    bool m_descendente = false;
    std::vector<qsizetype> m_mas_largo; ///< characters of the longest number of each column so far
};

} // namespace atipicos
