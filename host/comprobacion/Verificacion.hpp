#pragma once

#include "host/comprobacion/ContenidoBases.hpp"

#include <string>
#include <vector>

namespace atipicos::app {

/// A charge that should have an entry and has none, or whose entry number was given to another one: what is
/// left of a process that died between the two commits of a save, or of a posting that was refused.
struct CargoSinAsiento {
    ClaveContenida cargo;
    ClaveAsiento asiento; ///< the one that it names; number 0: none
    bool contabilizable = true; ///< its lines and its tax are in order, so that it can be posted as it stands

    friend bool operator==(const CargoSinAsiento&, const CargoSinAsiento&) = default;
};

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
    std::vector<CargoSinAsiento> sin_asiento; ///< those of the differences that posting would mend
};

/// Checks both databases, all companies, without writing: numbering, lines, totals, tax, entries that balance
/// and belong to their charge, tax records and forecasts that add up. Time grows with what there is to read.
/// When something differs all is read again, and again a little later, and what differs every time counts: a
/// charge that another process is saving meanwhile is half read, not wrong.
[[nodiscard]] Verificacion verifica(const bases::Bases& bases);

[[nodiscard]] std::string resumen(
    const Verificacion& verificacion); ///< what has been looked at, and how many differ

[[nodiscard]] std::string texto(const ClaveContenida& cargo); ///< "cargo AT260001 (empresa 1, …)"
[[nodiscard]] std::string texto(const ClaveAsiento& asiento); ///< "asiento 5 (empresa contable 1, …)"

} // namespace atipicos::app
