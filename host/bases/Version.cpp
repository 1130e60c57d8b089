#include "host/bases/Version.hpp"

#include "host/bases/Fallo.hpp"

namespace atipicos::bases {

std::int32_t comprueba_version(adodb::Connection& conexion, const std::string& tabla,
    const std::string& lugar, Donde donde, std::int32_t ultima)
{
    const auto rs = conexion.CreateRecordset();
    try {
        rs->Open("SELECT Version FROM " + tabla, adodb::CursorType::Static, adodb::LockType::ReadOnly,
            adodb::CommandType::Text, donde);
    } catch (const adodb::ErrorBaseDatos& error) {
        if (error.categoria() != adodb::Categoria::instruccion)
            throw;
        falla(lugar, "no es una base de datos de este programa.", donde);
    }
    const auto version = rs->Eof() ? 0 : CLng(rs->Fields("Version", donde).Value(donde), donde);
    rs->Close(donde);
    if (version < 1)
        falla(lugar, "no es una base de datos de este programa.", donde);
    if (version > ultima)
        falla(lugar,
            "tiene la versión " + std::to_string(version) + " de las tablas y este programa llega hasta la "
                + std::to_string(ultima) + ". Use la última versión del programa.",
            donde);
    return version;
}

} // namespace atipicos::bases
