#include "tests/integracion/Volcado.hpp"

#include "engines/sql/Vista.hpp"
#include "runtime/Variant.hpp"

#include <algorithm>

namespace atipicos::pruebas {

namespace {

    std::vector<std::string> tablas(std::string_view guion)
    {
        std::vector<std::string> nombres;
        auto tokens = sql::separa(guion);
        const sql::Vista vista(tokens);
        for (std::size_t i = 0; i < vista.size(); ++i)
            if (vista.es(i, "CREATE") && vista.es(i + 1, "TABLE"))
                nombres.emplace_back(vista.nombre(i + 2));
        return nombres;
    }

    std::string fila(adodb::Recordset& rs)
    {
        std::string texto;
        for (std::size_t i = 0; i < rs.Count(); ++i) {
            auto& campo = rs.Fields(i);
            for (const char c : campo.Name())
                texto += sql::minuscula(c);
            const Variant valor = campo.Value();
            texto += "=" + (valor.es_nulo() ? "NULL" : "«" + CStr(valor) + "»") + " ";
        }
        return texto;
    }

}

std::vector<std::string> vuelca(adodb::Connection& conexion, std::string_view guion)
{
    std::vector<std::string> volcado;
    for (const auto& tabla : tablas(guion)) {
        std::vector<std::string> filas;
        const auto rs = conexion.CreateRecordset();
        rs->Open("SELECT * FROM " + tabla, adodb::CursorType::ForwardOnly, adodb::LockType::ReadOnly);
        for (; !rs->Eof(); rs->MoveNext())
            filas.push_back(fila(*rs));
        std::sort(filas.begin(), filas.end());
        for (const auto& una : filas)
            volcado.push_back(tabla + ": " + una);
    }
    return volcado;
}

} // namespace atipicos::pruebas
