#include "host/sql/Literal.hpp"

#include "runtime/Formato.hpp"

namespace atipicos::sql {

std::string literal(std::string_view texto, Donde donde)
{
    if (texto.find('\0') != std::string_view::npos)
        throw Error::de_ejecucion(numero_error::argumento_no_valido, donde);
    std::string entrecomillado;
    entrecomillado.reserve(texto.size() + 2);
    entrecomillado += '\'';
    for (const char c : texto) {
        if (c == '\'')
            entrecomillado += '\'';
        entrecomillado += c;
    }
    entrecomillado += '\'';
    return entrecomillado;
}

std::string literal(Date fecha) { return "'" + fecha.texto_regional() + "'"; }

std::string literal(Currency importe, Donde donde) { return texto_sql(importe.a_double(), donde); }

} // namespace atipicos::sql
