#pragma once

#include "host/ventanas/ListasPendientes.hpp"

#include <QFrame>

#include <array>

class QLabel;
class QPushButton;

namespace atipicos::app {

/// What needs attention, a line each, with the button that tells more and how it is settled.
class PanelPendientes final : public QFrame {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PanelPendientes)
public:
    explicit PanelPendientes(Destinatario de, QWidget* parent = nullptr);

    void Pon(Pendientes pendientes);

signals:
    void Abrir(const CargoResumido& cargo); ///< the browser is wanted on it
    void Anular(); ///< the entries without charge are to be reversed

private:
    struct Linea {
        QLabel* texto = nullptr;
        QPushButton* boton = nullptr;
    };

    [[nodiscard]] Linea hace_linea(int fila, const char* nombre, const QString& boton);
    void pon_linea(const Linea& linea, const QString& texto, bool hay);
    void ve_sin_asiento();
    void muestra(ListaPendiente lista);

    Destinatario m_de;
    Pendientes m_pendientes;
    std::array<Linea, 3> m_lineas;
};

} // namespace atipicos::app
