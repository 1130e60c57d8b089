#include "runtime/Variant.hpp"

#include "runtime/Decimal.hpp"
#include "runtime/Formato.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

namespace atipicos {

Variant::Variant(Nulo) noexcept
    : m_valor(Nulo{})
{
}
Variant::Variant(bool valor) noexcept
    : m_valor(valor)
{
}
Variant::Variant(std::int32_t valor) noexcept
    : m_valor(valor)
{
}
Variant::Variant(double valor) noexcept
    : m_valor(valor)
{
}
Variant::Variant(Currency valor) noexcept
    : m_valor(valor)
{
}
Variant::Variant(Date valor) noexcept
    : m_valor(valor)
{
}
Variant::Variant(std::string valor) noexcept
    : m_valor(std::move(valor))
{
}
Variant::Variant(std::string_view valor)
    : m_valor(std::string(valor))
{
}
Variant::Variant(const char* valor)
    : m_valor(std::string(valor))
{
}
Variant::Variant(std::shared_ptr<Objeto> valor) noexcept
    : m_valor(std::move(valor))
{
}

namespace {

    using Referencia = std::shared_ptr<Objeto>;

    [[noreturn]] void no_coinciden(Donde donde)
    {
        throw Error::de_ejecucion(numero_error::tipos_no_coinciden, donde);
    }

    /// The value as a number; dates count their days, True is -1.
    struct ComoDouble {
        Donde donde;
        double operator()(std::monostate) const { return 0; }
        double operator()(Nulo) const { throw Error::de_ejecucion(numero_error::nulo_no_valido, donde); }
        double operator()(bool valor) const { return valor ? -1 : 0; }
        double operator()(std::int32_t valor) const { return valor; }
        double operator()(double valor) const { return valor; }
        double operator()(Currency valor) const { return valor.a_double(); }
        double operator()(Date valor) const { return valor.automatizacion(); }
        double operator()(const std::string& valor) const { return lee_pantalla(valor, donde).a_double(); }
        double operator()(const Referencia&) const { no_coinciden(donde); }
    };

    /// The value rounded to a whole number between two limits.
    std::int32_t entero(const Variant& variante, std::int32_t minimo, std::int32_t maximo, Donde donde)
    {
        const auto& valor = variante.valor();
        std::optional<entero_ancho> numero;
        if (const auto* exacto = std::get_if<std::int32_t>(&valor))
            numero = *exacto;
        else if (const auto* moneda = std::get_if<Currency>(&valor))
            numero = Redondear(*moneda, 0, donde).crudo() / Currency::escala;
        else if (const auto* texto = std::get_if<std::string>(&valor))
            numero = Redondear(lee_pantalla(*texto, donde), 0, donde).crudo() / Currency::escala;
        else
            numero = en_unidades(decimal_leido(std::visit(ComoDouble{ donde }, valor), 0, donde), 0);
        if (!numero || *numero < minimo || *numero > maximo)
            throw Error::de_ejecucion(numero_error::desbordamiento, donde);
        return static_cast<std::int32_t>(*numero);
    }

    /// As many decimals as the 15 significant digits have, with the comma.
    std::string texto_de(double valor)
    {
        std::array<char, 400> texto{};
        const auto fin = std::to_chars(texto.data(), texto.data() + texto.size(), valor == 0 ? 0 : valor,
            std::chars_format::general, 15);
        std::string resultado(texto.data(), fin.ptr);
        std::replace(resultado.begin(), resultado.end(), '.', ',');
        return resultado;
    }

    std::string texto_de(Currency valor)
    {
        std::string texto = valor.texto();
        texto.erase(texto.find_last_not_of('0') + 1);
        if (texto.back() == '.')
            texto.pop_back();
        std::replace(texto.begin(), texto.end(), '.', ',');
        return texto;
    }

    struct ComoTexto {
        Donde donde;
        std::string operator()(std::monostate) const { return {}; }
        std::string operator()(Nulo) const { throw Error::de_ejecucion(numero_error::nulo_no_valido, donde); }
        std::string operator()(bool valor) const { return valor ? "Verdadero" : "Falso"; }
        std::string operator()(std::int32_t valor) const { return std::to_string(valor); }
        std::string operator()(double valor) const { return texto_de(valor); }
        std::string operator()(Currency valor) const { return texto_de(valor); }
        std::string operator()(Date valor) const { return valor.texto_regional(); }
        std::string operator()(const std::string& valor) const { return valor; }
        std::string operator()(const Referencia&) const { no_coinciden(donde); }
    };

    std::string minusculas(std::string texto)
    {
        for (char& c : texto)
            c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        return texto;
    }

}

bool CBool(const Variant& variante, Donde donde)
{
    if (const auto* texto = std::get_if<std::string>(&variante.valor())) {
        const auto palabra = minusculas(*texto);
        if (palabra == "verdadero" || palabra == "true")
            return true;
        if (palabra == "falso" || palabra == "false")
            return false;
    }
    return std::visit(ComoDouble{ donde }, variante.valor()) != 0;
}

std::int16_t CInt(const Variant& valor, Donde donde)
{
    using Limites = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(entero(valor, Limites::min(), Limites::max(), donde));
}

std::int32_t CLng(const Variant& valor, Donde donde)
{
    using Limites = std::numeric_limits<std::int32_t>;
    return entero(valor, Limites::min(), Limites::max(), donde);
}

double CDbl(const Variant& valor, Donde donde) { return std::visit(ComoDouble{ donde }, valor.valor()); }

Currency CCur(const Variant& variante, Donde donde)
{
    if (const auto* moneda = std::get_if<Currency>(&variante.valor()))
        return *moneda;
    if (const auto* texto = std::get_if<std::string>(&variante.valor()))
        return lee_pantalla(*texto, donde);
    return Currency::de_double(CDbl(variante, donde), donde);
}

Date CDate(const Variant& variante, Donde donde)
{
    if (const auto* fecha = std::get_if<Date>(&variante.valor()))
        return *fecha;
    if (const auto* texto = std::get_if<std::string>(&variante.valor())) {
        const auto leida = Date::de_texto(*texto);
        if (!leida)
            no_coinciden(donde);
        return *leida;
    }
    return Date::de_automatizacion(CDbl(variante, donde), donde);
}

std::string CStr(const Variant& valor, Donde donde) { return std::visit(ComoTexto{ donde }, valor.valor()); }

double Val(std::string_view texto, Donde donde)
{
    std::string numero;
    bool punto = false;
    for (const char c : texto) {
        if (c == ' ' || c == '\t' || c == '\n' || c == '\r')
            continue;
        const bool signo = (c == '-' || c == '+') && numero.empty();
        const bool separa = c == '.' && !punto;
        if (!signo && !separa && (c < '0' || c > '9'))
            break;
        punto = punto || separa;
        numero += c;
    }
    if (!numero.empty() && numero[0] == '+')
        numero.erase(0, 1);
    double valor = 0;
    if (std::from_chars(numero.data(), numero.data() + numero.size(), valor).ec
        == std::errc::result_out_of_range)
        throw Error::de_ejecucion(numero_error::desbordamiento, donde);
    return valor;
}

} // namespace atipicos
