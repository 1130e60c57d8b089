#include "host/bases/Danos.hpp"

#include "engines/odbc/Connection.hpp"
#include "engines/sqlite/Connection.hpp"

namespace atipicos::bases {

namespace {

    bool es_un_fichero(const adodb::Connection& conexion)
    {
        if (const auto* por_odbc = dynamic_cast<const odbc::Connection*>(&conexion))
            return por_odbc->servidor().nombre == odbc::nombre_sqlite;
        return dynamic_cast<const sqlite::Connection*>(&conexion) != nullptr;
    }

    template <class Cada> void recorre(adodb::Connection& conexion, const std::string& sql, Cada cada)
    {
        const auto rs = conexion.CreateRecordset();
        for (rs->Open(sql, adodb::CursorType::ForwardOnly, adodb::LockType::ReadOnly); !rs->Eof();
             rs->MoveNext())
            cada([&](std::size_t columna) { return CStr(rs->Fields(columna).Value()); });
    }

}

std::vector<std::string> danos(const Bases& bases)
{
    std::vector<std::string> todos;
    if (!es_un_fichero(*bases.orvalin))
        return todos;
    recorre(*bases.orvalin, "PRAGMA integrity_check", [&](const auto& celda) {
        if (const auto dicho = celda(0); dicho != "ok")
            todos.push_back("El fichero de la base de datos está dañado: " + dicho);
    });
    recorre(*bases.orvalin,
        "SELECT \"table\", parent, COUNT(*) FROM pragma_foreign_key_check GROUP BY \"table\", parent",
        [&](const auto& celda) {
            todos.push_back("La tabla " + celda(0) + " nombra filas de " + celda(1)
                + " que no existen: " + celda(2) + ".");
        });
    return todos;
}

} // namespace atipicos::bases
