#include "engines/sqlite/Examen.hpp"

#include "engines/sql/Tokens.hpp"
#include "engines/sqlite/Instruccion.hpp"

namespace atipicos::sqlite {

std::vector<std::string> tablas(Sesion& sesion, Donde donde)
{
    std::vector<std::string> nombres;
    Instruccion consulta(sesion.base(),
        "SELECT name FROM sqlite_master WHERE type ='table' AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\'"
        " ORDER BY rowid",
        donde);
    while (consulta.avanza(donde))
        nombres.push_back(CStr(valor_de(consulta.get(), 0, Tipo::Segun, donde)));
    return nombres;
}

std::map<std::string, std::int64_t> filas_por_tabla(Sesion& sesion, Donde donde)
{
    std::map<std::string, std::int64_t> filas;
    for (const auto& tabla : tablas(sesion, donde)) {
        Instruccion consulta(sesion.base(), "SELECT count(*) FROM " + sql::entre_comillas(tabla), donde);
        consulta.avanza(donde);
        filas[tabla] = sqlite3_column_int64(consulta.get(), 0);
    }
    return filas;
}

void exige_integridad(Sesion& sesion, Donde donde)
{
    Instruccion consulta(sesion.base(), "PRAGMA integrity_check(1)", donde);
    consulta.avanza(donde);
    const auto dicho = CStr(valor_de(consulta.get(), 0, Tipo::Segun, donde));
    if (dicho != "ok")
        throw adodb::ErrorBaseDatos(adodb::Categoria::otra, "SQLite",
            "El fichero de la base de datos está dañado (" + dicho + ").", {}, donde);
}

} // namespace atipicos::sqlite
