#pragma once

#include "platform/adodb/Connection.hpp"
#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace atipicos::app {

/// The years that each accounting company has open, as they were when they were read.
class EjerciciosAbiertos {
public:
    explicit EjerciciosAbiertos(adodb::Connection& bexmor);

    /// Whether the company exists and an amount fits into its books.
    [[nodiscard]] bool admite(std::int16_t empresa, Currency importe) const;

    /// What keeps an entry of that day out of the books, with what to do; empty: nothing does.
    [[nodiscard]] std::string impedimento(std::int16_t empresa, Date dia) const;

private:
    std::map<std::pair<std::int16_t, int>, std::pair<Date, Date>> m_ejercicios; ///< first and last day
    std::set<std::int16_t> m_empresas;
};

} // namespace atipicos::app
