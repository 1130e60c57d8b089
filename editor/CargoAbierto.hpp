#pragma once

#include "charges/ClaveCargo.hpp"
#include "editor/EdicionAtipico.hpp"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

/// A stored charge of the current company as the editor opens it, to be changed.
namespace atipicos {

struct CabeceraAbierta {
    Date Fecha; ///< no date where the column is null
    std::int32_t Proveedor = 0;
    std::string Observ;
    Currency Impuesto; ///< rate in percent
};

struct LineaAbierta {
    LineaTecleada linea;
    std::int32_t Num_Linea = 0;
    std::string CtaAtipicos; ///< of the article; empty when it no longer exists
};

[[nodiscard]] std::string instruccion_cabecera(const ClaveCargo& clave, std::int16_t empresa);
[[nodiscard]] std::string instruccion_lineas(const ClaveCargo& clave, std::int16_t empresa);

/// Nothing when there is no such charge. Errors of the database reach the caller.
[[nodiscard]] std::optional<CabeceraAbierta> lee_cabecera(const ClaveCargo& clave);

/// Hands over the lines in order of line number. Errors of the database reach the caller.
void lee_lineas(const ClaveCargo& clave, const std::function<void(const LineaAbierta&)>& cada);

} // namespace atipicos
