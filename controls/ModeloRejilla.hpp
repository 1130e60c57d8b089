#pragma once

#include "controls/OrdenFilas.hpp"

#include <QAbstractTableModel>
#include <QByteArray>
#include <QHash>
#include <QStringList>

#include <vector>

namespace atipicos {

/// The rows of a grid, each kept as the tab-separated text in which it was added, in UTF-8, so that a hundred
/// thousand of them cost little more than their texts. Rows are counted as the forms count them: row 0 is the
/// header row, rows 1 to `Rows` - 1 hold data. Columns count from 0.
class ModeloRejilla final : public QAbstractTableModel {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ModeloRejilla)
public:
    explicit ModeloRejilla(QObject* parent = nullptr);

    void set_Cols(int columnas);
    void set_ColAlignment(int columna, Qt::Alignment alineacion);
    void set_ColNombre(int columna, const QString& nombre); ///< read in the place of its heading

    [[nodiscard]] int Rows() const noexcept; ///< with the header row
    void set_Rows(
        int filas); ///< fewer: the last ones go; more: empty rows are added. 1 leaves the header alone
    /// UTF-8; short rows are padded, long ones cut. `dato` stays with the row wherever it is put.
    void AddItem(const QByteArray& fila, int dato = 0);
    [[nodiscard]] QByteArrayView Fila(int fila) const; ///< as it was added; `fila` from 1 to `Rows` - 1
    [[nodiscard]] int RowData(int fila) const; ///< the `dato` of a row; `fila` from 1 to `Rows` - 1
    void RemoveItem(int fila); ///< does nothing outside 1 to `Rows` - 1

    [[nodiscard]] QString TextMatrix(int fila, int columna) const; ///< empty outside the grid
    void set_TextMatrix(int fila, int columna, const QString& texto); ///< a tab in `texto` becomes a blank

    /// Puts the rows in order by a column; whoever holds an index keeps his row.
    void Ordena(int columna, Clase clase, bool descendente);

    void set_Marcada(int dato); ///< shows the rows of that `dato` in bold; -1: none

    /// While it is off, rows that are added are kept back from the view, which gets them at once.
    void set_Redraw(bool activo);

    [[nodiscard]] int rowCount(const QModelIndex& padre = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& padre = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& indice, int papel = Qt::DisplayRole) const override;
    [[nodiscard]] QVariant headerData(
        int seccion, Qt::Orientation orientacion, int papel = Qt::DisplayRole) const override;

private:
    struct Guardada {
        QByteArray texto;
        int dato = 0;
    };

    [[nodiscard]] const Guardada& guardada(int fila) const;
    [[nodiscard]] bool marcada(int fila) const;
    void publica();

    QStringList m_titulos;
    QHash<int, QString> m_nombres; ///< of columns that are read by another name than their heading
    std::vector<Qt::Alignment> m_alineaciones;
    std::vector<Guardada> m_filas;
    int m_publicadas = 0; ///< the view knows the first ones; the rest waits for redrawing
    bool m_dibuja = true;
    int m_marcada = -1;
};

} // namespace atipicos
