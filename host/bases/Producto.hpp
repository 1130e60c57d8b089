#pragma once

#include "platform/adodb/Connection.hpp"

#include <cstdint>

namespace atipicos::bases {

/// The product behind a connection, whichever client library reaches it.
enum class Producto : std::uint8_t { postgresql, sqlite, sql_server };

[[nodiscard]] Producto producto_de(const adodb::Connection& conexion);

} // namespace atipicos::bases
