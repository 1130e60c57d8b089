#pragma once

#include "platform/adodb/Connection.hpp"

#include <memory>
#include <string>
#include <string_view>

namespace atipicos::adodb {

/// The rows of a query, read whole before the first is handed over: the connection is free for others
/// meanwhile.
[[nodiscard]] std::unique_ptr<Recordset> consulta(
    Connection& conexion, const std::string& sql, Donde donde = Donde::aqui());
/// The same, read as one goes: for answers of any size, and one at a time on a connection.
[[nodiscard]] std::unique_ptr<Recordset> flujo(
    Connection& conexion, const std::string& sql, Donde donde = Donde::aqui());

// Fields of the current row, read so that a null counts as nothing.

[[nodiscard]] std::string texto(Recordset& rs, std::string_view campo, Donde donde = Donde::aqui()); ///< ""
/// A name of a catalogue that may come into a statement: with ´ for ', as what a person types.
[[nodiscard]] std::string nombre(Recordset& rs, std::string_view campo, Donde donde = Donde::aqui());
[[nodiscard]] std::int16_t entero(Recordset& rs, std::string_view campo, Donde donde = Donde::aqui()); ///< 0

/// The text with an acute accent for each quote, which would end it in the statement that stores it.
[[nodiscard]] std::string sin_apostrofos(std::string texto);

} // namespace atipicos::adodb
