#pragma once

#include "controls/Formulario.hpp"
#include "platform/adodb/Connection.hpp"
#include "platform/qvoremp/Empresa.hpp"

#include <memory>
#include <string>

namespace Ui {
class frmEditor_Comentarios;
}

namespace atipicos {

/// "Editor de Comentarios": the long remarks of a charge or of one of its lines.
class frmEditor_Comentarios final : public Formulario {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmEditor_Comentarios)
public:
    explicit frmEditor_Comentarios(QWidget* parent = nullptr);
    ~frmEditor_Comentarios() override;

    // Kept for whoever embeds the dialog; it asks neither of them anything.
    void set_Conexion(std::shared_ptr<adodb::Connection> conexion) noexcept;
    void set_cEmpresa(std::shared_ptr<qvoremp::Empresa> empresa) noexcept;

    [[nodiscard]] const std::string& Comentario() const noexcept
    {
        return m_comentario;
    } ///< as last accepted
    void set_Comentario(const std::string& comentario);
    [[nodiscard]] bool Aceptado() const noexcept { return m_aceptado; }

public slots:
    void done(int resultado) override; ///< closing unloads the dialog: shown again it is loaded anew

protected:
    void keyPressEvent(QKeyEvent* tecla) override;
    void showEvent(QShowEvent* evento) override;

private:
    /// Every ' becomes ´: a quote would end the text in the statement that stores it.
    void cmdAceptar_Click();
    void cmdCancelar_Click();
    void Form_Load();
    [[nodiscard]] QSize con_marco() const;

    std::unique_ptr<Ui::frmEditor_Comentarios> m_ui;
    std::shared_ptr<adodb::Connection> m_conexion;
    std::shared_ptr<qvoremp::Empresa> m_empresa;
    std::string m_comentario;
    bool m_aceptado = false;
    bool m_cargado = false;
};

} // namespace atipicos
