#pragma once

#include "platform/adodb/Connection.hpp"
#include "platform/qvoremp/Empresa.hpp"
#include "platform/qvoremp/PrevisionesCargo.hpp"
#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace atipicos::orvalin {

struct LineaImpresa {
    std::int32_t Articulo = 0; ///< 0: none
    std::string Descripcion;
    Currency Unidades;
    Currency Precio;
    std::string Observ;
};

using PrevisionImpresa = qvoremp::PrevisionCargo;

/// Everything that the document of a charge says.
struct CargoImpreso {
    struct Emisor {
        std::string Nombre;
        std::string NIF;
        std::string Domicilio;
        std::string CodigoPostal;
        std::string Poblacion;
        std::string Provincia;
    };

    Emisor emisor;
    std::int16_t Ejercicio = 0;
    std::string Codigo;
    Date Fecha;
    Currency Importe; ///< without tax
    Currency Impuesto; ///< percent
    Currency Impuesto_Importe;
    std::int32_t Asiento = 0; ///< 0: not posted
    std::int32_t Proveedor = 0;
    std::string Observ;
    int DecimalesImporte = 2;
    int DecimalesPrecio = 3;
    std::vector<LineaImpresa> lineas;
    std::vector<PrevisionImpresa> previsiones;

    /// Reads the charge from the management connection, its forecasts from the accounting database that is
    /// attached to it. Raises an `Error` when there is no such charge.
    [[nodiscard]] static CargoImpreso lee(adodb::Connection& conexion, const qvoremp::Empresa& empresa,
        std::int16_t ejercicio, std::int16_t almacen, const std::string& codigo, Donde donde = Donde::aqui());
};

/// The forecasts of its entry alone; none where it is not posted or there is no such charge.
[[nodiscard]] std::vector<PrevisionImpresa> lee_previsiones(adodb::Connection& conexion,
    const qvoremp::Empresa& empresa, std::int16_t ejercicio, std::int16_t almacen, const std::string& codigo,
    Donde donde = Donde::aqui());

} // namespace atipicos::orvalin
