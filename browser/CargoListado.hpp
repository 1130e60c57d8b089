#pragma once

#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace atipicos {

using ValorListado = std::variant<std::string, std::int32_t, Date, Currency>;

/// One charge of the list.
struct CargoListado {
    std::string Codigo;
    std::int32_t Cod_Almacen = 0;
    std::string Nombre_Almacen;
    std::int32_t Proveedor = 0;
    std::string Nombre_Proveedor;
    Date Fecha;
    Currency Importe;
    Currency Impuesto_Importe;
    Currency Impuesto; ///< percent
    std::int32_t Asiento = 0; ///< 0 or less: not posted
    std::int32_t Usuario = 0;
    std::string Nombre_Usuario;
    std::string Observ;
    std::vector<ValorListado> otros = {}; ///< of columns that no code asks for by name (`OtroDato`)
};

} // namespace atipicos
