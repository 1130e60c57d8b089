#include "host/terminal/Tabla.hpp"

#include <algorithm>
#include <clocale>
#include <cwchar>
#include <ostream>
#include <utility>

namespace atipicos::app {

namespace {

    void escribe_celdas(std::ostream& salida, const std::vector<Tabla::Columna>& columnas,
        const std::vector<std::size_t>& anchos, const std::vector<std::string>& celdas)
    {
        std::string linea;
        for (std::size_t i = 0; i < columnas.size(); ++i) {
            const std::string hueco(anchos[i] - std::min(anchos[i], ancho(celdas[i])), ' ');
            linea += i == 0 ? "" : "  ";
            linea += columnas[i].alineacion == Alineacion::derecha ? hueco + celdas[i] : celdas[i] + hueco;
        }
        linea.erase(linea.find_last_not_of(' ') + 1);
        salida << linea << '\n';
    }

}

std::size_t ancho(std::string_view texto) noexcept
{
    if (std::all_of(texto.begin(), texto.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80U; }))
        return texto.size();
    static const locale_t utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (utf8 == nullptr) // letters, then: an accent written apart counts as one
        return static_cast<std::size_t>(std::count_if(texto.begin(), texto.end(),
            [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
    const locale_t anterior = uselocale(utf8);
    std::size_t lugares = 0;
    std::mbstate_t estado{};
    while (!texto.empty()) {
        wchar_t letra = 0;
        const std::size_t bytes = std::mbrtowc(&letra, texto.data(), texto.size(), &estado);
        const bool legible = bytes != 0 && bytes <= texto.size();
        lugares += legible ? static_cast<std::size_t>(std::max(wcwidth(letra), 0)) : 1;
        texto.remove_prefix(legible ? bytes : 1);
        if (!legible)
            estado = {};
    }
    uselocale(anterior);
    return lugares;
}

std::string en_una_linea(std::string texto)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(texto[i]); };
    const auto continua = [&](std::size_t i) { return i < texto.size() && (byte(i) & 0xC0U) == 0x80U; };
    for (std::size_t i = 0; i < texto.size(); ++i) {
        const unsigned c = byte(i);
        if (c < 0x20 || c == 0x7f) {
            texto[i] = ' ';
        } else if (c == 0xC2 && continua(i + 1) && byte(i + 1) < 0xA0) { // controls of eight bits
            texto.replace(i, 2, 1, ' ');
        } else if (c >= 0x80) {
            std::size_t mas = c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : c >= 0xC2 ? 1 : 0;
            if (mas == 0 || !continua(i + 1)) // no letter of UTF-8, and perhaps a control of a terminal
                texto[i] = '?';
            else
                for (; mas > 0 && continua(i + 1); --mas)
                    ++i;
        }
    }
    return texto;
}

Tabla::Tabla(std::vector<Columna> columnas)
    : m_columnas(std::move(columnas))
{
    for (const auto& columna : m_columnas)
        m_anchos.push_back(ancho(columna.titulo));
}

void Tabla::agrega(std::vector<std::string> celdas)
{
    celdas.resize(m_columnas.size());
    for (std::size_t i = 0; i < celdas.size(); ++i) {
        celdas[i] = en_una_linea(std::move(celdas[i]));
        m_anchos[i] = std::max(m_anchos[i], ancho(celdas[i]));
    }
    m_filas.push_back(std::move(celdas));
}

void Tabla::escribe_titulos(std::ostream& salida) const
{
    std::vector<std::string> titulos;
    std::vector<std::string> rayas;
    for (std::size_t i = 0; i < m_columnas.size(); ++i) {
        titulos.push_back(m_columnas[i].titulo);
        rayas.emplace_back(m_anchos[i], '-');
    }
    escribe_celdas(salida, m_columnas, m_anchos, titulos);
    escribe_celdas(salida, m_columnas, m_anchos, rayas);
}

void Tabla::escribe(std::ostream& salida) const
{
    escribe_titulos(salida);
    for (const auto& fila : m_filas)
        escribe_celdas(salida, m_columnas, m_anchos, fila);
}

void Tabla::vuelca(std::ostream& salida)
{
    if (!std::exchange(m_con_titulos, true))
        escribe_titulos(salida);
    for (const auto& fila : m_filas)
        escribe_celdas(salida, m_columnas, m_anchos, fila);
    m_filas.clear();
}

void Tabla::escribe_fila(std::ostream& salida, std::vector<std::string> celdas) const
{
    celdas.resize(m_columnas.size());
    for (auto& celda : celdas)
        celda = en_una_linea(std::move(celda));
    escribe_celdas(salida, m_columnas, m_anchos, celdas);
}

} // namespace atipicos::app
