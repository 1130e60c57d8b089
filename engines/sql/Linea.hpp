#pragma once

#include <cstdint>
#include <functional>

namespace atipicos::sql {

/// What happens to the line to a server: it is lost, or opened again between two units of work.
enum class Linea : std::uint8_t { perdida, reanudada };

/// Whom to tell; may be empty. It must not use the connection.
using AvisoLinea = std::function<void(Linea)>;

} // namespace atipicos::sql
