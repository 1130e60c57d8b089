#pragma once

#include "host/bases/Bases.hpp"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace atipicos::app {

/// Which accounts are a supplier's: those of his record, and those that are formed of the roots of the
/// company and his code.
class CuentasProveedores {
public:
    explicit CuentasProveedores(const bases::Bases& bases);

    /// Whether an account of an accounting company is one of the supplier's of a management company.
    [[nodiscard]] bool es_suya(
        std::int16_t empresa, std::int16_t contable, std::int32_t proveedor, const std::string& cuenta) const;

    /// The one supplier in the catalogue that has both accounts; nothing when there is none, or several.
    [[nodiscard]] std::optional<std::int32_t> de_quien(
        std::int16_t empresa, std::int16_t contable, const std::string& una, const std::string& otra) const;

private:
    using Cuentas = std::vector<std::string>;

    [[nodiscard]] const Cuentas& de(
        std::int16_t empresa, std::int16_t contable, std::int32_t proveedor) const;

    std::map<std::int16_t, std::vector<std::string>> m_raices; ///< by management company
    std::map<std::int16_t, int> m_longitudes; ///< of an account, by accounting company
    std::map<std::pair<std::int16_t, std::int32_t>, Cuentas> m_propias; ///< of their records
    mutable std::map<std::tuple<std::int16_t, std::int16_t, std::int32_t>, Cuentas> m_formadas;
};

} // namespace atipicos::app
