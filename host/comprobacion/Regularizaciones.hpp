#pragma once

#include "host/comprobacion/ClaveAsiento.hpp"
#include "platform/adodb/Connection.hpp"
#include "runtime/Date.hpp"

#include <functional>
#include <string>

/// Which entry was reversed by which one. Both are posted rows, which nobody changes.
namespace atipicos::app {

struct Regularizacion {
    ClaveAsiento asiento;
    ClaveAsiento por; ///< the entry that reverses it; number 0: somebody has done it by hand

    [[nodiscard]] bool a_mano() const noexcept { return por.numero == 0; }
};

/// All of them in order. Tables of an earlier version have none.
void lee_regularizaciones(adodb::Connection& bexmor, const std::function<void(const Regularizacion&)>& cada);

/// Whether the entry has been reversed, or settled by hand.
[[nodiscard]] bool esta_regularizado(adodb::Connection& bexmor, const ClaveAsiento& asiento);

/// Writes one down. Raises the database's error of the kind `restriccion` when the entry has been reversed
/// already, by whomever.
void apunta_regularizacion(
    adodb::Connection& bexmor, const Regularizacion& una, const std::string& usuario, Date hora);

} // namespace atipicos::app
