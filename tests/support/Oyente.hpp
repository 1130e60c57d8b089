#pragma once

#include <functional>
#include <thread>

namespace atipicos::pruebas {

/// Listens on a port of 127.0.0.1 that is free, and talks to each client in a thread of its own.
class Oyente {
public:
    using Conversa = std::function<void(int cliente)>; ///< until it is over; the socket is closed afterwards

    explicit Oyente(Conversa conversa);
    Oyente(const Oyente&) = delete;
    Oyente& operator=(const Oyente&) = delete;
    ~Oyente(); ///< after its clients have gone

    [[nodiscard]] int puerto() const noexcept { return m_puerto; }

private:
    void atiende();

    Conversa m_conversa;
    int m_enchufe = -1;
    int m_puerto = 0;
    std::jthread m_hilo;
};

} // namespace atipicos::pruebas
