#pragma once

#include "controls/Formulario.hpp"
#include "platform/qvoremp/Empresa.hpp"
#include "printing/DestinoImpresion.hpp"

#include <memory>
#include <optional>

namespace Ui {
class frmImpresora;
}

namespace atipicos {

/// "Seleccione Destino e Impresora.": the printer, and the output devices of the first and of the second
/// print, proposed from the company's configuration, which it never writes. A printer is not proposed where
/// the system has none.
class frmImpresora final : public Formulario {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmImpresora)
public:
    explicit frmImpresora(QWidget* parent = nullptr);
    ~frmImpresora() override;

    void set_EmpresaOrvalin(std::shared_ptr<qvoremp::Empresa> empresa) noexcept;

    /// The choice as last accepted, or as given. What is given does not move the combos: those open with the
    /// company's defaults, and keep what was chosen as long as the form lives.
    [[nodiscard]] const DestinoImpresion& Destino() const noexcept { return m_destino; }
    void set_Destino(DestinoImpresion destino) noexcept;
    [[nodiscard]] bool Aceptado() const noexcept { return m_aceptado; }

    /// Shows the dialog over `OwnerForm`, which one that is being waited for already does not take.
    void Show(int Modal = 0, const Duena& OwnerForm = {});

    /// Shows a new dialog, modally, and gives what was chosen; nothing when it was cancelled.
    [[nodiscard]] static std::optional<DestinoImpresion> pregunta(
        std::shared_ptr<qvoremp::Empresa> empresa, QWidget* parent);

private:
    void Form_Load();
    void deja_los_que_hay();
    void cmdAceptar_Click();
    void cmdCancelar_Click();

    std::unique_ptr<Ui::frmImpresora> m_ui;
    std::shared_ptr<qvoremp::Empresa> m_empresa;
    DestinoImpresion m_destino;
    bool m_aceptado = false;
    bool m_cargado = false;
};

} // namespace atipicos
