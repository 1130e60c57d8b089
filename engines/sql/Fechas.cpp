#include "engines/sql/Fechas.hpp"

#include <algorithm>
#include <chrono>

namespace atipicos::sql {

namespace {

    using std::chrono::milliseconds;

    constexpr int anio_minimo = 1753;

    /// Reads up to `maximo` digits at the front of `texto` and takes them off; -1 when there is none.
    int toma_cifras(std::string_view& texto, std::size_t minimo, std::size_t maximo)
    {
        int numero = 0;
        std::size_t cuantas = 0;
        for (; cuantas < std::min(maximo, texto.size()); ++cuantas) {
            const char c = texto[cuantas];
            if (c < '0' || c > '9')
                break;
            numero = numero * 10 + (c - '0');
        }
        if (cuantas < minimo)
            return -1;
        texto.remove_prefix(cuantas);
        return numero;
    }

    bool toma(std::string_view& texto, char c)
    {
        if (texto.empty() || texto[0] != c)
            return false;
        texto.remove_prefix(1);
        return true;
    }

    /// `h:mm`, `h:mm:ss` or `h:mm:ss.mmm`, and nothing after it.
    std::optional<milliseconds> lee_hora(std::string_view texto)
    {
        const int horas = toma_cifras(texto, 1, 2);
        if (!toma(texto, ':'))
            return std::nullopt;
        const int minutos = toma_cifras(texto, 2, 2);
        int segundos = 0;
        int milesimas = 0;
        if (toma(texto, ':')) {
            segundos = toma_cifras(texto, 2, 2);
            if (toma(texto, '.'))
                milesimas = toma_cifras(texto, 3, 3);
        }
        if (!texto.empty() || horas < 0 || horas > 23 || minutos < 0 || minutos > 59 || segundos < 0
            || segundos > 59 || milesimas < 0)
            return std::nullopt;
        return std::chrono::hours(horas) + std::chrono::minutes(minutos) + std::chrono::seconds(segundos)
            + milliseconds(milesimas);
    }

    std::optional<Date> con_hora(std::optional<Date> dia, std::string_view hora)
    {
        if (!dia || hora.empty())
            return dia;
        const auto leida = hora[0] == ' ' ? lee_hora(hora.substr(1)) : std::nullopt;
        if (!leida)
            return std::nullopt;
        return Date(dia->instante() + *leida);
    }

    void anexa_cifras(std::string& destino, int numero, std::size_t cuantas)
    {
        const auto inicio = destino.size();
        destino.append(cuantas, '0');
        for (auto i = inicio + cuantas; i > inicio && numero > 0; numero /= 10)
            destino[--i] = static_cast<char>('0' + numero % 10);
    }

}

std::optional<Date> lee_fecha_regional(std::string_view texto)
{
    const auto primer_dia = Date::de_dia(1900, 1, 1);
    if (texto.empty())
        return primer_dia;
    if (const auto hora = lee_hora(texto))
        return Date(primer_dia->instante() + *hora);
    const auto fecha = con_hora(
        Date::de_texto(texto.substr(0, 10)), texto.substr(std::min<std::size_t>(10, texto.size())));
    if (!fecha || fecha->anio() < anio_minimo)
        return std::nullopt;
    return fecha;
}

std::string texto_iso(Date fecha)
{
    std::string texto;
    const auto anexa = [&](char separador, int numero, std::size_t cifras) {
        texto += separador;
        anexa_cifras(texto, numero, cifras);
    };
    anexa_cifras(texto, fecha.anio(), 4);
    anexa('-', fecha.mes(), 2);
    anexa('-', fecha.dia(), 2);
    const auto hora = fecha.hora_del_dia();
    if (hora.count() == 0)
        return texto;
    const auto segundos = static_cast<int>(hora.count() / 1000);
    anexa(' ', segundos / 3600, 2);
    anexa(':', segundos / 60 % 60, 2);
    anexa(':', segundos % 60, 2);
    if (const auto milesimas = static_cast<int>(hora.count() % 1000); milesimas != 0)
        anexa('.', milesimas, 3);
    return texto;
}

std::optional<Date> lee_iso(std::string_view texto)
{
    const int anio = toma_cifras(texto, 4, 4);
    if (!toma(texto, '-'))
        return std::nullopt;
    const int mes = toma_cifras(texto, 2, 2);
    if (!toma(texto, '-'))
        return std::nullopt;
    const int dia = toma_cifras(texto, 2, 2);
    return con_hora(Date::de_dia(anio, mes, dia), texto);
}

} // namespace atipicos::sql
