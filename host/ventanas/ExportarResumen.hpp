#pragma once

#include "host/resumen/ResumenCargos.hpp"

#include <QString>

class QWidget;

namespace atipicos::app {

/// Asks a person for the file to write a summary into; empty when none is wanted.
[[nodiscard]] QString pide_fichero_de_resumen(const PeticionResumen& peticion, QWidget* ventana);

/// Writes a summary in the format that the name ends in: csv, json, xlsx, png, svg or pdf. The file gets its
/// name when it is complete. Raises an error when the name ends in something else, or cannot be written.
void guarda_resumen(const ResumenCargos& resumen, const ResumenCargos& meses, const QString& fichero);

} // namespace atipicos::app
