#pragma once

#include "browser/CargoListado.hpp"
#include "browser/DetalleAtipico.hpp"

#include <QWidget>

#include <memory>

namespace Ui {
class frmDetalleAtipico;
}

namespace atipicos {

/// The tab "Detalles" of the charge browser: one charge with its lines, to be read only. Where the host tells
/// the payment forecasts of a charge they stand below its lines.
class frmDetalleAtipico final : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmDetalleAtipico)
public:
    explicit frmDetalleAtipico(QWidget* parent = nullptr);
    ~frmDetalleAtipico() override;

    void Prepara(); ///< for the company and connection of the context; empty afterwards
    void Vacia(); ///< shows no charge

    /// Shows the header of a charge of the list, and its forecasts; a failure to read those is told in their
    /// place.
    void Cargar_Cabecera(const ClaveCargo& clave, const CargoListado& cargo);

    /// Reads the lines. A failure is shown, and leaves those that came before it.
    void Cargar_Detalles(const ClaveCargo& clave);

private:
    void muestra_previsiones(const ClaveCargo& clave);

    std::unique_ptr<Ui::frmDetalleAtipico> m_ui;
};

} // namespace atipicos
