#include "engines/sql/Forma.hpp"

#include "engines/sql/Fechas.hpp"

#include <array>
#include <charconv>

namespace atipicos::sql {

namespace {

    std::string_view sin_comillas(const Literal& literal) noexcept
    {
        return literal.texto.substr(1, literal.texto.size() - 2);
    }

    bool es_bit(const Literal& literal) noexcept
    {
        return literal.clase == Literal::Clase::entero && literal.texto.size() <= 2
            && (literal.texto == "0" || literal.texto == "1" || literal.texto == "-1");
    }

}

bool viaja(Trato trato, const Literal& literal) noexcept
{
    return trato == Trato::viaja || (trato == Trato::viaja_si_no_es_bit && !es_bit(literal));
}

std::int64_t entero_de(const Literal& literal) noexcept
{
    std::int64_t valor = 0;
    std::from_chars(literal.texto.data(), literal.texto.data() + literal.texto.size(), valor);
    return valor;
}

double real_de(const Literal& literal) noexcept
{
    constexpr std::array<double, 5> potencias{ 1, 10, 100, 1'000, 10'000 };
    const bool negativo = literal.texto.front() == '-';
    std::int64_t cifras = 0;
    std::size_t decimales = 0;
    bool tras_el_punto = false;
    for (const char c : literal.texto.substr(negativo ? 1 : 0)) {
        if (c == '.') {
            tras_el_punto = true;
            continue;
        }
        cifras = cifras * 10 + (c - '0');
        decimales += tras_el_punto ? 1 : 0;
    }
    const double valor = static_cast<double>(cifras) / potencias.at(decimales);
    return negativo ? -valor : valor;
}

std::optional<std::string_view> contenido_de(const Literal& literal, bool es_fecha, std::string& sitio)
{
    if (literal.clase != Literal::Clase::texto)
        return literal.texto;
    const auto texto = sin_comillas(literal);
    if (es_fecha) {
        const auto fecha = lee_fecha_regional(texto);
        if (!fecha)
            return std::nullopt;
        sitio = texto_iso(*fecha);
        return sitio;
    }
    if (!literal.con_dobles)
        return texto;
    sitio.clear();
    for (std::size_t i = 0; i < texto.size(); ++i) {
        sitio += texto[i];
        i += texto[i] == '\'' ? 1U : 0U;
    }
    return sitio;
}

} // namespace atipicos::sql
