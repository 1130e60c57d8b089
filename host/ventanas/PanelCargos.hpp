#pragma once

#include "host/panel/CargoResumido.hpp"

#include <QWidget>

#include <vector>

class QLabel;
class QLineEdit;
class QTableView;
class QTimer;

namespace atipicos::app {

class HiloLector;
class ModeloCargos;

/// The latest charges, and above them the box in which one looks for others: by code, supplier or amount,
/// found while one types. Several can be chosen.
class PanelCargos final : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PanelCargos)
public:
    /// `lector` reads for this panel alone, and outlives it.
    explicit PanelCargos(HiloLector& lector, QWidget* parent = nullptr);

    void Actualiza(); ///< reads the latest anew, or looks again for what is typed
    void EmpiezaBusqueda(); ///< leads to the box
    void Ofrece(const QList<QAction*>& acciones); ///< in the list's own menu
    [[nodiscard]] std::vector<CargoResumido> Elegidos() const; ///< in the order of the list

signals:
    void Abrir(const CargoResumido& cargo); ///< one was chosen by Enter or a double click

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;
    void showEvent(QShowEvent* evento) override;

private:
    void hace_lista();
    void lee_ultimos();
    void busca();
    void muestra_ultimos(std::vector<CargoResumido> cargos);
    void muestra_fin(bool hay_mas);
    void dice(const QString& texto);
    void abre_actual();
    void elige_primero();
    [[nodiscard]] bool tecla_de_busqueda(int tecla);

    HiloLector& m_lector;
    ModeloCargos* m_modelo;
    QLineEdit* m_buscar;
    QTableView* m_lista;
    QLabel* m_estado;
    QTimer* m_pausa; ///< so that not every letter asks the database
    bool m_a_medias = false; ///< the rows are still those of what was asked for before
};

} // namespace atipicos::app
