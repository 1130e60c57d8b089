#include "context/Cajas.hpp"

#include "context/modComun.hpp"

namespace atipicos {

void avisa(const std::string& texto, Icono icono, const std::string& titulo, Donde donde)
{
    modComun::Avisos(donde)->mostrar({ texto, titulo, icono });
}

bool confirma(const std::string& texto, const std::string& titulo, Donde donde)
{
    return modComun::Avisos(donde)->mostrar({ texto, titulo, Icono::pregunta, Botones::SiNo, Respuesta::No })
        == Respuesta::Si;
}

} // namespace atipicos
