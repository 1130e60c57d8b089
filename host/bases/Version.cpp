#include "host/bases/Version.hpp"

#include "host/sql/Guiones.hpp"

namespace atipicos::bases {

namespace {

    constexpr std::int32_t otra_version = 1000;

    [[noreturn]] void falla(const std::string& lugar, const std::string& motivo, Donde donde)
    {
        throw Error(otra_version, "Orvalin:Bases", "«" + lugar + "»: " + motivo, donde);
    }

}

void comprueba_version(
    adodb::Connection& conexion, const std::string& tabla, const std::string& lugar, Donde donde)
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
    if (version != guiones::version)
        falla(lugar,
            "tiene la versión " + std::to_string(version) + " de las tablas y este programa espera la "
                + std::to_string(guiones::version) + ".",
            donde);
}

} // namespace atipicos::bases
