#pragma once

#include "automation/Despacho.hpp"

namespace atipicos::server {

/// Keeps the library that an object of the host lives in. On Windows a process that takes leave of automation
/// unloads all of them, in no order that would respect what they hold of each other. Elsewhere nobody does.
class Ancla {
public:
    Ancla() = default;
    Ancla(const Ancla&) = delete;
    Ancla& operator=(const Ancla&) = delete;

#ifdef _WIN32
    ~Ancla() { leva(); }

    /// Keeps the library of `objeto` and none else; none at all for no object.
    void echa(const automation::Despacho& objeto) noexcept
    {
        leva();
        if (objeto)
            GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                *reinterpret_cast<const wchar_t* const*>(objeto.get()), &m_biblioteca);
    }

private:
    void leva() noexcept
    {
        if (m_biblioteca != nullptr)
            FreeLibrary(m_biblioteca);
        m_biblioteca = nullptr;
    }

    HMODULE m_biblioteca = nullptr;
#else
    ~Ancla() = default;

    void echa(const automation::Despacho& /*objeto*/) noexcept { }
#endif
};

} // namespace atipicos::server
