#include "runtime/MotivoSistema.hpp"

#include <cerrno>

namespace atipicos {

std::string motivo_sistema(int numero)
{
    switch (numero) {
    case ENOENT:
        return "no existe";
    case ENOTDIR:
        return "una parte de su ruta no es una carpeta";
    case EISDIR:
        return "es una carpeta";
    case EACCES:
    case EPERM:
        return "no hay permiso";
    case EROFS:
        return "el disco es de sólo lectura";
    case ENOSPC:
#ifdef EDQUOT
    case EDQUOT:
#endif
        return "no queda sitio en el disco";
    case EFBIG:
        return "el fichero es demasiado grande";
    case ENAMETOOLONG:
        return "el nombre es demasiado largo";
    case ELOOP:
        return "sus enlaces no llevan a ningún sitio";
    case EMFILE:
    case ENFILE:
        return "hay demasiados ficheros abiertos";
    case EBUSY:
#ifdef ETXTBSY
    case ETXTBSY:
#endif
        return "está en uso";
    case EIO:
        return "el disco ha fallado";
    default:
        return "error " + std::to_string(numero) + " del sistema";
    }
}

} // namespace atipicos
