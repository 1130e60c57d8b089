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

    /// The plain digits of a display number. Error 13 when it is none.
    std::string cifras_de(const std::string& texto, Donde donde)
    {
        auto cifras = cifras_de_pantalla(texto);
        if (!cifras)
            no_coinciden(donde);
        return *std::move(cifras);
    }

    /// About how many digits lie before the point of a number that fits in no double; negative for the
    /// zeros behind the point.
    std::int64_t orden_de_magnitud(std::string_view numero)
    {
        const auto fin = std::min(numero.find_first_not_of("-.0123456789"), numero.size());
        const auto punto = std::min(numero.substr(0, fin).find('.'), fin);
        const auto primera = numero.find_first_of("123456789");
        std::int64_t orden = static_cast<std::int64_t>(punto) - static_cast<std::int64_t>(primera);
        if (fin < numero.size() && (numero[fin] == 'e' || numero[fin] == 'E')) {
            const auto signo = numero.find_first_not_of('+', fin + 1);
            std::int32_t exponente = 0; // beyond 32 bits its sign decides
            const auto* ultima = numero.data() + numero.size();
            if (signo < numero.size()
                && std::from_chars(numero.data() + signo, ultima, exponente).ec
                    == std::errc::result_out_of_range)
                exponente = numero[signo] == '-' ? std::numeric_limits<std::int32_t>::min()
                                                 : std::numeric_limits<std::int32_t>::max();
            orden += exponente;
        }
        return orden;
    }

    /// The number with which a text begins. Error 6 when it is too large for a double.
    double lee_double(std::string_view numero, Donde donde)
    {
        if (numero.front() == '+') // from_chars reads no plus sign
            numero.remove_prefix(1);
        double valor = 0;
        if (std::from_chars(numero.data(), numero.data() + numero.size(), valor).ec
            != std::errc::result_out_of_range)
            return valor;
        if (orden_de_magnitud(numero) > 0)
            throw Error::de_ejecucion(numero_error::desbordamiento, donde);
        return 0; // nearer to zero than any other double
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
        double operator()(const std::string& valor) const
        {
            return lee_double(cifras_de(valor, donde), donde);
        }
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
            numero = en_unidades(*lee_decimal(cifras_de(*texto, donde), '.'), 0);
        else
            numero = en_unidades(decimal_leido(std::visit(ComoDouble{ donde }, valor), 0, donde), 0);
        if (!numero || *numero < minimo || *numero > maximo)
            throw Error::de_ejecucion(numero_error::desbordamiento, donde);
        return static_cast<std::int32_t>(*numero);
    }

    /// As many decimals as the 15 significant digits have, with the comma; a number whose whole part has more
    /// digits than those shows its exponent.
    std::string texto_de(double valor, Donde donde)
    {
        constexpr double limite = 1e15;
        std::array<char, 32> texto{};
        const auto* fin
            = std::to_chars(texto.data(), texto.data() + texto.size(), valor, std::chars_format::general, 15)
                  .ptr;
        std::string resultado(static_cast<const char*>(texto.data()), fin);
        if (!(std::fabs(valor) >= limite) || std::isinf(valor)) {
            // 15 digits come back unchanged from the double nearest to them.
            double leido = valor;
            std::from_chars(texto.data(), fin, leido);
            resultado = texto_sql(leido, donde);
        }
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
        std::string operator()(double valor) const { return texto_de(valor, donde); }
        std::string operator()(Currency valor) const { return texto_de(valor); }
        std::string operator()(Date valor) const { return valor.texto_regional(); }
        std::string operator()(const std::string& valor) const { return valor; }
        std::string operator()(const Referencia&) const { no_coinciden(donde); }
    };

    bool es_blanco(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

    bool es_cifra_o_punto(char c) { return c == '.' || (c >= '0' && c <= '9'); }

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
        const auto leida = Date::de_texto_regional(*texto);
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
    for (const char c : texto)
        if (!es_blanco(c))
            numero += c;
    const std::size_t signo = numero.starts_with('-') || numero.starts_with('+') ? 1 : 0;
    if (signo == numero.size() || !es_cifra_o_punto(numero[signo])) // "infinito" is no number either
        return 0;
    const double valor = lee_double(numero, donde);
    return valor == 0 ? 0 : valor; // no negative zero
}

} // namespace atipicos
