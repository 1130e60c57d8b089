#include "context/trap.hpp"

#include "context/modComun.hpp"

#include <new>

namespace atipicos {

Mensaje mensaje_error(std::string_view etiqueta, const Error& error, TextoError texto)
{
    Mensaje mensaje;
    const auto linea = error.donde().linea();
    if (texto == TextoError::ConLinea && linea > 0)
        mensaje.texto = "[" + std::to_string(linea) + "] ";
    mensaje.texto += error.descripcion();
    mensaje.titulo = etiqueta;
    mensaje.icono = Icono::critico;
    return mensaje;
}

Error error_en_curso()
{
    try {
        throw;
    } catch (const Error& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return Error::de_ejecucion(numero_error::memoria_insuficiente, Donde{});
    } catch (const std::exception& ajena) {
        return Error(numero_error::error_interno, "QVORComprasAtip", ajena.what(), Donde{});
    } catch (...) {
        return Error::de_ejecucion(numero_error::error_interno, Donde{});
    }
}

void muestra_error_en_curso(std::string_view etiqueta, TextoError texto)
{
    modComun::Avisos()->mostrar(mensaje_error(etiqueta, error_en_curso(), texto));
}

} // namespace atipicos
