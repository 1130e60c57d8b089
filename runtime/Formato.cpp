#include "runtime/Formato.hpp"

#include "runtime/Decimal.hpp"
#include "runtime/Redondeo.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace atipicos {

namespace {

    constexpr int decimales_maximos = 15;

    void comprueba_decimales(int decimales, Donde donde)
    {
        if (decimales < 0 || decimales > decimales_maximos)
            throw Error::de_ejecucion(numero_error::argumento_no_valido, donde);
    }

    /// Appends a whole number of 10^-`decimales`, written from the end of a buffer backwards.
    template <class Entero> void anexa_unidades(std::string& destino, Entero unidades, int decimales)
    {
        std::array<char, 80> texto{};
        auto* lugar = texto.data() + texto.size();
        const bool negativo = unidades < 0;
        const auto cifra = [&] { // digit by digit, because the most negative number has no positive one
            const int ultima = static_cast<int>(unidades % 10);
            unidades /= 10;
            return static_cast<char>('0' + (ultima < 0 ? -ultima : ultima));
        };
        for (int i = 0; i < decimales; ++i)
            *--lugar = cifra();
        if (decimales > 0)
            *--lugar = ',';
        int cifras = 0;
        do {
            if (cifras != 0 && cifras % 3 == 0)
                *--lugar = '.';
            *--lugar = cifra();
            ++cifras;
        } while (unidades != 0);
        if (negativo)
            *--lugar = '-';
        destino.append(lugar, texto.data() + texto.size());
    }

    /// The digits without their thousands points, or false when those do not part groups of three.
    bool quita_millares(std::string_view texto, std::string& cifras)
    {
        const auto coma = texto.find(',');
        const auto entera = texto.substr(0, coma);
        const auto primero = entera.find('.');
        if (primero == std::string_view::npos) {
            cifras = texto;
            return true;
        }
        const bool signo = entera[0] == '-' || entera[0] == '+';
        const auto primer_grupo = primero - (signo ? 1 : 0);
        if (primer_grupo < 1 || primer_grupo > 3)
            return false;
        cifras = entera.substr(0, primero);
        for (auto p = primero; p < entera.size(); p += 4) {
            if (entera[p] != '.' || entera.size() - p < 4)
                return false;
            cifras += entera.substr(p + 1, 3);
        }
        if (coma != std::string_view::npos)
            cifras += texto.substr(coma);
        return true;
    }

    /// Through its decimal text, so that the result is the double nearest to the rounded value.
    double de_unidades(entero_ancho unidades, int decimales)
    {
        std::string texto;
        anexa_unidades(texto, unidades, 0);
        std::erase(texto, '.');
        texto += "e-" + std::to_string(decimales);
        double valor = 0;
        std::from_chars(texto.data(), texto.data() + texto.size(), valor);
        return valor;
    }

}

Currency Redondear(Currency valor, int decimales, Donde donde)
{
    if (decimales >= Currency::decimales)
        return valor;
    comprueba_decimales(decimales, donde);
    const auto unidad = potencia_de_10<std::int64_t>(Currency::decimales - decimales);
    std::int64_t redondo = 0;
    if (__builtin_mul_overflow(redondea_cociente(valor.crudo(), unidad), unidad, &redondo))
        throw Error::de_ejecucion(numero_error::desbordamiento, donde);
    return Currency::de_crudo(redondo);
}

double Redondear(double valor, int decimales, Donde donde)
{
    comprueba_decimales(decimales, donde);
    const auto unidades = en_unidades(decimal_leido(valor, decimales, donde), decimales);
    return unidades ? de_unidades(*unidades, decimales) : valor; // too large to have decimals at all
}

std::string texto_sql(double valor, Donde donde)
{
    if (!std::isfinite(valor))
        throw Error::de_ejecucion(numero_error::desbordamiento, donde);
    if (valor == 0) // also the negative zero
        return "0";
    std::array<char, 512> texto{};
    const auto fin
        = std::to_chars(texto.data(), texto.data() + texto.size(), valor, std::chars_format::fixed);
    return { texto.data(), fin.ptr };
}

std::string texto_pantalla(Currency valor, int decimales, Donde donde)
{
    std::string texto;
    anexa_pantalla(texto, valor, decimales, donde);
    return texto;
}

std::string texto_pantalla(double valor, int decimales, Donde donde)
{
    comprueba_decimales(decimales, donde);
    const auto unidades = en_unidades(decimal_leido(valor, decimales, donde), decimales);
    if (!unidades)
        throw Error::de_ejecucion(numero_error::desbordamiento, donde);
    std::string texto;
    anexa_unidades(texto, *unidades, decimales);
    return texto;
}

void anexa_pantalla(std::string& destino, Currency valor, int decimales, Donde donde)
{
    comprueba_decimales(decimales, donde);
    if (decimales < Currency::decimales)
        anexa_unidades(destino,
            redondea_cociente(valor.crudo(), potencia_de_10<std::int64_t>(Currency::decimales - decimales)),
            decimales);
    else
        anexa_unidades(destino, valor.crudo() * potencia_de_10(decimales - Currency::decimales), decimales);
}

std::optional<std::string> cifras_de_pantalla(std::string_view texto)
{
    const auto primero = texto.find_first_not_of(' ');
    if (primero == std::string_view::npos)
        return std::nullopt;
    texto = texto.substr(primero, texto.find_last_not_of(' ') - primero + 1);
    std::string cifras;
    if (!quita_millares(texto, cifras) || cifras.find('.') != std::string::npos || !lee_decimal(cifras, ','))
        return std::nullopt;
    std::replace(cifras.begin(), cifras.end(), ',', '.');
    return cifras;
}

Currency lee_pantalla(std::string_view texto, Donde donde)
{
    const auto cifras = cifras_de_pantalla(texto);
    if (!cifras)
        throw Error::de_ejecucion(numero_error::tipos_no_coinciden, donde);
    return Currency::de_texto(*cifras, donde);
}

} // namespace atipicos
