#pragma once

#include "automation/com.hpp"

#include <utility>

namespace atipicos::server {

/// The result that stands for the exception being handled: 6, 7 and 13 as automation has them, other run-time
/// errors as 0x800A0000 and their number, those of databases as they are. To be called inside a `catch`.
[[nodiscard]] automation::HRESULT resultado_en_curso() noexcept;

/// The border of the library: no exception passes it, because hosts in other languages have none. Whatever
/// `trabajo` throws becomes a result.
template <class Trabajo> [[nodiscard]] automation::HRESULT en_frontera(Trabajo&& trabajo) noexcept
{
    try {
        return std::forward<Trabajo>(trabajo)();
    } catch (...) {
        return resultado_en_curso();
    }
}

} // namespace atipicos::server
