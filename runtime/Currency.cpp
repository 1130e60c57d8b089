#include "runtime/Currency.hpp"

#include "runtime/Decimal.hpp"
#include "runtime/Redondeo.hpp"

#include <cmath>
#include <limits>
#include <optional>

namespace atipicos {

namespace {

    Currency comprobada(std::optional<entero_ancho> diezmilesimas, Donde donde)
    {
        if (!diezmilesimas || *diezmilesimas > std::numeric_limits<std::int64_t>::max()
            || *diezmilesimas < std::numeric_limits<std::int64_t>::min())
            throw Error::de_ejecucion(numero_error::desbordamiento, donde);
        return Currency::de_crudo(static_cast<std::int64_t>(*diezmilesimas));
    }

}

Currency Currency::de_texto(std::string_view texto, Donde donde)
{
    const auto decimal = lee_decimal(texto, '.');
    if (!decimal)
        throw Error::de_ejecucion(numero_error::tipos_no_coinciden, donde);
    return comprobada(en_unidades(*decimal, Currency::decimales), donde);
}

Currency Currency::de_double(double valor, Donde donde)
{
    // Amounts come from columns and sums of cents far more often than from anywhere else: a value that is
    // clearly next to a whole number of ten-thousandths needs no decimal text to be read.
    constexpr double limite_rapido = 1125899906842624.0; // 2^50
    const double diezmilesimas = valor * static_cast<double>(escala);
    const double entero = std::nearbyint(diezmilesimas);
    if (std::fabs(diezmilesimas) < limite_rapido && std::fabs(diezmilesimas - entero) < 0.25)
        return de_crudo(static_cast<std::int64_t>(entero));
    return comprobada(
        en_unidades(decimal_leido(valor, Currency::decimales, donde), Currency::decimales), donde);
}

double Currency::a_double() const noexcept
{
    constexpr std::int64_t exacto_en_double = std::int64_t{ 1 } << 53;
    if (-exacto_en_double <= m_crudo && m_crudo <= exacto_en_double)
        return static_cast<double>(m_crudo) / static_cast<double>(escala);
    // Beyond, dividing would round twice. The whole part is exact, and the error of the decimals is far too
    // small to carry the sum over the middle between two doubles.
    const std::int64_t enteros = m_crudo / escala;
    return static_cast<double>(enteros) + static_cast<double>(m_crudo % escala) / static_cast<double>(escala);
}

std::string Currency::texto() const
{
    const bool negativo = m_crudo < 0;
    const auto positivo
        = negativo ? 0 - static_cast<std::uint64_t>(m_crudo) : static_cast<std::uint64_t>(m_crudo);
    const auto decimal = std::to_string(positivo % escala);
    return (negativo ? "-" : "") + std::to_string(positivo / escala) + "."
        + std::string(Currency::decimales - decimal.size(), '0') + decimal;
}

Currency operator+(Currency a, Operando b)
{
    return comprobada(entero_ancho{ a.crudo() } + b.valor.crudo(), b.donde);
}

Currency operator-(Currency a, Operando b)
{
    return comprobada(entero_ancho{ a.crudo() } - b.valor.crudo(), b.donde);
}

Currency operator*(Currency a, Operando b)
{
    const entero_ancho producto = entero_ancho{ a.crudo() } * b.valor.crudo();
    return comprobada(redondea_cociente<entero_ancho>(producto, Currency::escala), b.donde);
}

} // namespace atipicos
