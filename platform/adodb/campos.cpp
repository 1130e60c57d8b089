#include "platform/adodb/campos.hpp"

namespace atipicos::adodb {

std::unique_ptr<Recordset> consulta(Connection& conexion, const std::string& sql, Donde donde)
{
    auto rs = conexion.CreateRecordset();
    rs->Open(sql, CursorType::Static, LockType::ReadOnly, CommandType::Text, donde);
    return rs;
}

std::unique_ptr<Recordset> flujo(Connection& conexion, const std::string& sql, Donde donde)
{
    auto rs = conexion.CreateRecordset();
    rs->Open(sql, CursorType::ForwardOnly, LockType::ReadOnly, CommandType::Text, donde);
    return rs;
}

std::string texto(Recordset& rs, std::string_view campo, Donde donde)
{
    const Variant valor = rs.Fields(campo, donde).Value(donde);
    return valor.es_nulo() ? std::string() : CStr(valor, donde);
}

std::string nombre(Recordset& rs, std::string_view campo, Donde donde)
{
    return sin_apostrofos(texto(rs, campo, donde));
}

std::int16_t entero(Recordset& rs, std::string_view campo, Donde donde)
{
    const Variant valor = rs.Fields(campo, donde).Value(donde);
    return valor.es_nulo() ? std::int16_t{ 0 } : CInt(valor, donde);
}

std::string sin_apostrofos(std::string texto)
{
    static constexpr std::string_view acento = "´";
    for (auto p = texto.find('\''); p != std::string::npos; p = texto.find('\'', p + acento.size()))
        texto.replace(p, 1, acento);
    return texto;
}

} // namespace atipicos::adodb
