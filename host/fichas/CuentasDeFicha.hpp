#pragma once

#include "host/fichas/Escritura.hpp"

#include <string>

namespace atipicos::app {

/// Sees to it that the accounts that a charge of the supplier is posted to are there, in each year of each
/// accounting company that its warehouses are posted to, under the supplier's name; those that were called
/// after its former name follow it. Raises an `Error` when its code does not fit into an account.
/// To be called in a transaction, when the record is written.
void prepara_cuentas(const AmbitoDeFichas& ambito, std::int32_t proveedor, const std::string& nombre,
    const std::string& antes);

/// Whether there is such an account in any of those companies.
[[nodiscard]] bool hay_cuenta(const AmbitoDeFichas& ambito, const std::string& cuenta);

} // namespace atipicos::app
