#pragma once

#include "platform/adodb/Connection.hpp"
#include "runtime/Variant.hpp"

#include <libpq-fe.h>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace atipicos::postgresql {

struct LiberaRespuesta {
    void operator()(PGresult* respuesta) const noexcept { PQclear(respuesta); }
};
using Respuesta = std::unique_ptr<PGresult, LiberaRespuesta>; ///< what the server answers to one statement

[[nodiscard]] bool es_error(const Respuesta& respuesta) noexcept;

[[nodiscard]] std::string_view codigo_de(const Respuesta& respuesta) noexcept; ///< SQLSTATE; empty: none

/// The error in an answer, with the kind of thing it is, the server's own words and its code (SQLSTATE);
/// what a person meets (locked, lost, not allowed) is said in Spanish first.
[[nodiscard]] adodb::ErrorBaseDatos error_de(
    const Respuesta& respuesta, std::string_view instruccion, Donde donde);

/// The text with which a value travels to the server; nothing for null.
[[nodiscard]] std::optional<std::string> texto_de(const Variant& valor, Donde donde);

/// What a column holds.
enum class Tipo : std::uint8_t { Texto, Entero, Moneda, Real, Fecha, Bit };
[[nodiscard]] Tipo tipo_de(Oid tipo) noexcept; ///< of a type of the server; what it does not know is a text

[[nodiscard]] bool es_fecha(Oid tipo) noexcept;

/// The value that the server writes as `texto`.
[[nodiscard]] Variant valor_de(std::string_view texto, Tipo tipo, Donde donde);

} // namespace atipicos::postgresql
