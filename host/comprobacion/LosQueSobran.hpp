#pragma once

#include "host/comprobacion/AsientoSinCargo.hpp"
#include "platform/adodb/Connection.hpp"

#include <string>
#include <vector>

namespace atipicos::app {

/// Of entries without charge, those to be reversed without being asked for by name.
[[nodiscard]] std::vector<AsientoSinCargo> los_que_sobran(const std::vector<AsientoSinCargo>& todos);

[[nodiscard]] Currency suma_de(const std::vector<AsientoSinCargo>& asientos);

/// What keeps entries of that day, which reverse those, out of the books, with what to do; empty: nothing
/// does.
[[nodiscard]] std::string impedimento_para_anular(
    adodb::Connection& bexmor, const std::vector<AsientoSinCargo>& asientos, Date fecha);

} // namespace atipicos::app
