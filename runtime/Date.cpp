#include "runtime/Date.hpp"

#include <cmath>

namespace atipicos {

namespace {

    using std::chrono::days;
    using std::chrono::duration_cast;
    using std::chrono::floor;
    using std::chrono::local_days;
    using std::chrono::milliseconds;
    using std::chrono::year_month_day;

    constexpr int anio_minimo = 100;
    constexpr int anio_maximo = 9999;

    year_month_day calendario(Date fecha) { return year_month_day{ floor<days>(fecha.instante()) }; }

    /// By instants, because the years of the library wrap around far before the days do.
    Date comprobada(Date::Instante instante, Donde donde)
    {
        constexpr local_days primero{ std::chrono::year{ anio_minimo } / 1 / 1 };
        constexpr local_days ultimo{ std::chrono::year{ anio_maximo } / 12 / 31 };
        if (instante < primero || instante >= ultimo + days(1))
            throw Error::de_ejecucion(numero_error::desbordamiento, donde);
        return Date(instante);
    }

    /// So many digits at a place of a text; -1 when they are not digits.
    int cifras(std::string_view texto, std::size_t lugar, std::size_t cuantas)
    {
        int numero = 0;
        for (const char c : texto.substr(lugar, cuantas)) {
            if (c < '0' || c > '9')
                return -1;
            numero = numero * 10 + (c - '0');
        }
        return numero;
    }

    /// A time of day as `texto_regional` writes it, the hour also with its leading zero.
    std::optional<milliseconds> hora_de_texto(std::string_view texto)
    {
        constexpr std::size_t tras_la_hora = 6; // ":mm:ss"
        if (texto.size() != tras_la_hora + 1 && texto.size() != tras_la_hora + 2)
            return std::nullopt;
        const auto fin_de_hora = texto.size() - tras_la_hora;
        if (texto[fin_de_hora] != ':' || texto[fin_de_hora + 3] != ':')
            return std::nullopt;
        const int horas = cifras(texto, 0, fin_de_hora);
        const int minutos = cifras(texto, fin_de_hora + 1, 2);
        const int segundos = cifras(texto, fin_de_hora + 4, 2);
        if (horas < 0 || horas > 23 || minutos < 0 || minutos > 59 || segundos < 0 || segundos > 59)
            return std::nullopt;
        return std::chrono::hours(horas) + std::chrono::minutes(minutos) + std::chrono::seconds(segundos);
    }

    void anexa_dos_cifras(std::string& destino, unsigned numero)
    {
        destino += static_cast<char>('0' + numero / 10 % 10);
        destino += static_cast<char>('0' + numero % 10);
    }

}

std::optional<Date> Date::de_dia(int anio, int mes, int dia) noexcept
{
    if (anio < anio_minimo || anio > anio_maximo || mes < 1 || mes > 12 || dia < 1 || dia > 31)
        return std::nullopt;
    const year_month_day fecha{ std::chrono::year{ anio }, std::chrono::month{ static_cast<unsigned>(mes) },
        std::chrono::day{ static_cast<unsigned>(dia) } };
    if (!fecha.ok())
        return std::nullopt;
    return Date(local_days{ fecha });
}

std::optional<Date> Date::de_texto(std::string_view texto) noexcept
{
    if (texto.size() != 10 || texto[2] != '/' || texto[5] != '/')
        return std::nullopt;
    return de_dia(cifras(texto, 6, 4), cifras(texto, 3, 2), cifras(texto, 0, 2));
}

std::optional<Date> Date::de_texto_regional(std::string_view texto) noexcept
{
    const auto blanco = texto.find(' ');
    const bool solo_hora = blanco == std::string_view::npos && texto.find(':') != std::string_view::npos;
    const auto fecha = solo_hora ? std::optional(Date()) : de_texto(texto.substr(0, blanco));
    if (blanco == std::string_view::npos && !solo_hora)
        return fecha;
    const auto hora = hora_de_texto(solo_hora ? texto : texto.substr(blanco + 1));
    if (!fecha || !hora)
        return std::nullopt;
    return Date(fecha->instante() + *hora);
}

Date Date::de_automatizacion(double dias, Donde donde)
{
    constexpr double limite = 3'000'000; // days, past both ends of the calendar
    if (!std::isfinite(dias) || std::fabs(dias) > limite)
        throw Error::de_ejecucion(numero_error::desbordamiento, donde);
    const double enteros = std::trunc(dias);
    constexpr double milisegundos_por_dia = 86'400'000;
    const double fraccion = std::fabs(dias - enteros) * milisegundos_por_dia;
    return comprobada(base + days(std::lround(enteros)) + milliseconds(std::llround(fraccion)), donde);
}

double Date::automatizacion() const noexcept
{
    const auto dias = floor<days>(m_desde_base);
    const double fraccion = static_cast<double>((m_desde_base - dias).count())
        / static_cast<double>(milliseconds(days(1)).count());
    const auto enteros = static_cast<double>(dias.count());
    return enteros < 0 ? enteros - fraccion : enteros + fraccion;
}

int Date::anio() const noexcept { return static_cast<int>(calendario(*this).year()); }

int Date::mes() const noexcept { return static_cast<int>(static_cast<unsigned>(calendario(*this).month())); }

int Date::dia() const noexcept { return static_cast<int>(static_cast<unsigned>(calendario(*this).day())); }

milliseconds Date::hora_del_dia() const noexcept { return m_desde_base - floor<days>(m_desde_base); }

bool Date::tiene_dia() const noexcept { return floor<days>(m_desde_base) != days(0); }

Date Date::solo_dia() const noexcept { return Date(base + floor<days>(m_desde_base)); }

Date Date::mas_dias(std::int32_t dias, Donde donde) const
{
    return comprobada(instante() + days(dias), donde);
}

std::string Date::texto() const
{
    std::string texto;
    anexa_texto(texto);
    return texto;
}

void Date::anexa_texto(std::string& destino) const
{
    const auto fecha = calendario(*this);
    anexa_dos_cifras(destino, static_cast<unsigned>(fecha.day()));
    destino += '/';
    anexa_dos_cifras(destino, static_cast<unsigned>(fecha.month()));
    destino += '/';
    const auto anio = static_cast<unsigned>(static_cast<int>(fecha.year()));
    anexa_dos_cifras(destino, anio / 100);
    anexa_dos_cifras(destino, anio % 100);
}

std::string Date::texto_regional() const
{
    std::string resultado;
    if (tiene_dia())
        anexa_texto(resultado);
    const auto segundos = duration_cast<std::chrono::seconds>(hora_del_dia()).count();
    if (segundos == 0 && tiene_dia())
        return resultado;
    if (!resultado.empty())
        resultado += ' ';
    resultado += std::to_string(segundos / 3600);
    resultado += ':';
    anexa_dos_cifras(resultado, static_cast<unsigned>(segundos / 60 % 60));
    resultado += ':';
    anexa_dos_cifras(resultado, static_cast<unsigned>(segundos % 60));
    return resultado;
}

} // namespace atipicos
