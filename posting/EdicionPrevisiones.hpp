#pragma once

#include "posting/GenerarPrev.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace atipicos {

/// The payment forecasts that the clerk is settling. Rows count from 1, as in the grid.
class EdicionPrevisiones {
public:
    explicit EdicionPrevisiones(const Contabilizacion& datos);

    void Proponer(); ///< puts `GenerarPrev`'s proposal in; errors are shown by it
    void Agregar(
        PrevisionPropuesta prevision); ///< a type 0 is named "SIN ESPECIFICAR"; error 6, nothing added
    void Eliminar(std::int32_t fila); ///< error 5 when there is no such row

    [[nodiscard]] const Contabilizacion& datos() const noexcept { return m_datos; }
    [[nodiscard]] const std::vector<PrevisionPropuesta>& filas() const noexcept { return m_filas; }
    [[nodiscard]] Currency Resto() const { return m_datos.Importe - m_suma; } ///< still to be spread
    [[nodiscard]] bool Cuadra() const noexcept { return m_suma == m_datos.Importe; } ///< exactly

    /// What there is to say of due dates before the day of the charge, as a sentence; empty when there are
    /// none.
    [[nodiscard]] std::string AvisoDeVencimientos() const;

    /// The six cells of the grid, separated by tabs: amount (2 decimals), type, due date, type code, bank
    /// account, bank name.
    [[nodiscard]] static std::string texto(const PrevisionPropuesta& fila);

private:
    Contabilizacion m_datos;
    std::vector<PrevisionPropuesta> m_filas;
    Currency m_suma;
};

} // namespace atipicos
