#pragma once

#include "browser/ListaAtipicos.hpp"

#include <array>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

/// The list of charges for spreadsheets.
namespace atipicos {

using CadaCargo = std::function<void(const CargoListado&)>;
using OrigenLista = std::function<void(const CadaCargo&)>; ///< hands over each charge in turn

inline constexpr std::array<const char*, 13> titulos_lista{ "Código", "Almacén", "Nombre del almacén",
    "Proveedor", "Nombre del proveedor", "Fecha", "Importe", "Impuesto", "% impuesto", "Asiento", "Usuario",
    "Nombre del usuario", "Observaciones" };

[[nodiscard]] std::vector<std::string> celdas_lista(const CargoListado& cargo); ///< as the list shows them

/// ";" between fields, decimal comma, UTF-8, a heading row.
void exporta_csv(std::ostream& salida, const OrigenLista& lista);

/// A sheet with numbers as numbers and dates as dates. Raises an error when a charge does not fit in a sheet
/// or the file cannot be written, and leaves what has been written of it.
void exporta_xlsx(const std::filesystem::path& fichero, const OrigenLista& lista);

} // namespace atipicos
