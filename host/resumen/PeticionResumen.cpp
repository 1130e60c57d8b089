#include "host/resumen/PeticionResumen.hpp"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace atipicos::app {

namespace {

    struct Palabras {
        VistaResumen por;
        std::string_view palabra;
        std::string_view nombre;
    };

    constexpr std::array<Palabras, 4> vistas{ {
        { VistaResumen::proveedor, "proveedor", "proveedor" },
        { VistaResumen::mes, "mes", "mes" },
        { VistaResumen::almacen, "almacen", "almacén" },
        { VistaResumen::articulo, "articulo", "artículo" },
    } };

    const Palabras& palabras_de(VistaResumen por) noexcept
    {
        return *std::find_if(vistas.begin(), vistas.end(), [&](const auto& una) { return una.por == por; });
    }

    int ultimo_dia(int anio, int mes)
    {
        return static_cast<int>(static_cast<unsigned>(
            (std::chrono::year{ anio } / std::chrono::month{ static_cast<unsigned>(mes) } / std::chrono::last)
                .day()));
    }

    /// The first day that every database knows; there are no charges before it.
    Date primero_de_todos() { return Date::de_dia(1753, 1, 1).value_or(Date{}); }

    Date hace_un_anio(Date fecha, int dia)
    {
        const int anio = fecha.anio() - 1;
        const auto entonces = Date::de_dia(anio, fecha.mes(), std::min(dia, ultimo_dia(anio, fecha.mes())));
        return std::max(entonces.value_or(primero_de_todos()), primero_de_todos());
    }

}

Periodo un_anio_antes(const Periodo& periodo)
{
    const auto& hasta = periodo.hasta;
    const bool acaba_el_mes = hasta.dia() == ultimo_dia(hasta.anio(), hasta.mes());
    return { hace_un_anio(periodo.desde, periodo.desde.dia()),
        hace_un_anio(hasta, acaba_el_mes ? 31 : hasta.dia()) };
}

std::string_view palabra(VistaResumen por) noexcept { return palabras_de(por).palabra; }

VistaResumen de_palabra(std::string_view palabra) noexcept
{
    const auto* const lugar
        = std::find_if(vistas.begin(), vistas.end(), [&](const auto& una) { return una.palabra == palabra; });
    return lugar == vistas.end() ? VistaResumen::proveedor : lugar->por;
}

std::string_view nombre_de(VistaResumen por) noexcept { return palabras_de(por).nombre; }

std::string titulo(const PeticionResumen& peticion)
{
    std::string texto = peticion.por == VistaResumen::articulo ? "Líneas de cargos por " : "Cargos por ";
    texto += nombre_de(peticion.por);
    texto += " del " + peticion.periodo.desde.texto() + " al " + peticion.periodo.hasta.texto();
    if (peticion.almacen > 0)
        texto += ", sólo del almacén " + std::to_string(peticion.almacen);
    if (peticion.proveedor > 0)
        texto += ", sólo del proveedor " + std::to_string(peticion.proveedor);
    return texto;
}

} // namespace atipicos::app
