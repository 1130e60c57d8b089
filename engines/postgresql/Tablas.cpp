#include "engines/postgresql/Tablas.hpp"

#include "engines/sql/Postgresql.hpp"
#include "engines/sql/Tokens.hpp"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace atipicos::postgresql {

namespace {

    std::string_view celda(const Respuesta& respuesta, int fila, int columna)
    {
        return PQgetvalue(respuesta.get(), fila, columna);
    }

    Oid numero(std::string_view texto) { return static_cast<Oid>(std::strtoul(texto.data(), nullptr, 10)); }

}

const char* const Tablas::consulta = R"(
        SELECT c.oid, quote_ident(n.nspname) || '.' || quote_ident(c.relname), c.relname, a.attname, a.attnum,
               CASE WHEN t.typtype = 'd' THEN t.typbasetype ELSE t.oid END, t.typname, a.attgenerated,
               COALESCE(a.attnum = ANY (i.indkey), false),
               CASE WHEN n.nspname = current_schema() THEN '' ELSE n.nspname || '.' END || c.relname,
               n.nspname || '.' || c.relname
        FROM pg_class c
             JOIN pg_namespace n ON n.oid = c.relnamespace
             JOIN pg_attribute a ON a.attrelid = c.oid AND a.attnum > 0 AND NOT a.attisdropped
             JOIN pg_type t ON t.oid = a.atttypid
             LEFT JOIN pg_index i ON i.indrelid = c.oid AND i.indisprimary
        WHERE c.relkind IN ('r', 'p', 'v') AND n.nspname = ANY (current_schemas(false) || 'dbo'::name)
        ORDER BY c.oid, a.attnum)";

void Tablas::lee(const Respuesta& respuesta, std::span<sql::Catalogo> catalogos)
{
    m_tablas.clear();
    m_numeros.clear();
    m_bits.clear();
    for (auto& catalogo : catalogos)
        catalogo.olvida_fechas();
    for (int i = 0; i < PQntuples(respuesta.get()); ++i) {
        const auto tabla = numero(celda(respuesta, i, 0));
        const auto columna = numero(celda(respuesta, i, 4));
        auto& con_clave = m_tablas[tabla];
        con_clave.nombre = celda(respuesta, i, 2);
        con_clave.calificado = celda(respuesta, i, 1);
        if (celda(respuesta, i, 8) == "t")
            con_clave.clave.emplace_back(celda(respuesta, i, 3));
        for (const int nombre : { 9, 10 })
            m_numeros.emplace(celda(respuesta, i, nombre), tabla);
        if (celda(respuesta, i, 6) == sql::tipo_bit_postgresql) {
            con_clave.bits.emplace(celda(respuesta, i, 3));
            m_bits.emplace(celda(respuesta, i, 3));
        }
        if (!es_fecha(numero(celda(respuesta, i, 5))))
            continue;
        const auto lugar = celda(respuesta, i, 7).empty() ? columna - 1 : sql::Catalogo::sin_lugar;
        for (auto& catalogo : catalogos)
            catalogo.agrega_fecha(celda(respuesta, i, 9), celda(respuesta, i, 3), lugar);
    }
}

const TablaConClave* Tablas::tabla(std::string_view nombre) const
{
    const auto lugar = m_numeros.find(nombre);
    return lugar == m_numeros.end() ? nullptr : &m_tablas.at(lugar->second);
}

bool Tablas::nombra_algun_bit(std::string_view texto) const
{
    const auto igual = [](char a, char b) { return sql::minuscula(a) == sql::minuscula(b); };
    return std::any_of(m_bits.begin(), m_bits.end(), [&](const std::string& nombre) {
        return std::search(texto.begin(), texto.end(), nombre.begin(), nombre.end(), igual) != texto.end();
    });
}

} // namespace atipicos::postgresql
