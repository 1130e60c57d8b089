#include "host/comprobacion/CodigoCargo.hpp"

namespace atipicos::app {

std::int64_t numero_de(const std::string& codigo)
{
    if (!codigo.starts_with("AT") || codigo.size() < 3 || codigo.size() > 12 || codigo[2] == '0'
        || codigo.find_first_not_of("0123456789", 2) != std::string::npos)
        return 0;
    return std::stoll(codigo.substr(2));
}

std::string codigo_de(std::int64_t numero) { return "AT" + std::to_string(numero); }

std::string texto(const ClaveContenida& cargo)
{
    return "cargo " + cargo.codigo + " (empresa " + std::to_string(cargo.empresa) + ", ejercicio "
        + std::to_string(cargo.ejercicio) + ", almacén " + std::to_string(cargo.almacen) + ")";
}

} // namespace atipicos::app
