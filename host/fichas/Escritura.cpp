#include "host/fichas/Escritura.hpp"

#include "host/sql/Anchos.hpp"
#include "host/sql/Guiones.hpp"
#include "host/sql/Literal.hpp"
#include "platform/adodb/campos.hpp"

#include <limits>

namespace atipicos::app {

void en_una_transaccion(const bases::Bases& bases, const std::function<void()>& que)
{
    bases.orvalin->BeginTrans();
    bases.bexmor->BeginTrans();
    try {
        que();
        bases.orvalin->CommitTrans();
        bases.bexmor->CommitTrans();
    } catch (...) {
        bases.bexmor->RollbackTrans();
        bases.orvalin->RollbackTrans();
        throw;
    }
}

std::string en_instruccion(const std::string& texto) { return sql::literal(adodb::sin_apostrofos(texto)); }

void exige_que_quepa(const std::string& texto, const SitioDeFicha& sitio)
{
    if (sitio.exigido && texto.empty())
        rehusa_ficha("Falta " + std::string(sitio.que) + ".");
    const auto caben = sql::ancho_de_texto(guiones::orvalin(), sitio.tabla, sitio.columna) - sitio.reservadas;
    if (const auto letras = sql::letras(texto); letras > caben)
        rehusa_ficha("No cabe " + std::string(sitio.que) + ": son " + std::to_string(letras)
            + " letras y caben " + std::to_string(caben) + ".");
}

std::int32_t codigo_libre(adodb::Connection& orvalin, const char* tabla, std::int16_t empresa)
{
    const auto rs = adodb::consulta(orvalin,
        "SELECT MAX(Codigo) AS Codigo FROM " + std::string(tabla)
            + " WHERE Cod_Empresa =" + std::to_string(empresa));
    const Variant ultimo = rs->Fields("Codigo").Value();
    if (ultimo.es_nulo())
        return 1;
    const auto codigo = CLng(ultimo);
    if (codigo == std::numeric_limits<std::int32_t>::max())
        rehusa_ficha("No queda ningún código por encima del último: dé uno que esté libre.");
    return codigo + 1;
}

void rehusa_ficha(const std::string& motivo) { throw Error(1, "atipicos", motivo); }

} // namespace atipicos::app
