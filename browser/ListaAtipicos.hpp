#pragma once

#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace atipicos {

/// Which charges of the current company are listed.
struct FiltroAtipicos {
    std::string FechaI; ///< first day, `dd/mm/yyyy` as typed
    std::string FechaF; ///< last day, `dd/mm/yyyy` as typed
    std::int16_t Almacen = 0; ///< below 1: all
    std::int32_t Proveedor = 0; ///< below 1: all
};

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
};

/// The statement of the list. The dates go in as typed: an impossible one is an error of the database.
[[nodiscard]] std::string instruccion_lista(
    const FiltroAtipicos& filtro, std::int16_t empresa, std::int16_t empresa_proveedores);

/// Appends the thirteen cells of the list, separated by tabs; a tab inside a text becomes a blank.
void anexa_fila(std::string& destino, const CargoListado& cargo);

/// The charge that a row shows, amounts as they are shown. The row is one that `anexa_fila` has made.
[[nodiscard]] CargoListado cargo_de_fila(std::string_view fila);

/// Runs the query and hands over each charge, newest date first. The object handed over is reused from row
/// to row. Errors of the database reach the caller.
void Cargar_Atipicos(const FiltroAtipicos& filtro, const std::function<void(const CargoListado&)>& cada);

} // namespace atipicos
