#pragma once

#include "platform/adodb/Connection.hpp"

#include <string>

namespace atipicos::postgresql {

/// What is looked at of an error of a server.
struct Fallo {
    adodb::Categoria categoria = adodb::Categoria::otra;
    std::string descripcion = "no error";
};

template <class Uso> Fallo fallo_de(Uso uso)
{
    try {
        uso();
    } catch (const adodb::ErrorBaseDatos& error) {
        return { error.categoria(), error.descripcion() };
    }
    return {};
}

} // namespace atipicos::postgresql
