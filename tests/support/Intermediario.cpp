#include "tests/support/Intermediario.hpp"

#include <array>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace atipicos::pruebas {

namespace {

    int conecta(const std::filesystem::path& camino)
    {
        sockaddr_un direccion{};
        direccion.sun_family = AF_UNIX;
        camino.string().copy(direccion.sun_path, sizeof direccion.sun_path - 1);
        const int enlace = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (connect(enlace, reinterpret_cast<const sockaddr*>(&direccion), sizeof direccion) != 0) {
            close(enlace);
            return -1;
        }
        return enlace;
    }

    bool envia(int destino, const char* datos, std::size_t cuantos)
    {
        while (cuantos > 0) {
            const auto enviados = send(destino, datos, cuantos, MSG_NOSIGNAL);
            if (enviados <= 0)
                return false;
            datos += enviados;
            cuantos -= static_cast<std::size_t>(enviados);
        }
        return true;
    }

}

/// What the server says, message by message: kind, length of the rest with itself, the rest.
class Intermediario::Mensajes {
public:
    /// The messages that are whole with what has come now, changed.
    std::string pasa(const char* datos, std::size_t cuantos)
    {
        m_resto.append(datos, cuantos);
        std::string enteros;
        while (m_resto.size() >= 5) {
            const auto largo = 1 + de_cuatro(1);
            if (m_resto.size() < largo)
                break;
            if (m_resto[0] == 'T')
                borra_numeros();
            enteros += m_resto.substr(0, largo);
            m_resto.erase(0, largo);
        }
        return enteros;
    }

private:
    [[nodiscard]] std::size_t byte(std::size_t i) const { return static_cast<unsigned char>(m_resto.at(i)); }
    [[nodiscard]] std::size_t de_cuatro(std::size_t i) const
    {
        return byte(i) << 24U | byte(i + 1) << 16U | byte(i + 2) << 8U | byte(i + 3);
    }

    /// Each column: its name and a zero, then table (four bytes), number of the column (two), and its type.
    void borra_numeros()
    {
        const auto columnas = byte(5) << 8U | byte(6);
        auto lugar = std::size_t{ 7 };
        for (std::size_t i = 0; i < columnas; ++i) {
            lugar = m_resto.find('\0', lugar) + 1;
            m_resto.replace(lugar, 6, 6, '\0');
            lugar += 18;
        }
    }

    std::string m_resto;
};

Intermediario::Intermediario(std::filesystem::path servidor)
    : m_servidor(std::move(servidor))
    , m_oyente([this](int cliente) { pasa(cliente); })
{
}

std::string Intermediario::por_aqui() const
{
    return "&hostaddr=127.0.0.1&sslmode=disable&port=" + std::to_string(puerto());
}

void Intermediario::pasa(int cliente)
{
    const int sin_espera = 1;
    setsockopt(cliente, IPPROTO_TCP, TCP_NODELAY, &sin_espera, sizeof sin_espera);
    const int servidor = conecta(m_servidor);
    std::array<pollfd, 2> lados{ { { cliente, POLLIN, 0 }, { servidor, POLLIN, 0 } } };
    std::array<char, 65'536> datos;
    Mensajes del_servidor;
    bool habla_el_cliente = false;
    bool sigue = servidor >= 0;
    while (sigue && poll(lados.data(), lados.size(), -1) > 0)
        for (std::size_t i = 0; sigue && i < lados.size(); ++i) {
            if (lados[i].revents == 0)
                continue;
            const auto leidos = read(lados[i].fd, datos.data(), datos.size());
            if (i == 0 && leidos > 0 && !std::exchange(habla_el_cliente, true)) {
                ++m_viajes;
                std::this_thread::sleep_for(m_retraso.load());
            }
            if (i == 1)
                habla_el_cliente = false;
            const bool perdida = i == 1 && m_pierde.exchange(false);
            if (perdida && m_al_perder)
                m_al_perder();
            sigue = leidos > 0 && !perdida;
            if (!sigue || (i == 1 && (m_calla || m_viajes > m_calla_tras)))
                continue;
            if (i == 1 && m_borra_numeros) {
                const auto cambiados = del_servidor.pasa(datos.data(), static_cast<std::size_t>(leidos));
                sigue = envia(lados[0].fd, cambiados.data(), cambiados.size());
            } else {
                sigue = envia(lados[1 - i].fd, datos.data(), static_cast<std::size_t>(leidos));
            }
        }
    if (servidor >= 0)
        close(servidor);
}

} // namespace atipicos::pruebas
