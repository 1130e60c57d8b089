#pragma once

#include "host/ordenes/TablaDeOrdenes.hpp"

#include <functional>

namespace atipicos::app {

// What `proveedor` and `articulo` take.
std::function<int()> declara_proveedor(CLI::App& orden, const Entorno& entorno);
std::function<int()> declara_articulo(CLI::App& orden, const Entorno& entorno);

} // namespace atipicos::app
