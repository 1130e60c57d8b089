#pragma once

#include "engines/sql/Catalogo.hpp"
#include "engines/sql/Nombres.hpp"
#include "engines/sql/Vista.hpp"

#include <cstddef>
#include <vector>

namespace atipicos::sql {

/// The texts of a statement that are dates: that a date column receives (INSERT, UPDATE) or is compared with
/// (=, <>, <, <=, >, >=, BETWEEN, IN), text and column each standing alone, not inside an expression or a
/// function. By their positions among the tokens, first those of a comparison. `tablas`: those that the
/// statement names.
[[nodiscard]] std::vector<std::size_t> textos_de_fecha(
    const Vista& vista, const std::vector<TablaNombrada>& tablas, const Catalogo& catalogo);

} // namespace atipicos::sql
