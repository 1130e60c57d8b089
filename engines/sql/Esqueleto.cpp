#include "engines/sql/Esqueleto.hpp"

#include "engines/sql/Tokens.hpp"

#include <charconv>
#include <cstring>
#include <limits>

namespace atipicos::sql {

namespace {

    enum class Tipo : std::uint8_t {
        llano, ///< a letter or digit of a word
        blanco,
        signo, ///< part of nothing but itself, or of an operator
        cifra,
        punto,
        barra,
        menos,
        nombre, ///< begins a quoted name
        comilla,
        dudoso,
    };

    constexpr auto tipo_de_cada = [] {
        std::array<Tipo, 256> tabla{};
        tabla.fill(Tipo::dudoso);
        const auto pon = [&](std::string_view cuales, Tipo tipo) {
            for (const char c : cuales)
                tabla[static_cast<unsigned char>(c)] = tipo;
        };
        for (std::size_t c = 0x80; c < tabla.size(); ++c)
            tabla[c] = Tipo::llano; // of UTF-8
        pon("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_", Tipo::llano);
        pon(" \t\n\r\f\v", Tipo::blanco);
        pon("(),=<>!+*%|", Tipo::signo);
        pon("0123456789", Tipo::cifra);
        pon(".", Tipo::punto);
        pon("/", Tipo::barra);
        pon("-", Tipo::menos);
        pon("\"[", Tipo::nombre);
        pon("'", Tipo::comilla);
        return tabla;
    }();

    constexpr Tipo tipo_de(char c) noexcept { return tipo_de_cada[static_cast<unsigned char>(c)]; }
    constexpr bool se_pasa(Tipo tipo) noexcept { return tipo <= Tipo::signo; }
    constexpr bool es_de_palabra(char c) noexcept { return tipo_de(c) == Tipo::llano || es_cifra(c); }

    /// The marks of the classes, which no statement holds: control characters stand for something doubtful.
    constexpr char marca_de(Literal::Clase clase, Numeros numeros, bool negativo) noexcept
    {
        constexpr char primera = 1;
        constexpr char clases = 4;
        const auto vista = numeros == Numeros::segun_valor && clase != Literal::Clase::texto
            ? Literal::Clase::entero
            : clase;
        return static_cast<char>(primera + static_cast<char>(vista) + (negativo ? clases : 0));
    }

    /// Whether a decimal number is the same double however it is computed: the quotient of two whole numbers
    /// that a double holds exactly, and too far from the middle between two doubles for an intermediate
    /// result of more bits to be rounded to it (5^4 < 2^11).
    constexpr bool es_el_mismo_doble(std::size_t cifras, std::size_t decimales) noexcept
    {
        return cifras <= std::size_t{ std::numeric_limits<double>::digits10 } && decimales <= 4;
    }

    constexpr std::size_t mas_cifras_de_entero = std::numeric_limits<std::int64_t>::digits10;
    constexpr std::size_t mas_cifras_de_decimal = 38;

    Literal::Clase clase_de_entero(std::string_view numero) noexcept
    {
        constexpr std::size_t seguras = std::numeric_limits<std::int32_t>::digits10;
        if (numero.size() <= seguras)
            return Literal::Clase::entero;
        std::int32_t valor = 0;
        const auto leido = std::from_chars(numero.data(), numero.data() + numero.size(), valor);
        return leido.ec == std::errc() ? Literal::Clase::entero : Literal::Clase::entero_largo;
    }

}

bool Esqueleto::lee(std::string_view sql) noexcept
{
    m_sql = sql;
    m_lugar = 0;
    m_copiado = 0;
    m_escrito = 0;
    m_cuantos = 0;
    if (sql.size() > maximo_de_texto
        || sql.find('\0') != std::string_view::npos) // no database takes it in a text
        return false;
    for (auto i = m_lugar; i < sql.size(); i = m_lugar) {
        while (i < sql.size() && se_pasa(tipo_de(sql[i])))
            ++i;
        m_lugar = i;
        if (i < sql.size() && !lee_pieza())
            return false;
    }
    copia(m_sql.size());
    return true;
}

/// What stands before `hasta` and not yet in the skeleton is part of it.
void Esqueleto::copia(std::size_t hasta) noexcept
{
    const auto cuantos = hasta - m_copiado;
    std::memcpy(m_texto.data() + m_escrito, m_sql.data() + m_copiado, cuantos);
    m_escrito += cuantos;
}

/// What is more than words, blanks and simple signs.
bool Esqueleto::lee_pieza() noexcept
{
    const char c = m_sql[m_lugar];
    const char siguiente = en(m_lugar + 1);
    switch (tipo_de(c)) {
    case Tipo::cifra:
        if (!es_de_palabra(anterior()))
            return lee_numero(m_lugar);
        ++m_lugar;
        return true;
    case Tipo::punto:
        ++m_lugar;
        return !es_cifra(siguiente);
    case Tipo::barra:
        ++m_lugar;
        return siguiente != '*';
    case Tipo::menos:
        return lee_menos(siguiente);
    case Tipo::nombre:
        return lee_nombre(c == '[' ? ']' : c);
    case Tipo::comilla:
        return lee_texto();
    default:
        return false;
    }
}

/// A minus sign belongs to the number behind it where nothing can be taken from anything.
bool Esqueleto::lee_menos(char siguiente) noexcept
{
    if (siguiente == '-')
        return false;
    if (es_cifra(siguiente)) {
        auto i = m_lugar;
        while (i > 0 && tipo_de(m_sql[i - 1]) == Tipo::blanco)
            --i;
        constexpr std::string_view comienzos = "(,=<>";
        if (i > 0 && comienzos.find(m_sql[i - 1]) != std::string_view::npos)
            return lee_numero(m_lugar);
    }
    ++m_lugar;
    return true;
}

bool Esqueleto::lee_nombre(char cierre) noexcept
{
    auto fin = m_lugar;
    do {
        fin = m_sql.find(cierre, fin + 1);
        if (fin == std::string_view::npos)
            return false;
        ++fin;
    } while (en(fin) == cierre);
    m_lugar = fin;
    return true;
}

/// Not behind a word or a name: N'…', E'…', x'…'.
bool Esqueleto::lee_texto() noexcept
{
    const auto inicio = m_lugar;
    const char antes = anterior();
    if (es_de_palabra(antes) || antes == '"' || antes == ']')
        return false;
    auto fin = inicio;
    bool con_dobles = false;
    while (true) {
        fin = m_sql.find('\'', fin + 1);
        if (fin == std::string_view::npos)
            return false;
        ++fin;
        if (en(fin) != '\'')
            break;
        con_dobles = true;
    }
    m_lugar = fin;
    return anota(inicio, Literal::Clase::texto, con_dobles);
}

bool Esqueleto::lee_numero(std::size_t inicio) noexcept
{
    const bool negativo = m_sql[inicio] == '-';
    const auto primera = inicio + (negativo ? 1U : 0U);
    auto fin = primera;
    while (es_cifra(en(fin)))
        ++fin;
    const auto enteras = fin - primera;
    std::size_t decimales = 0;
    if (en(fin) == '.') {
        while (es_cifra(en(++fin)))
            ++decimales;
        if (decimales == 0)
            return false;
    }
    m_lugar = fin;
    const bool exacto = decimales == 0   ? enteras <= mas_cifras_de_entero
        : m_numeros == Numeros::con_tipo ? enteras + decimales <= mas_cifras_de_decimal
                                         : es_el_mismo_doble(enteras + decimales, decimales);
    if (exacto) {
        const auto numero = m_sql.substr(inicio, fin - inicio);
        return anota(inicio, decimales > 0 ? Literal::Clase::decimal : clase_de_entero(numero), false);
    }
    return acaba_aqui();
}

/// Whether a literal that ends here ends here for every database: by a sign that is part of nothing else.
bool Esqueleto::acaba_aqui() const noexcept
{
    if (m_lugar == m_sql.size())
        return true;
    const auto tipo = tipo_de(m_sql[m_lugar]);
    return tipo == Tipo::blanco || tipo == Tipo::signo || tipo == Tipo::barra || tipo == Tipo::menos;
}

bool Esqueleto::anota(std::size_t inicio, Literal::Clase clase, bool con_dobles) noexcept
{
    if (m_cuantos == maximo_de_literales || !acaba_aqui())
        return false;
    m_literales[m_cuantos++] = { { m_sql.data() + inicio, m_lugar - inicio }, clase, con_dobles };
    copia(inicio);
    m_copiado = m_lugar;
    m_texto[m_escrito++] = marca_de(clase, m_numeros, m_sql[inicio] == '-');
    return true;
}

} // namespace atipicos::sql
