#pragma once

#include <chrono>
#include <iosfwd>
#include <string>

namespace atipicos::app {

/// What is said on the terminal when the line to a server has been lost, for how long it is tried to open it
/// again, and that it is open: the person sees it from the beginning, and a signal ends it. Once given up it
/// is not tried again by itself.
class ReintentoServidor {
public:
    explicit ReintentoServidor(std::ostream& salida)
        : m_salida(&salida)
    {
    }

    /// `desde`: for how long it has been tried; `limite`: after which it is given up; `motivo`: why the line
    /// cannot be opened, or nothing yet.
    [[nodiscard]] bool sigue(
        std::chrono::milliseconds desde, std::chrono::milliseconds limite, const std::string& motivo);
    void reanudada(); ///< the line is open
    [[nodiscard]] bool dejado() const noexcept { return m_dejado; } ///< given up, and not open since

private:
    void di(const std::string& texto);

    std::ostream* m_salida;
    std::chrono::milliseconds m_proxima{}; ///< 0: nothing has been said yet
    std::chrono::milliseconds m_desde{};
    bool m_dejado = false;
};

} // namespace atipicos::app
