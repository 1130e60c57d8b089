#include "engines/sql/Tokens.hpp"

#include <algorithm>
#include <array>

namespace atipicos::sql {

namespace {

    bool es_blanco(char c)
    {
        return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
    }
    bool es_letra(char c) // bytes of UTF-8 letters belong to names as well
    {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '@' || c == '#'
            || c == '$' || static_cast<unsigned char>(c) >= 0x80;
    }

    template <class Condicion> std::size_t mientras(std::string_view sql, std::size_t i, Condicion condicion)
    {
        while (i < sql.size() && condicion(sql[i]))
            ++i;
        return i;
    }

    /// The end of what begins at `i` with a quote; a closing quote that is doubled does not end it.
    std::size_t fin_entre_comillas(std::string_view sql, std::size_t i, char cierre)
    {
        for (++i; i < sql.size(); ++i) {
            if (sql[i] != cierre)
                continue;
            if (i + 1 >= sql.size() || sql[i + 1] != cierre)
                return i + 1;
            ++i;
        }
        return sql.size();
    }

    std::size_t fin_comentario(std::string_view sql, std::size_t i)
    {
        if (sql[i] == '-')
            return std::min(sql.find('\n', i), sql.size());
        const auto cierre = sql.find("*/", i + 2);
        return cierre == std::string_view::npos ? sql.size() : cierre + 2;
    }

    std::size_t fin_numero(std::string_view sql, std::size_t i)
    {
        const auto fin = mientras(sql, i, [](char c) { return es_cifra(c) || c == '.'; });
        if (fin + 1 >= sql.size() || (sql[fin] != 'e' && sql[fin] != 'E'))
            return fin;
        const auto exponente = fin + (sql[fin + 1] == '-' || sql[fin + 1] == '+' ? 2 : 1);
        if (exponente >= sql.size() || !es_cifra(sql[exponente]))
            return fin;
        return mientras(sql, exponente, es_cifra);
    }

    bool es_operador_doble(std::string_view par)
    {
        if (par.size() < 2)
            return false;
        const char a = par[0];
        const char b = par[1];
        return b == '=' ? a == '<' || a == '>' || a == '!' || a == '='
                        : (a == '<' && b == '>') || (a == '|' && b == '|');
    }

    struct Fin {
        Clase clase;
        std::size_t donde;
    };

    Fin clasifica(std::string_view sql, std::size_t i)
    {
        const char c = sql[i];
        if (es_letra(c))
            return { Clase::palabra, mientras(sql, i, [](char d) { return es_letra(d) || es_cifra(d); }) };
        if (es_blanco(c))
            return { Clase::blanco, mientras(sql, i, es_blanco) };
        if (c == '\'')
            return { Clase::texto, fin_entre_comillas(sql, i, c) };
        if (c == '"')
            return { Clase::nombre, fin_entre_comillas(sql, i, c) };
        if (c == '[')
            return { Clase::nombre, fin_entre_comillas(sql, i, ']') };
        const auto par = sql.substr(i, 2);
        if (par == "--" || par == "/*")
            return { Clase::comentario, fin_comentario(sql, i) };
        if (es_cifra(c) || (c == '.' && par.size() == 2 && es_cifra(par[1])))
            return { Clase::numero, fin_numero(sql, i) };
        return { Clase::simbolo, i + (es_operador_doble(par) ? 2U : 1U) };
    }

    /// Takes off the front of `sql` what comes before the first keyword, and that keyword, which it gives
    /// back.
    std::string_view toma_palabra(std::string_view& sql)
    {
        while (!sql.empty()) {
            const auto [clase, fin] = clasifica(sql, 0);
            const auto texto = sql.substr(0, fin);
            sql.remove_prefix(fin);
            if (clase != Clase::blanco && clase != Clase::comentario)
                return clase == Clase::palabra ? texto : std::string_view();
        }
        return {};
    }

}

std::vector<Token> separa(std::string_view sql)
{
    std::vector<Token> tokens;
    tokens.reserve(sql.size() / 4 + 4);
    for (std::size_t i = 0; i < sql.size();) {
        const auto fin = clasifica(sql, i);
        tokens.push_back({ fin.clase, sql.substr(i, fin.donde - i) });
        i = fin.donde;
    }
    return tokens;
}

std::string entre_comillas(std::string_view nombre)
{
    std::string texto = "\"";
    for (const char c : nombre) {
        texto += c;
        if (c == '"')
            texto += c;
    }
    return texto + "\"";
}

std::string_view primera_palabra(std::string_view sql) noexcept { return toma_palabra(sql); }

bool crea_disparador(std::string_view sql) noexcept
{
    if (!iguales(toma_palabra(sql), "CREATE"))
        return false;
    auto palabra = toma_palabra(sql);
    if (iguales(palabra, "TEMP") || iguales(palabra, "TEMPORARY"))
        palabra = toma_palabra(sql);
    return iguales(palabra, "TRIGGER");
}

bool no_cambia_nada(std::string_view sql) noexcept
{
    const auto primera = primera_palabra(sql);
    return iguales(primera, "SELECT") || iguales(primera, "BEGIN");
}

bool cambia_el_esquema(std::string_view sql) noexcept
{
    static constexpr std::array<std::string_view, 5> palabras{ "CREATE", "ALTER", "DROP", "ATTACH",
        "DETACH" };
    const auto primera = primera_palabra(sql);
    return std::any_of(palabras.begin(), palabras.end(),
        [&](std::string_view palabra) { return iguales(primera, palabra); });
}

} // namespace atipicos::sql
