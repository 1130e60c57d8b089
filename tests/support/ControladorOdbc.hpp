#pragma once

#include <fstream>
#include <sstream>
#include <string>

namespace atipicos::pruebas {

/// What there is to install before an ODBC driver can be used; empty when nothing.
[[nodiscard]] inline std::string falta_controlador(const std::string& nombre, const std::string& paquete)
{
    std::ostringstream registro;
    registro << std::ifstream("/etc/odbcinst.ini").rdbuf();
    return registro.str().find("[" + nombre + "]") != std::string::npos
        ? ""
        : "no ODBC driver " + nombre + " here: install the package " + paquete;
}

} // namespace atipicos::pruebas
