#pragma once

#include "platform/adodb/Connection.hpp"

#include <string>
#include <vector>

/// What making the two databases has in common, wherever they are.
namespace atipicos::bases {

/// Makes the tables of a product, and unless `vacia` writes its side of the sample company into them.
void crea_tablas_bexmor(adodb::Connection& conexion, bool vacia, Donde donde);
void crea_tablas_orvalin(adodb::Connection& conexion, bool vacia, Donde donde);

/// The names by which the accounting companies say that their database is called. Where both products share
/// one database all of them mean its accounting schema.
[[nodiscard]] std::vector<std::string> nombres_de_bexmor(adodb::Connection& bexmor, Donde donde);

/// The values of a query's first row.
[[nodiscard]] std::vector<Variant> primera_fila(
    adodb::Connection& conexion, const std::string& sql, Donde donde);

/// The error for a place that holds tables of somebody else.
[[noreturn]] void falla_ajena(const std::string& lugar, Donde donde);

} // namespace atipicos::bases
