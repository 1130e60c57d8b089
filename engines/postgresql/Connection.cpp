#include "engines/postgresql/Connection.hpp"

#include "engines/postgresql/Recordset.hpp"
#include "engines/sql/Postgresql.hpp"
#include "engines/sql/Tokens.hpp"

#include <algorithm>
#include <cstdlib>

namespace atipicos::postgresql {

namespace {

    using adodb::Categoria;
    using adodb::ErrorBaseDatos;

    constexpr auto fuente = "PostgreSQL";
    constexpr auto catalogo = R"(
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

    std::string_view celda(const Respuesta& respuesta, int fila, int columna)
    {
        return PQgetvalue(respuesta.get(), fila, columna);
    }

    Oid numero(std::string_view texto) { return static_cast<Oid>(std::strtoul(texto.data(), nullptr, 10)); }

    constexpr std::string_view bloqueando = "\nFOR UPDATE";

    bool solo_lee(std::string_view sql)
    {
        return sql::iguales(sql::primera_palabra(sql), "SELECT") && !sql.ends_with(bloqueando);
    }

}

Connection::Connection(const Opciones& opciones, Donde donde)
    : m_enlace(opciones, donde)
    , m_catalogo(sql::dialecto_postgresql())
{
    for (const auto& base : opciones.bases)
        m_catalogo.agrega_base(base, "dbo.");
}

std::shared_ptr<Connection> Connection::Abrir(const Opciones& opciones, Donde donde)
{
    return std::shared_ptr<Connection>(new Connection(opciones, donde));
}

void Connection::Execute(const std::string& sql, std::int32_t* afectadas, adodb::CommandType, Donde donde)
{
    const auto respuesta = pide(sql, donde);
    if (afectadas != nullptr)
        *afectadas = std::atoi(PQcmdTuples(respuesta.get()));
    m_vigencia.ejecutada(sql);
}

Respuesta Connection::pide(const std::string& sql, Donde donde)
{
    return ejecuta(reescribe(sql, donde), {}, donde);
}

Respuesta Connection::pide_bloqueando(const std::string& sql, Donde donde)
{
    const auto reescrita = reescribe(sql, donde).append(bloqueando);
    auto respuesta = ejecuta(reescrita, {}, donde);
    if (PQntuples(respuesta.get()) > 0)
        return respuesta;
    const Variant clave(sql);
    static_cast<void>(
        ejecuta("SELECT pg_advisory_xact_lock(hashtextextended($1, 0))", std::span(&clave, 1), donde));
    return ejecuta(reescrita, {}, donde);
}

Respuesta Connection::ejecuta(const std::string& sql, std::span<const Variant> valores, Donde donde)
{
    asegura_enlace(donde);
    std::vector<Texto> textos; // before anything is sent: a value may have no text
    for (const auto& valor : valores)
        textos.push_back(texto_de(valor, donde));
    const Orden orden{ sql.c_str(), textos };
    return m_en_transaccion ? ejecuta_protegida(orden, donde) : ejecuta_fuera({ orden }, donde);
}

/// A transaction always stands behind the savepoint `s`: whatever fails goes back to it, and what has changed
/// or locked something moves it along in the same exchange.
Respuesta Connection::ejecuta_protegida(const Orden& orden, Donde donde)
{
    auto respuestas = solo_lee(orden.sql)
        ? m_enlace.intercambia({ orden }, donde)
        : m_enlace.intercambia({ orden, suelta_punto, guarda_punto }, donde);
    const auto fallida = std::find_if(respuestas.begin(), respuestas.end(), es_error);
    if (fallida != respuestas.end()) {
        static_cast<void>(m_enlace.intercambia({ { "ROLLBACK TO s" } }, donde));
        throw error_de(*fallida, orden.sql, donde);
    }
    return std::move(respuestas.front());
}

Respuesta Connection::ejecuta_fuera(std::initializer_list<Orden> ordenes, Donde donde)
{
    const auto* const primera = ordenes.begin()->sql;
    std::vector<Respuesta> respuestas;
    try {
        respuestas = m_enlace.intercambia(ordenes, donde);
    } catch (const ErrorBaseDatos&) {
        // A line that went dead while it was idle is no news to anybody: what has changed nothing is
        // repeated.
        if (!sql::no_cambia_nada(primera))
            throw;
        asegura_enlace(donde);
        respuestas = m_enlace.intercambia(ordenes, donde);
    }
    if (es_error(respuestas.front()))
        throw error_de(respuestas.front(), primera, donde);
    return std::move(respuestas.front());
}

void Connection::BeginTrans(Donde donde)
{
    if (m_en_transaccion)
        throw ErrorBaseDatos(Categoria::instruccion, fuente,
            "Ya hay una transacción abierta en esta conexión.", "BEGIN", donde);
    asegura_enlace(donde);
    static_cast<void>(ejecuta_fuera({ { "BEGIN" }, guarda_punto }, donde));
    m_en_transaccion = true;
}

void Connection::CommitTrans(Donde donde)
{
    comprueba_transaccion("COMMIT", donde);
    asegura_enlace(donde);
    std::vector<Respuesta> respuestas;
    try {
        respuestas = m_enlace.intercambia({ { "COMMIT" } }, donde);
    } catch (const ErrorBaseDatos& error) {
        throw ErrorBaseDatos(error.categoria(), fuente,
            error.descripcion() + " No se sabe si los datos llegaron a guardarse: compruébelo.", "COMMIT",
            donde);
    }
    if (es_error(respuestas[0]))
        throw error_de(respuestas[0], "COMMIT", donde);
    m_en_transaccion = false;
    m_vigencia.confirmada();
}

void Connection::RollbackTrans(Donde donde)
{
    comprueba_transaccion("ROLLBACK", donde);
    m_en_transaccion = false;
    m_vigencia.deshecha();
    if (!m_enlace.perdido() && PQtransactionStatus(base()) != PQTRANS_IDLE)
        static_cast<void>(m_enlace.intercambia({ { "ROLLBACK" } }, donde));
}

void Connection::comprueba_transaccion(const char* instruccion, Donde donde) const
{
    if (!m_en_transaccion)
        throw ErrorBaseDatos(Categoria::instruccion, fuente,
            "No hay ninguna transacción abierta en esta conexión.", instruccion, donde);
}

std::unique_ptr<adodb::Recordset> Connection::CreateRecordset() { return std::make_unique<Recordset>(*this); }

std::string Connection::reescribe(const std::string& sql, Donde donde)
{
    if (sql.find('\0') != std::string::npos)
        throw ErrorBaseDatos(Categoria::instruccion, fuente,
            "La instrucción contiene un carácter nulo, que la base de datos no admite.", sql, donde);
    if (!m_vigencia.vale())
        lee_catalogo(donde);
    return sql::reescribe(sql, m_catalogo, donde);
}

void Connection::lee_catalogo(Donde donde)
{
    const auto leido = ejecuta(catalogo, {}, donde);
    m_catalogo.olvida_fechas();
    m_tablas.clear();
    m_bits.clear();
    for (int i = 0; i < PQntuples(leido.get()); ++i) {
        const auto tabla = numero(celda(leido, i, 0));
        const auto columna = numero(celda(leido, i, 4));
        auto& con_clave = m_tablas[tabla];
        con_clave.nombre = celda(leido, i, 2);
        con_clave.calificado = celda(leido, i, 1);
        if (celda(leido, i, 8) == "t")
            con_clave.clave.emplace_back(celda(leido, i, 3));
        if (celda(leido, i, 6) == sql::tipo_bit_postgresql)
            m_bits.emplace(tabla, static_cast<int>(columna));
        if (es_fecha(numero(celda(leido, i, 5))))
            m_catalogo.agrega_fecha(celda(leido, i, 9), celda(leido, i, 3),
                celda(leido, i, 7).empty() ? columna - 1 : sql::Catalogo::sin_lugar);
    }
    m_vigencia.leido();
}

void Connection::asegura_enlace(Donde donde)
{
    if (!m_enlace.perdido())
        return;
    if (m_en_transaccion)
        throw ErrorBaseDatos(Categoria::conexion, fuente,
            "La transacción se ha perdido con la conexión: sólo se puede deshacer.", {}, donde);
    m_enlace.reanuda(donde);
    m_vigencia.caduca();
}

Tipo Connection::tipo_de_columna(const PGresult* respuesta, int columna) const
{
    const auto tipo = tipo_de(PQftype(respuesta, columna));
    if (tipo == Tipo::Entero
        && m_bits.contains({ PQftable(respuesta, columna), PQftablecol(respuesta, columna) }))
        return Tipo::Bit;
    return tipo;
}

const TablaConClave* Connection::tabla(Oid numero) const
{
    const auto lugar = m_tablas.find(numero);
    return lugar == m_tablas.end() ? nullptr : &lugar->second;
}

} // namespace atipicos::postgresql
