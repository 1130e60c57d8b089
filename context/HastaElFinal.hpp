#pragma once

#include <concepts>
#include <exception>

namespace atipicos {

/// Steps of which each is done, whatever the ones before it have raised.
class HastaElFinal {
public:
    template <std::invocable Paso> void haz(Paso&& paso) noexcept;

    void termina() const; ///< raises the first of their errors, if there was one

private:
    std::exception_ptr m_primero;
};

template <std::invocable Paso> void HastaElFinal::haz(Paso&& paso) noexcept
{
    try {
        paso();
    } catch (...) {
        if (!m_primero)
            m_primero = std::current_exception();
    }
}

inline void HastaElFinal::termina() const
{
    if (m_primero)
        std::rethrow_exception(m_primero);
}

} // namespace atipicos
