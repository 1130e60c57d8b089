#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

/// What the fuzz targets share. A target is handed any bytes; a property that does not hold ends the program.
namespace atipicos::fuzz {

inline std::string_view texto(const std::uint8_t* datos, std::size_t tamano)
{
    return { reinterpret_cast<const char*>(datos), tamano };
}

inline void exige(bool cierto, const char* que)
{
    if (!cierto) {
        std::fprintf(stderr, "broken: %s\n", que);
        std::abort();
    }
}

} // namespace atipicos::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t tamano);
