#include "engines/postgresql/Tablas.hpp"

#include "engines/sql/Postgresql.hpp"

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
               CASE WHEN n.nspname = current_schema() THEN '' ELSE n.nspname || '.' END || c.relname
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
        if (celda(respuesta, i, 6) == sql::tipo_bit_postgresql)
            m_bits.emplace(tabla, static_cast<int>(columna));
        if (!es_fecha(numero(celda(respuesta, i, 5))))
            continue;
        const auto lugar = celda(respuesta, i, 7).empty() ? columna - 1 : sql::Catalogo::sin_lugar;
        for (auto& catalogo : catalogos)
            catalogo.agrega_fecha(celda(respuesta, i, 9), celda(respuesta, i, 3), lugar);
    }
}

Tipo Tablas::tipo_de_columna(const PGresult* respuesta, int columna) const
{
    const auto tipo = tipo_de(PQftype(respuesta, columna));
    if (tipo == Tipo::Entero
        && m_bits.contains({ PQftable(respuesta, columna), PQftablecol(respuesta, columna) }))
        return Tipo::Bit;
    return tipo;
}

const TablaConClave* Tablas::tabla(Oid numero) const
{
    const auto lugar = m_tablas.find(numero);
    return lugar == m_tablas.end() ? nullptr : &lugar->second;
}

} // namespace atipicos::postgresql
