#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct evp_md_ctx_st;

namespace atipicos::app {

/// SHA-256 of a text that comes piece by piece: by it a file is known again, whatever its name.
class Huella {
public:
    Huella();

    void agrega(std::string_view trozo);

    /// Of all that was added, in hexadecimal. Nothing can be added afterwards.
    [[nodiscard]] std::string texto();

private:
    struct Libera {
        void operator()(evp_md_ctx_st* contexto) const noexcept;
    };

    std::unique_ptr<evp_md_ctx_st, Libera> m_contexto;
};

/// What stands for a text where only whether it has been seen matters: half of its SHA-256.
using Resumen = std::array<std::uint64_t, 2>;
[[nodiscard]] Resumen resumen_de(std::string_view texto);

struct DispersaResumen {
    std::size_t operator()(const Resumen& resumen) const noexcept
    {
        return static_cast<std::size_t>(resumen[0]);
    }
};

} // namespace atipicos::app
