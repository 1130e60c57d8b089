#include "engines/sql/Catalogo.hpp"

#include "engines/sql/Tokens.hpp"

#include <algorithm>

namespace atipicos::sql {

bool MenorSinCaja::operator()(std::string_view a, std::string_view b) const noexcept
{
    return std::lexicographical_compare(
        a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return minuscula(x) < minuscula(y); });
}

void Catalogo::agrega_fecha(std::string_view tabla, std::string_view columna, std::size_t lugar)
{
    m_fechas[std::string(tabla)].insert_or_assign(std::string(columna), lugar);
}

void Catalogo::agrega_base(std::string_view nombre, std::string_view prefijo)
{
    m_bases.insert_or_assign(std::string(nombre), prefijo);
}

bool Catalogo::es_fecha(std::string_view tabla, std::string_view columna) const
{
    const auto lugar = m_fechas.find(tabla);
    return lugar != m_fechas.end() && lugar->second.contains(columna);
}

std::vector<bool> Catalogo::fechas_por_lugar(std::string_view tabla) const
{
    std::vector<bool> son_fechas;
    const auto columnas = m_fechas.find(tabla);
    if (columnas == m_fechas.end())
        return son_fechas;
    for (const auto& [columna, lugar] : columnas->second) {
        if (lugar == sin_lugar)
            continue;
        if (son_fechas.size() <= lugar)
            son_fechas.resize(lugar + 1);
        son_fechas[lugar] = true;
    }
    return son_fechas;
}

const std::string* Catalogo::base(std::string_view nombre) const
{
    const auto lugar = m_bases.find(nombre);
    return lugar == m_bases.end() ? nullptr : &lugar->second;
}

} // namespace atipicos::sql
