#pragma once

#include <cstddef>
#include <sched.h>
#include <stdexcept>

namespace atipicos::bench {

/// While there is one, this thread and what it starts stay on one of the cores that it had.
class EnUnNucleo {
public:
    EnUnNucleo()
    {
        if (sched_getaffinity(0, sizeof m_antes, &m_antes) != 0)
            throw std::runtime_error("the cores of this program are not known");
        while (!CPU_ISSET(m_nucleo, &m_antes))
            ++m_nucleo;
        cpu_set_t uno;
        CPU_ZERO(&uno);
        CPU_SET(m_nucleo, &uno);
        if (sched_setaffinity(0, sizeof uno, &uno) != 0)
            throw std::runtime_error("this program cannot stay on one core");
    }
    EnUnNucleo(const EnUnNucleo&) = delete;
    EnUnNucleo& operator=(const EnUnNucleo&) = delete;
    ~EnUnNucleo() { sched_setaffinity(0, sizeof m_antes, &m_antes); }

    [[nodiscard]] std::size_t nucleo() const noexcept { return m_nucleo; }

private:
    cpu_set_t m_antes{};
    std::size_t m_nucleo = 0;
};

} // namespace atipicos::bench
