#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <iosfwd>

namespace atipicos::app {

/// What is said on the terminal while a server does not answer, and whether it is waited for any longer: a
/// signal that comes meanwhile ends it, unless a driver waits, which only the end of the program ends. Below
/// three seconds, in which another's lock may be what it waits for, nothing is said and nothing is ended.
class EsperaServidor {
public:
    enum class Quien : std::uint8_t { programa, controlador }; ///< waits

    explicit EsperaServidor(std::ostream& salida, Quien quien = Quien::programa)
        : m_salida(&salida)
        , m_quien(quien)
    {
    }

    /// `callado`: for how long it has said nothing; less than the time before where it has answered since.
    [[nodiscard]] bool operator()(std::chrono::milliseconds callado);

private:
    std::ostream* m_salida;
    Quien m_quien;
    std::chrono::milliseconds m_anterior{};
    std::chrono::milliseconds m_proxima{};
};

/// The same of a driver, on standard error.
[[nodiscard]] std::function<void(std::chrono::milliseconds)> espera_de_controlador();

} // namespace atipicos::app
