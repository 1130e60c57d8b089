#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

namespace atipicos::sql {

/// What happens to the line to a server: it is lost, or opened again between two units of work.
enum class Linea : std::uint8_t { perdida, reanudada };

/// Whom to tell; may be empty. It must not use the connection.
using AvisoLinea = std::function<void(Linea)>;

/// Asked from time to time while the server does not answer, with how long it has not: whether to go on
/// waiting. May be empty; it must not use the connection.
using SigueEsperando = std::function<bool(std::chrono::milliseconds callado)>;

} // namespace atipicos::sql
