#pragma once

#include <cstdint>
#include <string_view>

namespace atipicos::app {

enum class Codificacion : std::uint8_t { utf8, latin1, desconocida };

/// What a text is written in. Latin-1, or Windows-1252, is one that is no UTF-8 and does not try to be.
[[nodiscard]] Codificacion codificacion_de(std::string_view texto) noexcept;

/// Whether a file that begins so is UTF-16; two bytes tell.
[[nodiscard]] bool empieza_en_utf16(std::string_view comienzo) noexcept;

} // namespace atipicos::app
