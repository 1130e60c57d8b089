#pragma once

#include "platform/msgbox/MsgBox.hpp"
#include "runtime/Error.hpp"

#include <concepts>
#include <string>
#include <string_view>

namespace atipicos {

/// What an error box says: "[line] description", or the description alone. With an unknown line the
/// bracketed part is left out in any case.
enum class TextoError : std::uint8_t { ConLinea, SoloDescripcion };

/// The error box of the component: critical icon, OK button, titled with the procedure's tag.
[[nodiscard]] Mensaje mensaje_error(
    std::string_view etiqueta, const Error& error, TextoError texto = TextoError::ConLinea);

/// The exception being handled as an `Error`: out of memory is error 7, a foreign one is error 51 with
/// what it says. To be called inside a `catch`.
[[nodiscard]] Error error_en_curso();

/// The trap of a procedure: runs `trabajo`, and shows and clears whatever error reaches it.
/// `etiqueta` is the object's name, a colon and the procedure's ("clsAtipico:Insertar").
/// Returns true when `trabajo` ended without error.
template <std::invocable Trabajo>
bool trap(std::string_view etiqueta, Trabajo&& trabajo, TextoError texto = TextoError::ConLinea);

/// Shows the exception being handled. To be called inside a `catch`.
void muestra_error_en_curso(std::string_view etiqueta, TextoError texto);

template <std::invocable Trabajo> bool trap(std::string_view etiqueta, Trabajo&& trabajo, TextoError texto)
{
    try {
        trabajo();
        return true;
    } catch (...) {
        muestra_error_en_curso(etiqueta, texto);
        return false;
    }
}

} // namespace atipicos
