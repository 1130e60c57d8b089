#pragma once

#include "posting/Prevision.hpp"
#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace atipicos {

/// What is to be paid, by whom and from when on.
struct Contabilizacion {
    Currency Importe; ///< total plus tax, the amount to post
    std::int32_t Proveedor = 0;
    Date Fecha; ///< date of the charge; due dates count from it and its year is the accounting year
    std::int16_t EmpresaContable = 0;
    bool GenerarPrevisiones = false; ///< forecasts are to be proposed
};

/// A forecast as proposed, with the names that the person sees.
struct PrevisionPropuesta {
    Prevision prevision;
    std::string NombTipoDoc;
    std::string NombreBanco;
};

struct Propuesta {
    std::vector<PrevisionPropuesta> previsiones; ///< in order of instalment
    Currency suma;
    bool GenerarPrev = true; ///< whether the payment method produces forecasts
};

/// Whether the company is configured to forecast its payments. Error 13 when it says neither yes nor no.
[[nodiscard]] bool genera_previsiones(Donde donde = Donde::aqui());

/// Proposes the payment forecasts from the supplier's terms or, where it has none, the company's: as many
/// instalments as the terms say, the last one taking the rest, so that they add up to the amount exactly.
/// No terms, terms without forecasts or an amount of 0 give none. An error is shown and cleared; the
/// forecasts found until then are returned.
[[nodiscard]] Propuesta GenerarPrev(const Contabilizacion& datos);

} // namespace atipicos
