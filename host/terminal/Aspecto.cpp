#include "host/terminal/Aspecto.hpp"

#include <cstdlib>
#include <string_view>
#include <sys/ioctl.h>
#include <unistd.h>

namespace atipicos::app {

namespace {

    bool con_colores()
    {
        const char* ninguno = std::getenv("NO_COLOR");
        const char* clase = std::getenv("TERM");
        return (ninguno == nullptr || *ninguno == '\0') && clase != nullptr
            && std::string_view(clase) != "dumb";
    }

}

Aspecto aspecto_de(int descriptor)
{
    Aspecto aspecto;
    if (isatty(descriptor) != 1)
        return aspecto;
    aspecto.es_terminal = true;
    aspecto.color = con_colores();
    winsize medida{};
    if (ioctl(descriptor, TIOCGWINSZ, &medida) == 0 && medida.ws_col > 0)
        aspecto.ancho = medida.ws_col;
    return aspecto;
}

} // namespace atipicos::app
