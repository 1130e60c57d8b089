#pragma once

#include "platform/borrador/Borradores.hpp"

#include <string>
#include <vector>

class QWidget;

namespace atipicos::app {

/// Brings a draft back through the fields and buttons of the open editor, line by line, as the person keyed
/// it in: an editor for a new charge, or that of the charge which the draft changes. The boxes that the
/// editor would show meanwhile are not shown. Returns what could not be brought back, in Spanish, a sentence
/// each; nothing when all of it stands there.
[[nodiscard]] std::vector<std::string> teclea_borrador(QWidget& editor, const Borrador& borrador);

} // namespace atipicos::app
