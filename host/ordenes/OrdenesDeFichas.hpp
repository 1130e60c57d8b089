#pragma once

#include "host/sesion/OpcionesComunes.hpp"

#include <cstdint>
#include <optional>
#include <string>

/// The commands that keep the records of suppliers and articles: all of them listed, or one told, added,
/// changed or removed. Each returns its exit status or raises an `Error`, which counts as refused.
namespace atipicos::app {

struct OpcionesProveedor {
    std::int32_t codigo
        = 0; ///< 0: all of them are listed, or, with `nombre`, one is added with the next code
    std::optional<std::string> nombre;
    std::optional<std::string> nif;
    std::optional<std::string> domicilio;
    std::optional<std::string> codigo_postal;
    std::optional<std::string> poblacion;
    std::optional<std::int16_t> forma_pago;
    std::optional<std::int16_t> dia_pago_1;
    std::optional<std::int16_t> dia_pago_2;
    bool eliminar = false;
    bool si = false; ///< without asking
};

struct OpcionesArticulo {
    std::int32_t codigo = 0; ///< the same
    std::optional<std::string> nombre;
    std::optional<std::string> cuenta_ingresos;
    bool eliminar = false;
    bool si = false; ///< without asking
};

int proveedor(const OpcionesComunes& comunes, const OpcionesProveedor& opciones);
int articulo(const OpcionesComunes& comunes, const OpcionesArticulo& opciones);

} // namespace atipicos::app
