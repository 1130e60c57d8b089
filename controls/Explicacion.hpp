#pragma once

#include <QString>

namespace atipicos {

/// What a message in the words of a program means to the person who reads it; empty where it speaks for
/// itself. `texto` is that of a box, whole.
[[nodiscard]] QString explicacion_de(const QString& texto);

} // namespace atipicos
