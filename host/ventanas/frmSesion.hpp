#pragma once

#include "host/orvalin/Catalogos.hpp"
#include "host/ventanas/VentanaPrincipal.hpp"

#include <QDialog>

#include <optional>
#include <vector>

class QComboBox;

namespace atipicos::app {

/// Asks in which company and as which user to work.
class frmSesion final : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmSesion)
public:
    frmSesion(const std::vector<orvalin::Ficha>& empresas, const std::vector<orvalin::Ficha>& usuarios,
        QWidget* parent = nullptr);

    [[nodiscard]] std::int16_t empresa() const;
    [[nodiscard]] std::int32_t usuario() const;
    void elige(std::int16_t empresa, std::int32_t usuario); ///< what is proposed

private:
    QComboBox* m_empresa;
    QComboBox* m_usuario;
};

/// The company and user to work with: those given, or the only ones there are, or those that the person
/// chooses, with the ones of the last time proposed. Nothing when the person gives up.
[[nodiscard]] std::optional<OpcionesComunes> elige_sesion(const OpcionesVentana& opciones);

} // namespace atipicos::app
