#pragma once

#include "host/panel/CargoResumido.hpp"

#include <QAbstractTableModel>

#include <vector>

namespace atipicos::app {

/// The charges that the main window lists.
class ModeloCargos final : public QAbstractTableModel {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ModeloCargos)
public:
    enum Columna { codigo, almacen, fecha, proveedor, base, impuesto, total, asiento, columnas };

    explicit ModeloCargos(QObject* parent = nullptr);

    void Pon(std::vector<CargoResumido> cargos); ///< in the place of those that are there
    void Agrega(const std::vector<CargoResumido>& cargos); ///< behind them
    [[nodiscard]] const CargoResumido& Cargo(int fila) const; ///< `fila` from 0
    [[nodiscard]] bool es(const std::vector<CargoResumido>& cargos) const { return m_cargos == cargos; }

    [[nodiscard]] int rowCount(const QModelIndex& padre = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& padre = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& indice, int papel = Qt::DisplayRole) const override;
    [[nodiscard]] QVariant headerData(
        int seccion, Qt::Orientation orientacion, int papel = Qt::DisplayRole) const override;

private:
    std::vector<CargoResumido> m_cargos;
};

} // namespace atipicos::app
