#pragma once

#include <cstddef>

/// Faults in the database itself: the statements of both engines pass here before their client libraries. A
/// program gets them by being linked with `--wrap` of those functions.
namespace atipicos::pruebas::averia {

enum class Clase { ninguna, instruccion, conexion };

/// From now on: statement `n` (1-based) fails, or, with `conexion`, breaks the connection (a server's) or the
/// disk (all that follow fail too).
void prepara(Clase clase, std::size_t n);

[[nodiscard]] bool ha_ocurrido(); ///< since `prepara`

} // namespace atipicos::pruebas::averia
