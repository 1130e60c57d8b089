#pragma once

#include "host/panel/Ambito.hpp"
#include "host/panel/CargoResumido.hpp"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace atipicos::app {

/// The statement that reads charges of a company in the order of the list, newest first, `cuantos` at most.
/// `condicion` begins with " AND ", or is empty.
[[nodiscard]] std::string instruccion_de_cargos(
    const Ambito& ambito, const std::string& condicion, std::size_t cuantos);

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
