#include "engines/sqlite/Traslado.hpp"

#include "engines/sql/Vista.hpp"
#include "engines/sqlite/Examen.hpp"
#include "engines/sqlite/Instruccion.hpp"

namespace atipicos::sqlite {

namespace {

    using sql::entre_comillas;

    /// While it lives no trigger of the session runs: what triggers did when the rows were written is in
    /// them.
    class SinDisparadores {
    public:
        explicit SinDisparadores(sqlite3* base)
            : m_base(base)
        {
            sqlite3_db_config(m_base, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
        }
        SinDisparadores(const SinDisparadores&) = delete;
        SinDisparadores& operator=(const SinDisparadores&) = delete;
        ~SinDisparadores() { sqlite3_db_config(m_base, SQLITE_DBCONFIG_ENABLE_TRIGGER, 1, nullptr); }

    private:
        sqlite3* m_base;
    };

    /// `CREATE UNIQUE INDEX i ON t (c)` with a prefix before the name.
    std::string con_prefijo(const std::string& indice, const std::string& prefijo)
    {
        auto tokens = sql::separa(indice);
        const sql::Vista vista(tokens);
        std::size_t i = 0;
        while (i < vista.size() && !vista.es(i, "INDEX"))
            ++i;
        const auto nombre = entre_comillas(prefijo + std::string(vista.nombre(i + 1)));
        if (i + 1 < vista.size())
            vista.cambia(i + 1, nombre);
        std::string texto;
        for (const auto& token : tokens)
            texto += token.texto;
        return texto;
    }

    void crea_estructura(Sesion& origen, Sesion& destino, const std::string& prefijo, Donde donde)
    {
        // What was made for a table by SQLite itself has no text. Tables come before what is made on them.
        Instruccion consulta(origen.base(),
            "SELECT type, sql FROM sqlite_master WHERE sql IS NOT NULL AND name NOT LIKE 'sqlite\\_%' ESCAPE"
            " '\\' ORDER BY type <> 'table', rowid",
            donde);
        while (consulta.avanza(donde)) {
            const auto clase = CStr(valor_de(consulta.get(), 0, Tipo::Segun, donde));
            const auto texto = CStr(valor_de(consulta.get(), 1, Tipo::Segun, donde));
            destino.ejecuta(clase == "index" ? con_prefijo(texto, prefijo) : texto, nullptr, donde);
        }
        if (prefijo.empty())
            return;
        for (const auto& tabla : tablas(origen, donde)) // renames it in whatever names it, too
            destino.ejecuta(
                "ALTER TABLE " + entre_comillas(tabla) + " RENAME TO " + entre_comillas(prefijo + tabla),
                nullptr, donde);
    }

    /// The columns of a table that hold something of their own.
    std::vector<std::string> columnas(Sesion& sesion, const std::string& tabla, Donde donde)
    {
        std::vector<std::string> nombres;
        Instruccion consulta(
            sesion.base(), "SELECT name FROM pragma_table_xinfo(?) WHERE hidden = 0 ORDER BY cid", donde);
        consulta.liga(1, tabla, donde);
        while (consulta.avanza(donde))
            nombres.push_back(entre_comillas(CStr(valor_de(consulta.get(), 0, Tipo::Segun, donde))));
        return nombres;
    }

    void llena(Sesion& origen, const std::string& tabla, Sesion& destino, const std::string& en,
        const std::function<void()>& cada_fila, Donde donde)
    {
        std::string lista;
        std::string marcas;
        const auto cuales = columnas(origen, tabla, donde);
        for (const auto& columna : cuales) {
            lista += (lista.empty() ? "" : ", ") + columna;
            marcas += marcas.empty() ? "?" : ", ?";
        }
        Instruccion lectura(origen.base(), "SELECT " + lista + " FROM " + entre_comillas(tabla), donde);
        Instruccion escritura(destino.base(),
            "INSERT INTO " + entre_comillas(en) + " (" + lista + ") VALUES (" + marcas + ")", donde);
        const auto cuantas = static_cast<int>(cuales.size());
        while (lectura.avanza(donde)) {
            for (int i = 0; i < cuantas; ++i)
                sqlite3_bind_value(escritura.get(), i + 1, sqlite3_column_value(lectura.get(), i));
            escritura.avanza(donde);
            sqlite3_reset(escritura.get());
            cada_fila();
        }
    }

}

void traslada(Sesion& origen, Sesion& destino, const std::string& prefijo,
    const std::function<void()>& cada_fila, Donde donde)
{
    crea_estructura(origen, destino, prefijo, donde);
    const SinDisparadores sin_disparadores(destino.base());
    for (const auto& tabla : tablas(origen, donde))
        llena(origen, tabla, destino, prefijo + tabla, cada_fila, donde);
}

} // namespace atipicos::sqlite
