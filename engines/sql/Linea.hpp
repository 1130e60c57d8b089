#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

namespace atipicos::sql {

/// What happens to the line to a server: it is lost, or opened again between two units of work.
enum class Linea : std::uint8_t { perdida, reanudada };

/// Whom to tell; may be empty. It must not use the connection.
using AvisoLinea = std::function<void(Linea)>;

/// Asked from time to time while the server does not answer, with how long it has not: whether to go on
/// waiting. May be empty; it must not use the connection.
using SigueEsperando = std::function<bool(std::chrono::milliseconds callado)>;

/// Told from time to time, from another thread, while a driver waits for the server: for how long it has.
/// Nothing but the driver can end that. May be empty; it must not use the connection.
using AvisoEspera = std::function<void(std::chrono::milliseconds callado)>;

/// How it stands with a lost line that is to be opened again.
struct Reintento {
    std::chrono::milliseconds desde{}; ///< for how long it has been tried
    std::chrono::milliseconds limite{}; ///< after which it is given up
    std::string motivo = {}; ///< why it cannot be opened; empty: it is not known yet
};

/// Asked several times a second while a lost line cannot be opened again: whether to go on trying; with
/// nobody to ask it is tried once. It must not use the connection.
using SigueIntentando = std::function<bool(const Reintento&)>;

/// Asked often while a statement runs, in the thread that runs it: false ends the statement with an error.
/// May be empty; it must not use the connection.
using SigueTrabajando = std::function<bool()>;

} // namespace atipicos::sql
