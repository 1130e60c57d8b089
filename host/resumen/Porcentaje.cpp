#include "host/resumen/Porcentaje.hpp"

#include "runtime/Formato.hpp"
#include "runtime/Redondeo.hpp"

#include <limits>

namespace atipicos::app {

namespace {

    /// `parte` / |`todo`| in units of which there are `unidades` in the whole.
    std::optional<std::int64_t> en_unidades(entero_ancho parte, Currency todo, std::int64_t unidades)
    {
        if (todo == Currency())
            return std::nullopt;
        const entero_ancho entero = todo.crudo() < 0 ? -entero_ancho{ todo.crudo() } : todo.crudo();
        const auto cociente = redondea_cociente<entero_ancho>(parte * unidades, entero);
        constexpr entero_ancho limite = std::numeric_limits<std::int64_t>::max();
        if (cociente > limite || cociente < -limite)
            return std::nullopt;
        return static_cast<std::int64_t>(cociente);
    }

    constexpr std::int64_t decimas = 1'000; ///< of a percent, in the whole

    /// Nothing where it would be more than can be written.
    std::string texto(std::optional<std::int64_t> cuantas, bool es_nada)
    {
        constexpr std::int64_t de_crudo = Currency::escala / 10;
        if (!cuantas || *cuantas > std::numeric_limits<std::int64_t>::max() / de_crudo
            || *cuantas < std::numeric_limits<std::int64_t>::min() / de_crudo)
            return "–";
        if (*cuantas == 0 && !es_nada)
            return {};
        return texto_pantalla(Currency::de_crudo(*cuantas * de_crudo), 1) + " %";
    }

    const char* casi_nada(bool positivo) { return positivo ? "<0,1 %" : ">-0,1 %"; }

}

std::optional<Currency> porcentaje(Currency parte, Currency todo)
{
    const auto cuantas = en_unidades(parte.crudo(), todo, std::int64_t{ 100 } * Currency::escala);
    return cuantas ? std::optional(Currency::de_crudo(*cuantas)) : std::nullopt;
}

std::string texto_parte(Currency parte, Currency todo)
{
    const auto cuantas = en_unidades(parte.crudo(), todo, decimas);
    if (cuantas == decimas && parte.crudo() < (todo.crudo() < 0 ? -todo.crudo() : todo.crudo()))
        return ">99,9 %";
    auto dicho = texto(cuantas, parte == Currency());
    return dicho.empty() ? casi_nada(parte > Currency()) : dicho;
}

std::string texto_cambio(Currency antes, Currency ahora)
{
    const auto diferencia = entero_ancho{ ahora.crudo() } - antes.crudo();
    auto dicho = texto(en_unidades(diferencia, antes, decimas), diferencia == 0);
    if (dicho.empty())
        return casi_nada(diferencia > 0);
    return diferencia > 0 && dicho != "–" ? "+" + dicho : dicho;
}

} // namespace atipicos::app
