#pragma once

#include <string_view>

/// The template files of this folder, as they are read by a person.
namespace atipicos::plantillas {

[[nodiscard]] std::string_view documento_cargo();

} // namespace atipicos::plantillas
