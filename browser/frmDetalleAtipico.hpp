#pragma once

#include "browser/DetalleAtipico.hpp"

#include <QWidget>

#include <memory>

namespace Ui {
class frmDetalleAtipico;
}

namespace atipicos {

/// The tab "Detalles" of the charge browser: one charge with its lines, to be read only.
class frmDetalleAtipico final : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmDetalleAtipico)
public:
    explicit frmDetalleAtipico(QWidget* parent = nullptr);
    ~frmDetalleAtipico() override;

    void Prepara(); ///< for the company and connection of the context; empty afterwards

    /// Shows the header; `fecha` as the list has it.
    void Cargar_Cabecera(const ClaveCargo& clave, std::int32_t proveedor, const QString& fecha);

    /// Reads the lines. A failure is shown, and leaves those that came before it.
    void Cargar_Detalles(const ClaveCargo& clave);

private:
    std::unique_ptr<Ui::frmDetalleAtipico> m_ui;
};

} // namespace atipicos
