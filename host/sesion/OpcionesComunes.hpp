#pragma once

#include "host/bases/Lugar.hpp"
#include "runtime/Error.hpp"

#include <cstdint>
#include <filesystem>
#include <string>

/// What every command is told, and how it ends.
namespace atipicos::app {

inline constexpr int hecho = 0;
inline constexpr int no_hecho = 1; ///< refused or failed; standard error says why
inline constexpr int mal_usado = 2;

/// Ends a command that was refused, with a sentence that says why.
[[noreturn]] inline void rehusa(const std::string& motivo) { throw Error(no_hecho, "atipicos", motivo); }

struct OpcionesComunes {
    std::filesystem::path datos = "datos";
    std::string conexion = {}; ///< instead of a folder, when it is given
    std::int16_t empresa = 1;
    std::int32_t usuario = 0; ///< 0: the one that the login is, or the first there is

    [[nodiscard]] bases::Lugar lugar() const
    {
        return conexion.empty() ? bases::Lugar(datos) : bases::Lugar::de_conexion(conexion);
    }
};

} // namespace atipicos::app
