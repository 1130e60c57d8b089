#pragma once

#include "engines/postgresql/Opciones.hpp"

#include <string>
#include <vector>

namespace atipicos::postgresql {

/// A setting of a session and its value.
struct Ajuste {
    std::string nombre;
    std::string valor;
};

inline constexpr auto ajuste_solo_lectura = "default_transaction_read_only";

/// What every session of ours is set to. `solo_lectura_despues`: that it only reads is told to it later.
[[nodiscard]] std::vector<Ajuste> ajustes_de(const Opciones& opciones, bool solo_lectura_despues);

/// As they travel with the opening of a session, without a round trip.
[[nodiscard]] std::string como_opciones(const std::vector<Ajuste>& ajustes);

/// As a session is told them that is open.
[[nodiscard]] std::string como_instruccion(const std::vector<Ajuste>& ajustes);

} // namespace atipicos::postgresql
