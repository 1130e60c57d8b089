#pragma once

#include "controls/Formulario.hpp"
#include "host/bases/Lugar.hpp"

#include <functional>
#include <optional>

class QLabel;
class QLineEdit;
class QListWidget;
class QRadioButton;
class QVBoxLayout;

namespace atipicos::app {

/// Asks which company to work with: one that was opened before, one in a folder or on a server, or a new
/// one, made here. What goes wrong is told in the dialog, which stays open.
class frmEmpresa final : public Formulario {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmEmpresa)
public:
    explicit frmEmpresa(QWidget* parent = nullptr);

    void Propon(
        const QString& lugar, const QString& motivo = {}); ///< what the boxes hold, and why it is asked
    [[nodiscard]] std::optional<bases::Lugar> Elegido() const { return m_elegido; } ///< after it was accepted

protected:
    void keyPressEvent(QKeyEvent* tecla) override;

private:
    void hace_recientes(QVBoxLayout& caja);
    void hace_lugar(QVBoxLayout& caja);
    void hace_botones(QVBoxLayout& caja);
    void examina();
    void abre();
    void crea();
    void olvida();
    void intenta(const std::function<void(const bases::Lugar&)>& que);
    void dice(const QString& motivo);

    QListWidget* m_recientes;
    QLineEdit* m_lugar;
    QRadioButton* m_muestra;
    QLabel* m_motivo;
    std::optional<bases::Lugar> m_elegido;
};

} // namespace atipicos::app
