#pragma once

#include <chrono>
#include <iosfwd>

namespace atipicos::app {

/// What is said on the terminal while a server does not answer, and whether it is waited for any longer: a
/// signal that comes meanwhile ends it. Below three seconds, in which another's lock may be what it waits
/// for, nothing is said and nothing is ended.
class EsperaServidor {
public:
    explicit EsperaServidor(std::ostream& salida)
        : m_salida(&salida)
    {
    }

    /// `callado`: for how long it has said nothing; less than the time before where it has answered since.
    [[nodiscard]] bool operator()(std::chrono::milliseconds callado);

private:
    std::ostream* m_salida;
    std::chrono::milliseconds m_anterior{};
    std::chrono::milliseconds m_proxima{};
};

} // namespace atipicos::app
