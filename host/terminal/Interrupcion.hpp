#pragma once

#include <array>
#include <csignal>

namespace atipicos::app {

/// While it lives, the first SIGINT, SIGTERM or SIGHUP is noted instead of ending the program, so that what
/// is at hand can be ended and databases are closed. Another one that comes later than a moment ends the
/// program at once; a save that it cuts short is undone by the database. Signals that the program was started
/// to ignore stay ignored.
class Interrupcion {
public:
    Interrupcion();
    Interrupcion(const Interrupcion&) = delete;
    Interrupcion& operator=(const Interrupcion&) = delete;
    ~Interrupcion();

    [[nodiscard]] static int senal() noexcept; ///< the signal that came; 0: none
    [[nodiscard]] static int estado() noexcept { return 128 + senal(); } ///< exit status after it

    /// Raises an `Interrumpido` when a signal has come.
    static void comprueba();

    /// Waits until standard input has something to read; raises an `Interrumpido` when a signal comes first.
    static void espera_entrada();

    /// A file that can be read from as soon as a signal has come, for who waits for other things too; -1 when
    /// there is none.
    [[nodiscard]] static int descriptor() noexcept;

private:
    static void llega(int senal) noexcept;

    std::array<struct sigaction, 3> m_anteriores{};
};

/// Thrown where work that changes nothing is given up because a signal came.
struct Interrumpido { };

} // namespace atipicos::app
