#pragma once

#include "engines/odbc/Cadena.hpp"

#ifdef _WIN32 // the headers of ODBC do not stand alone there
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>
#include <string>

namespace atipicos::odbc {

/// How the driver that a connection string names wants to be given one. It is loaded only when it gets it, so
/// that it can be told by its name alone, and by what the driver manager has about it.
struct Controlador {
    bool es_freetds = false;
    bool por_bytes = false; ///< it knows no Unicode
    Llaves llaves = Llaves::dobladas;

    [[nodiscard]] SQLRETURN conecta(SQLHDBC linea, std::string cadena) const;
};

[[nodiscard]] Controlador controlador_de(const Cadena& cadena, SQLHENV entorno);

} // namespace atipicos::odbc
