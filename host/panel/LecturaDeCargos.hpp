#pragma once

#include "host/panel/Ambito.hpp"
#include "host/panel/CargoResumido.hpp"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace atipicos::app {

/// The order of the list, newest first, and that of the codes of one year and warehouse, last first.
inline constexpr auto orden_de_lista = "pc.Fecha DESC, pc.Cod_Almacen ASC, pc.Codigo DESC";
inline constexpr auto orden_de_codigos = "pc.Codigo DESC";

/// The statement that reads charges of a company, `cuantos` at most. `condicion` begins with " AND ", or is
/// empty.
[[nodiscard]] std::string instruccion_de_cargos(const Ambito& ambito, const std::string& condicion,
    std::size_t cuantos, const char* orden = orden_de_lista);

/// Runs one, and tells each charge.
void lee_cargos(adodb::Connection& orvalin, const std::string& instruccion,
    const std::function<void(const CargoResumido&)>& cada);

/// The charges of the last days, `cuantos` at most. One statement, answered by the index of the list.
[[nodiscard]] std::vector<CargoResumido> ultimos_cargos(const Ambito& ambito, std::size_t cuantos);

/// " OFFSET 0 ROWS FETCH NEXT n ROWS ONLY": behind ORDER BY.
[[nodiscard]] std::string como_mucho(std::size_t cuantas);

/// A condition on whole days, from `desde` to `hasta`, both of them in: " AND pc.Fecha >= '…' AND …".
[[nodiscard]] std::string entre_dias(const std::string& columna, Date desde, Date hasta);

} // namespace atipicos::app
