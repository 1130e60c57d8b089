#pragma once

#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <string>

namespace atipicos {

/// One payment forecast as the dialog hands it over: the four values that are posted.
struct Prevision {
    Currency Importe;
    std::int16_t TipoDoc = 0; ///< document type, 0 for none
    Date Vencimiento;
    std::string Banco; ///< bank account, may be empty
};

} // namespace atipicos
