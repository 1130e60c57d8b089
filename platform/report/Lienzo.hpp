#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace atipicos {

/// Hundredths of a millimetre: whole numbers, so that what fits on a page is decided exactly.
using Medida = std::int32_t;

struct Tamano {
    Medida ancho = 0;
    Medida alto = 0;

    friend bool operator==(const Tamano&, const Tamano&) = default;
};

inline constexpr Tamano A4{ 21000, 29700 };

/// From the upper left corner of the page.
struct Recuadro {
    Medida x = 0;
    Medida y = 0;
    Medida ancho = 0;
    Medida alto = 0;

    friend bool operator==(const Recuadro&, const Recuadro&) = default;
};

/// Red, green and blue, as `0xRRGGBB`.
using Color = std::uint32_t;

struct Letra {
    std::string familia;
    Medida cuerpo = 0; ///< height of the type
    bool negrita = false;

    friend bool operator==(const Letra&, const Letra&) = default;
};

/// How wide a text is in a type. What paints the pages has to measure them, or lines would not end where
/// they were thought to.
class Medidor {
public:
    Medidor() = default;
    Medidor(const Medidor&) = delete;
    Medidor& operator=(const Medidor&) = delete;
    virtual ~Medidor() = default;

    [[nodiscard]] virtual Medida ancho(std::string_view texto, const Letra& letra) const = 0;
};

/// What a page is painted on.
class Lienzo {
public:
    Lienzo() = default;
    Lienzo(const Lienzo&) = delete;
    Lienzo& operator=(const Lienzo&) = delete;
    virtual ~Lienzo() = default;

    /// One line of text whose base line begins at (`x`, `y`).
    virtual void texto(Medida x, Medida y, std::string_view texto, const Letra& letra, Color color) = 0;
    virtual void relleno(const Recuadro& recuadro, Color color) = 0;
};

} // namespace atipicos
