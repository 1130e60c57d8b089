#include "runtime/Error.hpp"

#include <utility>

namespace atipicos {

namespace {

    const char* descripcion_de(std::int32_t numero)
    {
        switch (numero) {
        case numero_error::argumento_no_valido:
            return "Llamada a procedimiento o argumento no válidos";
        case numero_error::desbordamiento:
            return "Desbordamiento";
        case numero_error::memoria_insuficiente:
            return "Memoria insuficiente";
        case numero_error::division_por_cero:
            return "División por cero";
        case numero_error::tipos_no_coinciden:
            return "No coinciden los tipos";
        case numero_error::objeto_no_establecido:
            return "La variable de objeto no está establecida";
        case numero_error::nulo_no_valido:
            return "Uso no válido de Null";
        default:
            return "Error interno";
        }
    }

}

Error::Error(std::int32_t numero, std::string fuente, std::string descripcion, Donde donde)
    : m_numero(numero)
    , m_fuente(std::move(fuente))
    , m_descripcion(std::move(descripcion))
    , m_donde(donde)
{
}

Error Error::de_ejecucion(std::int32_t numero, Donde donde)
{
    return Error(numero, "QVORComprasAtip", descripcion_de(numero), donde);
}

} // namespace atipicos
