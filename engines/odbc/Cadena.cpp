#include "engines/odbc/Cadena.hpp"

#include "engines/sql/Tokens.hpp"

#include <algorithm>

namespace atipicos::odbc {

namespace {

    std::string_view sin_blancos(std::string_view texto)
    {
        const auto primero = texto.find_first_not_of(" \t");
        if (primero == std::string_view::npos)
            return {};
        return texto.substr(primero, texto.find_last_not_of(" \t") - primero + 1);
    }

    /// Takes a value off the front, with the ";" behind it. In braces "}}" stands for "}".
    std::string toma_valor(std::string_view& texto)
    {
        texto.remove_prefix(std::min(texto.find_first_not_of(" \t"), texto.size()));
        std::string valor;
        if (!texto.starts_with('{')) {
            const auto fin = std::min(texto.find(';'), texto.size());
            valor = sin_blancos(texto.substr(0, fin));
            texto.remove_prefix(std::min(fin + 1, texto.size()));
            return valor;
        }
        std::size_t i = 1;
        for (; i < texto.size() && (texto[i] != '}' || texto.substr(i, 2) == "}}"); ++i) {
            i += texto[i] == '}' ? 1U : 0U;
            valor += texto[i];
        }
        const auto fin = texto.find(';', i);
        texto.remove_prefix(fin == std::string_view::npos ? texto.size() : fin + 1);
        return valor;
    }

    void anexa_valor(std::string& texto, const std::string& valor, Llaves llaves)
    {
        if (valor.find_first_of(";{}=") == std::string::npos && sin_blancos(valor) == valor) {
            texto += valor;
            return;
        }
        texto += '{';
        for (const char c : valor)
            texto.append(c == '}' && llaves == Llaves::dobladas ? 2 : 1, c);
        texto += '}';
    }

}

Cadena::Cadena(std::string_view texto)
{
    while (!texto.empty()) {
        const auto igual = texto.find_first_of("=;");
        const auto nombre = sin_blancos(texto.substr(0, igual));
        if (igual == std::string_view::npos || texto[igual] == ';') {
            texto.remove_prefix(std::min(igual, texto.size() - 1) + 1);
            continue; // a name without a value says nothing
        }
        texto.remove_prefix(igual + 1);
        m_partes.emplace_back(nombre, toma_valor(texto));
    }
}

bool Cadena::tiene(std::string_view nombre) const noexcept
{
    return std::any_of(
        m_partes.begin(), m_partes.end(), [&](const auto& una) { return sql::iguales(una.first, nombre); });
}

std::string Cadena::valor(std::string_view nombre) const
{
    for (const auto& [suyo, valor] : m_partes)
        if (sql::iguales(suyo, nombre))
            return valor;
    return {};
}

void Cadena::pon(std::string_view nombre, std::string valor)
{
    for (auto& [suyo, antiguo] : m_partes)
        if (sql::iguales(suyo, nombre)) {
            antiguo = std::move(valor);
            return;
        }
    m_partes.emplace_back(nombre, std::move(valor));
}

bool Cadena::admite(Llaves llaves) const noexcept
{
    return llaves == Llaves::dobladas || std::none_of(m_partes.begin(), m_partes.end(), [](const auto& una) {
        return una.second.find("};") != std::string::npos;
    });
}

std::string Cadena::texto(Llaves llaves) const
{
    std::string texto;
    for (const auto& [nombre, valor] : m_partes) {
        texto += nombre + "=";
        anexa_valor(texto, valor, llaves);
        texto += ';'; // behind the last one too: there are drivers to which "}" alone is no end
    }
    return texto;
}

} // namespace atipicos::odbc
