#pragma once

#include "host/panel/Ambito.hpp"
#include "host/panel/CargoResumido.hpp"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace atipicos::app {

/// How the database is to find charges: by the index of the list, from the newest on, which is best when few
/// rows are looked at; by the codes of one year and warehouse; or through the whole table, which is best when
/// most rows are, because an index leads to each of them by a jump of its own.
enum class Camino : std::uint8_t { por_lista, por_codigos, por_tabla };

/// The statement that reads charges of a company, `cuantos` at most, the newest first; by codes, the last
/// first. `condicion` begins with " AND ", or is empty.
[[nodiscard]] std::string instruccion_de_cargos(const Ambito& ambito, const std::string& condicion,
    std::size_t cuantos, Camino camino = Camino::por_lista);

/// "columna =5" or, for the whole table, written so that no index is taken.
[[nodiscard]] std::string de_la_empresa(const std::string& columna, std::int16_t empresa, Camino camino);

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
