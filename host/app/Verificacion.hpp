#pragma once

#include "host/app/Sesion.hpp"

#include <string>
#include <vector>

namespace atipicos::app {

/// What has been looked at, and what was found not to be as it should.
struct Verificacion {
    std::size_t cargos = 0;
    std::size_t lineas = 0;
    std::size_t asientos = 0;
    std::size_t apuntes = 0;
    std::size_t registros = 0;
    std::size_t previsiones = 0;
    std::size_t asientos_sin_cargo
        = 0; ///< left by deletions and changes: to be deleted by hand in accounting
    std::vector<std::string> diferencias; ///< each names charge or entry
};

/// Checks both databases, all companies, without writing: numbering, lines, totals, tax, entries that balance
/// and belong to their charge, tax records and forecasts that add up. Time grows with what there is to read.
/// When something differs all is read again, and again a little later, and what differs every time counts: a
/// charge that another process is saving meanwhile is half read, not wrong.
[[nodiscard]] Verificacion verifica(const orvalin::Bases& bases);

} // namespace atipicos::app
