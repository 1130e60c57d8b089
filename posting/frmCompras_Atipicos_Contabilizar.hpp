#pragma once

#include "controls/Formulario.hpp"
#include "platform/qvbxemp/Biblioteca.hpp"
#include "posting/EdicionPrevisiones.hpp"

#include <memory>

namespace Ui {
class frmCompras_Atipicos_Contabilizar;
}

namespace atipicos {

/// "Previsiones de Pago": the clerk confirms, deletes and adds the payment forecasts of a charge until they
/// add up to the amount to post. Only its two buttons end it.
class frmCompras_Atipicos_Contabilizar final : public Formulario {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmCompras_Atipicos_Contabilizar)
public:
    /// Loads itself for `datos`; errors while loading are shown.
    explicit frmCompras_Atipicos_Contabilizar(const Contabilizacion& datos, QWidget* parent = nullptr);
    ~frmCompras_Atipicos_Contabilizar() override;

    [[nodiscard]] bool Aceptado() const noexcept { return m_aceptado; }

    // What the caller reads after the dialog has closed; forecasts count from 1, error 5 outside them.
    [[nodiscard]] int PrevPago_NroVencimientos() const;
    [[nodiscard]] Currency PrevPago_Importe(int i) const; ///< as the grid shows it, in cents
    [[nodiscard]] std::int16_t PrevPago_TipoDoc(int i) const;
    [[nodiscard]] Date PrevPago_Vencimiento(int i) const;
    [[nodiscard]] std::string PrevPago_Banco(int i) const;

public slots:
    void reject() override; ///< Escape and the window's own close box are refused

protected:
    void keyPressEvent(QKeyEvent* tecla) override;

private:
    void conecta();
    void Form_Load();
    void prepara_selectores();
    void prepara_rejilla();
    void lee_banco_del_proveedor();
    void muestra_previsiones();
    void muestra_resto();
    void vacia_entrada();
    void agrega();
    [[nodiscard]] bool existe_banco();
    [[nodiscard]] bool hay_tipo() const;
    [[nodiscard]] const Prevision& prevision(int i) const;

    void txtPrevVto_Intro();
    void cmdPrevEliminar_Click();
    void cmdAceptar_Click();
    void cmdCancelar_Click();

    std::unique_ptr<Ui::frmCompras_Atipicos_Contabilizar> m_ui;
    EdicionPrevisiones m_edicion;
    std::unique_ptr<qvbxemp::Empresa> m_contable; ///< the accounting company of the charge
    std::string m_CtaBancoPago; ///< of the supplier
    bool m_aceptado = false;
};

} // namespace atipicos
