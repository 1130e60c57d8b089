#pragma once

#include "runtime/Currency.hpp"

#include <string>

namespace atipicos {

/// One line of the charge as accounting sees it.
struct CargoContable {
    Currency Importe;
    std::string Cuenta; ///< income account of the article; empty: that of the warehouse
};

} // namespace atipicos
