#pragma once

#include "host/bases/Bases.hpp"
#include "host/comprobacion/AsientoSinCargo.hpp"
#include "host/comprobacion/ClaveAsiento.hpp"
#include "host/comprobacion/CodigoCargo.hpp"

#include <string>
#include <vector>

namespace atipicos::app {

/// A charge that should have an entry and has none, or whose entry number was given to another one: what is
/// left of a process that died between the two commits of a save, or of a posting that was refused.
struct CargoSinAsiento {
    ClaveContenida cargo;
    ClaveAsiento asiento; ///< the one that it names; number 0: none
    bool contabilizable = true; ///< its lines and its tax are in order, so that it can be posted as it stands
    bool admisible = true; ///< its accounting company exists and can hold its amount
    std::string impedimento = {}; ///< what is to be done in accounting before it can be posted

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
    std::size_t regularizados = 0; ///< entries that another one reverses
    std::size_t saldados = 0; ///< entries that somebody has reversed by hand
    std::vector<AsientoSinCargo> sin_cargo; ///< left by deletions and changes, and not reversed yet
    std::vector<SaldoQueSobra> saldos; ///< what those leave on the accounts, beyond the charges that exist
    std::vector<std::string> diferencias; ///< each names charge or entry
    std::vector<CargoSinAsiento> sin_asiento; ///< those of the differences that posting would mend
};

/// Checks both databases, all companies, without writing: numbering, lines, totals, tax, entries that balance
/// and belong to their charge, tax records and forecasts that add up, entries that were reversed and those
/// that reverse them. Time grows with what there is to read; of a charge some eighty bytes are remembered.
/// When something differs all is read again, and again a little later, and what differs every time counts: a
/// charge that another process is saving meanwhile is half read, not wrong.
[[nodiscard]] Verificacion verifica(const bases::Bases& bases);

[[nodiscard]] std::string resumen(
    const Verificacion& verificacion); ///< what has been looked at, and how many differ

} // namespace atipicos::app
