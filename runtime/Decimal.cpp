#include "runtime/Decimal.hpp"

#include <array>
#include <charconv>
#include <cmath>

namespace atipicos {

namespace {

    constexpr int cifras_maximas = 36;

    /// Reads what `std::to_chars` wrote in scientific notation: "-1.2345e+02".
    Decimal de_notacion_cientifica(std::string_view texto)
    {
        const auto e = texto.find('e');
        auto decimal = *lee_decimal(texto.substr(0, e), '.');
        int exponente = 0;
        auto inicio = texto.begin() + static_cast<std::ptrdiff_t>(e) + 1;
        if (*inicio == '+') // from_chars reads no plus sign
            ++inicio;
        std::from_chars(&*inicio, texto.data() + texto.size(), exponente);
        decimal.exponente += exponente;
        return decimal;
    }

}

Decimal decimal_leido(double valor, int decimales, Donde donde)
{
    if (!std::isfinite(valor))
        throw Error::de_ejecucion(numero_error::desbordamiento, donde);
    std::array<char, 48> texto{};
    constexpr int significativas = 15;
    auto fin = std::to_chars(
        texto.data(), texto.data() + texto.size(), valor, std::chars_format::scientific, significativas - 1);
    auto leido = de_notacion_cientifica({ texto.data(), static_cast<std::size_t>(fin.ptr - texto.data()) });
    if (leido.exponente <= -(decimales + 1))
        return leido;
    fin = std::to_chars(texto.data(), texto.data() + texto.size(), valor, std::chars_format::scientific);
    return de_notacion_cientifica({ texto.data(), static_cast<std::size_t>(fin.ptr - texto.data()) });
}

std::optional<Decimal> lee_decimal(std::string_view texto, char separador)
{
    bool negativo = false;
    if (!texto.empty() && (texto[0] == '-' || texto[0] == '+')) {
        negativo = texto[0] == '-';
        texto.remove_prefix(1);
    }
    Decimal decimal;
    int significativas = 0;
    bool hay_cifras = false;
    bool tras_separador = false;
    for (const char c : texto) {
        if (c == separador && !tras_separador) {
            tras_separador = true;
            continue;
        }
        if (c < '0' || c > '9')
            return std::nullopt;
        hay_cifras = true;
        if (significativas < cifras_maximas) {
            decimal.cifras = decimal.cifras * 10 + (c - '0');
            significativas += decimal.cifras != 0 ? 1 : 0;
            decimal.exponente -= tras_separador ? 1 : 0;
        } else {
            decimal.exponente += tras_separador ? 0 : 1;
        }
    }
    if (!hay_cifras)
        return std::nullopt;
    if (negativo)
        decimal.cifras = -decimal.cifras;
    return decimal;
}

std::optional<entero_ancho> en_unidades(Decimal decimal, int decimales) noexcept
{
    const int exponente = decimal.exponente + decimales;
    if (decimal.cifras == 0)
        return 0;
    if (exponente < -cifras_maximas)
        return 0;
    if (exponente < 0)
        return redondea_cociente(decimal.cifras, potencia_de_10(-exponente));
    entero_ancho valor = decimal.cifras;
    const entero_ancho limite = potencia_de_10(cifras_maximas);
    for (int i = 0; i < exponente; ++i) {
        if (valor >= limite || valor <= -limite)
            return std::nullopt;
        valor *= 10;
    }
    return valor;
}

} // namespace atipicos
