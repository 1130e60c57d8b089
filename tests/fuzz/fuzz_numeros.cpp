// The readers of numbers: as a person types them, as statements have them, and the leading number of a text.
#include "runtime/Decimal.hpp"
#include "runtime/Formato.hpp"
#include "runtime/Variant.hpp"
#include "tests/fuzz/Entrada.hpp"

#include <cmath>
#include <string>

namespace {

using namespace atipicos;

template <class Lectura> void intenta(Lectura lectura)
{
    try {
        lectura();
    } catch (const Error&) { // errors 6 and 13 are answers
    }
}

}

int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t tamano)
{
    const auto entrada = fuzz::texto(datos, tamano);
    intenta([&] {
        const Currency leido = lee_pantalla(entrada);
        fuzz::exige(lee_pantalla(texto_pantalla(leido, 4)) == leido, "a number is read as it is shown");
        fuzz::exige(CCur(Variant(entrada)) == leido, "there is one reader of display numbers");
    });
    intenta([&] {
        const Currency leido = Currency::de_texto(entrada);
        fuzz::exige(Currency::de_texto(leido.texto()) == leido, "an amount survives its text");
    });
    intenta([&] { fuzz::exige(std::isfinite(Val(entrada)), "a leading number is finite"); });
    intenta([&] { static_cast<void>(CLng(Variant(entrada))); });
    intenta([&] { static_cast<void>(CDbl(Variant(entrada))); });
    if (const auto cifras = cifras_de_pantalla(entrada))
        fuzz::exige(lee_decimal(*cifras, '.').has_value(), "plain digits are a decimal");
    return 0;
}
