#include "tests/support/Oyente.hpp"

#include <arpa/inet.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace atipicos::pruebas {

Oyente::Oyente(Conversa conversa)
    : m_conversa(std::move(conversa))
    , m_enchufe(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in direccion{};
    direccion.sin_family = AF_INET;
    direccion.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t largo = sizeof direccion;
    if (bind(m_enchufe, reinterpret_cast<const sockaddr*>(&direccion), largo) != 0
        || listen(m_enchufe, 8) != 0
        || getsockname(m_enchufe, reinterpret_cast<sockaddr*>(&direccion), &largo) != 0)
        throw std::runtime_error("no port on 127.0.0.1");
    m_puerto = ntohs(direccion.sin_port);
    m_hilo = std::jthread([this] { atiende(); });
}

Oyente::~Oyente()
{
    shutdown(m_enchufe, SHUT_RDWR); // wakes the thread up
    m_hilo.join();
    close(m_enchufe);
}

void Oyente::atiende()
{
    std::vector<std::jthread> lineas;
    for (;;) {
        const int cliente = accept4(m_enchufe, nullptr, nullptr, SOCK_CLOEXEC);
        if (cliente < 0)
            return;
        lineas.emplace_back([this, cliente] {
            m_conversa(cliente);
            close(cliente);
        });
    }
}

} // namespace atipicos::pruebas
