#pragma once

#include "host/bases/Bases.hpp"
#include "runtime/Currency.hpp"

#include <cstdint>
#include <string>

namespace atipicos::bases {

/// Whom a claim is sent to.
struct DatosProveedor {
    std::string nombre;
    std::string nif;
    std::string domicilio;
    std::string codigo_postal;
    std::string poblacion;
};

/// What must be known of a company before its first charge can be recorded.
struct DatosEmpresa {
    std::string nombre;
    std::string nif;
    std::string domicilio;
    std::string codigo_postal;
    std::string poblacion;
    std::string provincia;
    std::string almacen; ///< name of its first warehouse
    std::string usuario; ///< name of its first user
    std::string impuesto; ///< "IGIC", "IVA"
    Currency porcentaje; ///< of the tax
    DatosProveedor proveedor; ///< the first one
};

/// Whether there are the tables and no company in them.
[[nodiscard]] bool sin_empresas(adodb::Connection& orvalin);

/// Puts company 1 into empty tables, in one commit: its catalogues with one of each, its accounting company
/// with the accounts that a charge is posted to, and the fiscal year `anio` with the ones beside it.
/// Raises an error when there is a company already.
void funda_empresa(
    const Bases& bases, const DatosEmpresa& datos, std::int16_t anio, Donde donde = Donde::aqui());

} // namespace atipicos::bases
