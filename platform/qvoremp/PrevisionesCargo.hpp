#pragma once

#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"
#include "runtime/Error.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace atipicos::qvoremp {

/// A payment forecast as accounting holds it.
struct PrevisionCargo {
    std::int32_t Numero = 0;
    Date Vencimiento;
    std::string Documento; ///< name of the document type
    Currency Importe;

    friend bool operator==(const PrevisionCargo&, const PrevisionCargo&) = default;
};

/// Tells the payment forecasts of the charges of a company, for whoever shows a charge. A host may do
/// without.
class PrevisionesCargo {
public:
    PrevisionesCargo() = default;
    PrevisionesCargo(const PrevisionesCargo&) = delete;
    PrevisionesCargo& operator=(const PrevisionesCargo&) = delete;
    virtual ~PrevisionesCargo() = default;

    /// Those of the entry of that charge, in their order: none where it is not posted, or there is no such
    /// charge. May raise an `Error` of the library.
    [[nodiscard]] virtual std::vector<PrevisionCargo> lee(std::int16_t ejercicio, std::int16_t almacen,
        const std::string& codigo, Donde donde = Donde::aqui()) const = 0;
};

} // namespace atipicos::qvoremp
