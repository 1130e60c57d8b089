#pragma once

#include "platform/adodb/Connection.hpp"

#include <string>

namespace atipicos::pruebas {

/// What the database says of `uso`; "no error" where it says nothing.
template <class Uso> [[nodiscard]] std::string error_de(Uso uso)
{
    try {
        uso();
    } catch (const adodb::ErrorBaseDatos& error) {
        return error.descripcion();
    }
    return "no error";
}

} // namespace atipicos::pruebas
