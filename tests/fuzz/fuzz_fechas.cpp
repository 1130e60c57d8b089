// The readers of dates: typed ones, those in statements, and those that a database keeps as text.
#include "engines/sql/Fechas.hpp"
#include "runtime/Variant.hpp"
#include "tests/fuzz/Entrada.hpp"

#include <string>

int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t tamano)
{
    using namespace atipicos;
    const auto entrada = fuzz::texto(datos, tamano);
    if (const auto dia = Date::de_texto(entrada))
        fuzz::exige(dia->texto() == entrada, "a typed day is shown as it was typed");
    if (const auto fecha = sql::lee_fecha_regional(entrada))
        fuzz::exige(sql::lee_iso(sql::texto_iso(*fecha)) == fecha, "a regional date survives its ISO text");
    if (const auto fecha = sql::lee_iso(entrada)) {
        fuzz::exige(sql::lee_iso(sql::texto_iso(*fecha)) == fecha, "an ISO date survives its own text");
        fuzz::exige(Date::de_automatizacion(fecha->automatizacion()).solo_dia() == fecha->solo_dia(),
            "the day survives the automation date");
    }
    try {
        static_cast<void>(CDate(Variant(entrada)));
    } catch (const Error&) {
    }
    return 0;
}
