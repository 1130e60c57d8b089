#include "host/terminal/Interrupcion.hpp"

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace atipicos::app {

namespace {

    constexpr std::array<int, 3> senales{ SIGINT, SIGTERM, SIGHUP };

    /// Some programs send a signal twice, to the process and to its group: that is still the first one.
    constexpr std::int64_t un_momento = 300; // milliseconds

    // What a signal handler may touch.
    std::atomic<int> llegada{ 0 };
    std::atomic<std::int64_t> cuando{ 0 };
    std::atomic<int> lectura{ -1 };
    std::atomic<int> escritura{ -1 };
    static_assert(std::atomic<int>::is_always_lock_free && std::atomic<std::int64_t>::is_always_lock_free);

    std::int64_t ahora() noexcept
    {
        timespec instante{};
        clock_gettime(CLOCK_MONOTONIC, &instante);
        return std::int64_t{ instante.tv_sec } * 1000 + instante.tv_nsec / 1'000'000;
    }

}

Interrupcion::Interrupcion()
{
    llegada = 0;
    if (int tuberia[2]; pipe2(tuberia, O_CLOEXEC | O_NONBLOCK) == 0) {
        lectura = tuberia[0];
        escritura = tuberia[1];
    }
    struct sigaction accion { };
    accion.sa_handler = &Interrupcion::llega;
    accion.sa_flags = SA_RESTART; // what is being written or read goes on
    for (const int una : senales)
        sigaddset(&accion.sa_mask, una);
    for (std::size_t i = 0; i < senales.size(); ++i) {
        sigaction(senales[i], nullptr, &m_anteriores[i]);
        if (m_anteriores[i].sa_handler != SIG_IGN)
            sigaction(senales[i], &accion, nullptr);
    }
}

Interrupcion::~Interrupcion()
{
    for (std::size_t i = 0; i < senales.size(); ++i)
        sigaction(senales[i], &m_anteriores[i], nullptr);
    for (auto* una : { &lectura, &escritura })
        if (const int descriptor = una->exchange(-1); descriptor >= 0)
            close(descriptor);
}

void Interrupcion::llega(int senal) noexcept
{
    const int errno_de_antes = errno;
    if (llegada == 0) {
        cuando = ahora();
        llegada = senal;
        static_cast<void>(!write(escritura, "", 1)); // a full pipe can be read from already
    } else if (ahora() - cuando > un_momento) {
        std::signal(senal, SIG_DFL);
        std::raise(senal);
    }
    errno = errno_de_antes;
}

int Interrupcion::senal() noexcept { return llegada; }

int Interrupcion::descriptor() noexcept { return lectura; }

void Interrupcion::comprueba()
{
    if (llegada != 0)
        throw Interrumpido{};
}

void Interrupcion::espera_entrada()
{
    std::array<pollfd, 2> esperados{ { { STDIN_FILENO, POLLIN, 0 }, { lectura, POLLIN, 0 } } };
    while (poll(esperados.data(), esperados.size(), -1) < 0 && errno == EINTR) { }
    comprueba();
}

} // namespace atipicos::app
