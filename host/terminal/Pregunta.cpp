#include "host/terminal/Pregunta.hpp"

#include "host/terminal/Interrupcion.hpp"
#include "runtime/Error.hpp"

#include <iostream>
#include <unistd.h>

namespace atipicos::app {

bool pregunta(const std::string& texto)
{
    if (isatty(STDIN_FILENO) != 1)
        throw Error(1, "atipicos", "No hay un terminal en el que preguntar: repita la orden con --si.");
    std::cout << texto << " (s/N) " << std::flush;
    Interrupcion::espera_entrada();
    std::string respuesta;
    std::getline(std::cin, respuesta);
    return respuesta == "s" || respuesta == "S" || respuesta == "sí" || respuesta == "si";
}

} // namespace atipicos::app
