#pragma once

#include "host/sesion/BorradoresEnCarpeta.hpp"

#include <QFrame>

#include <memory>
#include <vector>

class QListWidget;
class QPushButton;

namespace atipicos::app {

/// What the person is told of a draft that is offered: "Cargo sin guardar de las 12:40, proveedor, …".
[[nodiscard]] QString texto_de(const BorradorOfrecido& ofrecido);

/// The part of the main window that offers the charges which were being keyed in when their window or their
/// process ended. It is there only while there are any.
class PanelBorradores final : public QFrame {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PanelBorradores)
public:
    /// `borradores` may be nothing: then nothing is ever offered.
    explicit PanelBorradores(
        std::shared_ptr<const BorradoresEnCarpeta> borradores, QWidget* parent = nullptr);

    void Actualiza(); ///< looks which there are now; the chosen one stays chosen

signals:
    void Recuperar(const std::filesystem::path& fichero);
    void Descartar(const std::filesystem::path& fichero); ///< the person has said yes

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    [[nodiscard]] const BorradorOfrecido* elegido() const;
    void mira_elegido();
    void ajusta_alto();
    void recupera();
    void descarta();

    std::shared_ptr<const BorradoresEnCarpeta> m_borradores;
    std::vector<BorradorOfrecido> m_ofrecidos;
    QListWidget* m_lista;
    QPushButton* m_recuperar;
    QPushButton* m_descartar;
};

} // namespace atipicos::app
