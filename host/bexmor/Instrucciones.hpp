#pragma once

#include "platform/qvbxemp/Biblioteca.hpp"

#include <cstdint>
#include <memory>
#include <string>

/// What the statements on the tables of one accounting company have in common.
namespace atipicos::bexmor {

inline constexpr std::int32_t error_contable = 1000; ///< number of what the library refuses

/// The connection of the company. Error 91 when it has none.
[[nodiscard]] adodb::Connection& conexion(const qvbxemp::Empresa& empresa, Donde donde);

[[nodiscard]] std::string filtro(const qvbxemp::Empresa& empresa); ///< " WHERE … =1 AND … =2026"
[[nodiscard]] std::string valores(const qvbxemp::Empresa& empresa); ///< "1, 2026"
[[nodiscard]] std::string nombre(const qvbxemp::Empresa& empresa); ///< "la empresa contable 1, …"

/// An open recordset on the first row of a query that only reads.
[[nodiscard]] std::unique_ptr<adodb::Recordset> consulta(
    const qvbxemp::Empresa& empresa, const std::string& sql, Donde donde);

/// The tax type in the current row of a query for `Porcentaje` and `Imp_CtaRep`.
[[nodiscard]] qvbxemp::TipoImpuesto lee_tipo_impuesto(adodb::Recordset& rs, Donde donde);

/// Raises an `error_contable` unless the amount has at most two decimals and lies within
/// ±999.999.999.999,99.
void comprueba_importe(Currency importe, const std::string& fuente, Donde donde);

/// Raises what a person can understand of a row that the database did not take: an account that is not in
/// the plan, an entry that does not exist; any other error as it came.
[[noreturn]] void explica_rechazo(const adodb::ErrorBaseDatos& error, const qvbxemp::Empresa& empresa,
    std::int32_t asiento, const std::string& cuenta, const std::string& fuente, Donde donde);

} // namespace atipicos::bexmor
