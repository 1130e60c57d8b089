#pragma once

#include "host/sesion/BorradorEnTexto.hpp"
#include "platform/adodb/Connection.hpp"

#include <cstdint>
#include <optional>
#include <string>

namespace atipicos::app {

/// The code as which the charge of a draft is stored, where its save had begun, went through, and nobody came
/// to take the draft away: same header, total and lines, stored since the draft was kept. Nothing when there
/// is none, or when no save had begun. Raises the errors of the database.
[[nodiscard]] std::optional<std::string> codigo_guardado(
    const BorradorLeido& leido, std::int16_t empresa, adodb::Connection& conexion);

} // namespace atipicos::app
