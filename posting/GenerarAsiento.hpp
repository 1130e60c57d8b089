#pragma once

#include "posting/CargoContable.hpp"
#include "posting/Prevision.hpp"
#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace atipicos {

/// What the editor has gathered of a charge that is to be posted.
struct DatosAsiento {
    Date Fecha; ///< date of the entry; its year is the accounting year
    std::int32_t Proveedor = 0;
    std::string NombreProveedor; ///< as the person sees it
    std::int16_t Almacen = 0;
    Currency Total; ///< sum of the lines, before tax
    std::vector<CargoContable> Cargos;
    bool Franquiciado = false; ///< the supplier's short-term debt account instead of the supplier account
    std::vector<Prevision> Previsiones;
};

/// Posts a charge as one balanced journal entry of the accounting company `intEmpContable`, with its tax
/// record and, when the company generates them, its payment forecasts:
///
///     A  debtor       debit   total + tax
///     B  income       credit  each line
///     C  output tax   credit  tax (only where tax applies)
///     D  supplier     debit   total + tax
///     E  debtor       credit  total + tax
///
/// `strDocumento` is the code of the charge. On success `lngAsiento` receives the entry number. An error
/// is shown (titled "frmCompras_Atipicos:GenerarAsiento") and cleared: `lngAsiento` then stays as it was,
/// and what had been stored before stays in the caller's transaction. Error 1000 means that the accounting
/// company does not exist or that the library refused a line.
///
/// The tax is the Canarian IGIC (Ley 20/1991); the accounts follow the Spanish general plan (RD 1514/2007).
void GenerarAsiento(const std::string& strDocumento, std::int16_t intEmpContable, std::int32_t& lngAsiento,
    const DatosAsiento& datos);

} // namespace atipicos
