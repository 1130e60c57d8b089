#include "runtime/FechaTecleada.hpp"

#include <array>
#include <charconv>
#include <string>

namespace atipicos {

namespace {

    constexpr int siglo = 2000;
    constexpr std::size_t cifras_de_mas = 6; ///< more days than the calendar has

    /// A number of so many digits and nothing else.
    std::optional<int> numero(std::string_view cifras, std::size_t maximo)
    {
        int valor = 0;
        const char* const fin = cifras.data() + cifras.size();
        const auto leido = std::from_chars(cifras.data(), fin, valor);
        if (cifras.empty() || cifras.size() > maximo || cifras.front() == '-' || leido.ec != std::errc{}
            || leido.ptr != fin)
            return std::nullopt;
        return valor;
    }

    using Partes = std::array<std::string_view, 3>; ///< day, month, year

    std::optional<Partes> separa(std::string_view tecleado)
    {
        if (tecleado.find('/') == std::string_view::npos) {
            const auto parte = [&](std::size_t desde, std::size_t cuantas) {
                return desde < tecleado.size() ? tecleado.substr(desde, cuantas) : std::string_view();
            };
            return Partes{ parte(0, 2), parte(2, 2), parte(4, std::string_view::npos) };
        }
        Partes partes;
        std::size_t cual = 0;
        for (const char caracter : tecleado)
            if (caracter == '/' && ++cual == partes.size())
                return std::nullopt;
        for (auto& parte : partes) {
            const auto barra = tecleado.find('/');
            parte = tecleado.substr(0, barra);
            tecleado = barra == std::string_view::npos ? std::string_view() : tecleado.substr(barra + 1);
        }
        return partes;
    }

    std::optional<int> anio(std::string_view cifras)
    {
        constexpr std::size_t corto = 2;
        constexpr std::size_t entero = 4;
        const auto leido = numero(cifras, entero);
        if (cifras.size() == corto && leido)
            return siglo + *leido;
        return cifras.size() == entero ? leido : std::nullopt;
    }

    std::optional<Date> contada(std::string_view tecleado, Date partida)
    {
        const auto dias = numero(tecleado.substr(1), cifras_de_mas);
        if (!dias)
            return std::nullopt;
        try {
            return partida.mas_dias(tecleado.front() == '-' ? -*dias : *dias);
        } catch (const Error&) { // the calendar ends before
            return std::nullopt;
        }
    }

}

std::optional<Date> completa_fecha(std::string_view tecleado, Date partida)
{
    if (tecleado.starts_with('+') || tecleado.starts_with('-'))
        return contada(tecleado, partida);
    const auto partes = separa(tecleado);
    if (!partes)
        return std::nullopt;
    const auto& [dia, mes, del_anio] = *partes;
    if (mes.empty() && !del_anio.empty())
        return std::nullopt;
    const auto el_dia = numero(dia, 2);
    const auto el_mes = mes.empty() ? partida.mes() : numero(mes, 2);
    const auto el_anio = del_anio.empty() ? partida.anio() : anio(del_anio);
    if (!el_dia || !el_mes || !el_anio)
        return std::nullopt;
    return Date::de_dia(*el_anio, *el_mes, *el_dia);
}

} // namespace atipicos
