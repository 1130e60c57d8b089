#pragma once

#include "controls/Formulario.hpp"
#include "platform/report/Report.hpp"

#include <memory>

namespace Ui {
class frmView;
}

namespace atipicos {

/// "… - Visor de Reportes": a report in the viewer control that fills the form.
class frmView final : public Formulario {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmView)
public:
    explicit frmView(QWidget* parent = nullptr);
    ~frmView() override;

    /// The one form of the component, made when it is first asked for; closed, it holds no report.
    [[nodiscard]] static frmView& compartido();

    // Given before `Carga`.
    void set_Report(std::shared_ptr<const Report> report) noexcept;
    void set_Zoom(int zoom) noexcept { m_zoom = zoom; }

    /// Shows the report that it holds, or an empty view. Modal, it returns when the form was closed;
    /// modeless, at once. A form that is already open shows the new report, and becomes modal when that is
    /// asked for; one that is modal already stays so.
    void Muestra(bool modal);

protected:
    void changeEvent(QEvent* evento) override;
    void closeEvent(QCloseEvent* evento) override;
    void reject() override; ///< Escape closes it, as the window's frame does

private:
    void Form_Load(bool modal);
    void espera_cierre();
    static void Form_Activate();
    void Form_Unload();

    std::unique_ptr<Ui::frmView> m_ui;
    std::shared_ptr<const Report> m_report;
    int m_zoom = 0;
};

} // namespace atipicos
