#pragma once

#include "host/comprobacion/AsientoContabilizado.hpp"
#include "host/comprobacion/Regularizaciones.hpp"

#include <map>
#include <string>
#include <vector>

namespace atipicos::app {

/// What an entry does to accounts, tax register and forecasts, in one number. The numbers of two entries of
/// which one undoes the other add up to 0; those of others hardly ever do.
[[nodiscard]] std::uint64_t huella_de_saldos(const AsientoContabilizado& asiento);

/// The same of the accounts alone.
[[nodiscard]] std::uint64_t huella_de_cuentas(const AsientoContabilizado& asiento);

/// The entries that have been reversed, each with the one that does it, as both are met among all entries.
class Regularizados {
public:
    explicit Regularizados(adodb::Connection& bexmor);

    /// Takes note of an entry, if it is one of them. True when it is.
    bool encuentra(const AsientoContabilizado& asiento);

    /// Why the entry cannot be that of a charge: "se anuló con el asiento 9", …; empty: it can.
    [[nodiscard]] std::string motivo(const ClaveAsiento& asiento) const;
    [[nodiscard]] bool saldado_a_mano(const ClaveAsiento& asiento) const;

    /// After all entries have been met: what is not as it should be.
    [[nodiscard]] std::vector<std::string> diferencias() const;

    [[nodiscard]] std::size_t anulados() const; ///< by an entry of the program
    [[nodiscard]] std::size_t a_mano() const;

private:
    struct Pareja {
        ClaveAsiento por;
        std::uint64_t suma = 0; ///< of what both do
        bool visto = false;
        bool por_visto = false;
    };

    std::map<ClaveAsiento, Pareja> m_parejas; ///< by the entry that was reversed
    std::map<ClaveAsiento, ClaveAsiento> m_contrarios; ///< which entry each of the others reverses
};

} // namespace atipicos::app
