#pragma once

#include "platform/msgbox/MsgBox.hpp"
#include "runtime/Error.hpp"

#include <string>

/// The boxes that the component's operations and windows show to a person.
namespace atipicos {

inline constexpr auto atencion = "¡ Atención !"; ///< the title of most of them

/// Tells something. `icono`: as the system asks for each text. Error 91 while nobody shows boxes.
void avisa(const std::string& texto, Icono icono = Icono::exclamacion, const std::string& titulo = atencion,
    Donde donde = Donde::aqui());

/// Asks for a yes; Enter says no. Error 91 while nobody shows boxes.
[[nodiscard]] bool confirma(
    const std::string& texto, const std::string& titulo = atencion, Donde donde = Donde::aqui());

} // namespace atipicos
