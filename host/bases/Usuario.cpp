#include "host/bases/Usuario.hpp"

#include <pwd.h>
#include <unistd.h>

namespace atipicos::bases {

std::string usuario_de_la_maquina()
{
    const auto* cuenta = getpwuid(geteuid());
    return cuenta != nullptr ? cuenta->pw_name : std::to_string(geteuid());
}

} // namespace atipicos::bases
