#pragma once

#include "host/bases/Bases.hpp"
#include "host/comprobacion/Regularizaciones.hpp"

#include <span>
#include <string>
#include <utility>
#include <vector>

/// Entries that no charge has any more, reversed by others. All of it or nothing.
namespace atipicos::app {

/// Who reverses entries, when, and of which day the new ones are.
struct Regularizador {
    Date fecha;
    std::string usuario;
    Date hora;
};

struct ResultadoRegularizar {
    std::vector<Regularizacion> hechas;
    std::vector<std::pair<ClaveAsiento, std::string>> omitidas; ///< each with why
};

/// Posts for each entry one that mirrors it: the same lines with debit and credit swapped, tax record and
/// forecasts with their amounts negative, so that register, accounts and what is due on each day are as if it
/// had not been. Both are linked. All of them in one transaction of both products; of two who do it at once
/// the second finds done what the first one did, and leaves it out, as he does what is a charge's.
///
/// Raises an error, with nothing changed, that names the entry which cannot be reversed, and why: its year is
/// not open, an account is not in the plan of the new one, it does not balance.
[[nodiscard]] ResultadoRegularizar regulariza(const bases::Bases& bases,
    std::span<const ClaveAsiento> asientos, const Regularizador& quien, Donde donde = Donde::aqui());

/// Notes that somebody has reversed them in accounting by hand; posts nothing.
[[nodiscard]] ResultadoRegularizar da_por_saldados(const bases::Bases& bases,
    std::span<const ClaveAsiento> asientos, const Regularizador& quien, Donde donde = Donde::aqui());

} // namespace atipicos::app
