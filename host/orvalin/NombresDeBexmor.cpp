#include "host/orvalin/NombresDeBexmor.hpp"

namespace atipicos::orvalin {

std::vector<std::string> nombres_de_bexmor(adodb::Connection& bexmor, Donde donde)
{
    std::vector<std::string> nombres;
    const auto rs = bexmor.CreateRecordset();
    rs->Open("SELECT DISTINCT Valor FROM Parametros WHERE Clave ='ODBCBaseDatos'", adodb::CursorType::Static,
        adodb::LockType::ReadOnly, adodb::CommandType::Text, donde);
    for (; !rs->Eof(); rs->MoveNext(donde))
        nombres.push_back(CStr(rs->Fields("Valor", donde).Value(donde), donde));
    return nombres;
}

} // namespace atipicos::orvalin
