#pragma once

#include <csignal>
#include <sys/resource.h>

namespace atipicos::pruebas {

/// While it lives, no file of this process grows beyond so many bytes, as on a full disk.
class DiscoLleno {
public:
    explicit DiscoLleno(rlim_t bytes)
        : m_senal(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_antes);
        const rlimit limite{ bytes, m_antes.rlim_max };
        setrlimit(RLIMIT_FSIZE, &limite);
    }
    DiscoLleno(const DiscoLleno&) = delete;
    DiscoLleno& operator=(const DiscoLleno&) = delete;
    ~DiscoLleno()
    {
        setrlimit(RLIMIT_FSIZE, &m_antes);
        static_cast<void>(std::signal(SIGXFSZ, m_senal));
    }

private:
    void (*m_senal)(int);
    rlimit m_antes{};
};

} // namespace atipicos::pruebas
