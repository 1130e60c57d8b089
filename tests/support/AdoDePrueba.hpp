#pragma once

#include "automation/Anfitrion.hpp"
#include "platform/adodb/Connection.hpp"

#include <memory>

namespace atipicos::pruebas {

/// An automation object with the surface of an ADO connection over one of the engines.
[[nodiscard]] automation::Despacho ado_de(std::shared_ptr<adodb::Connection> conexion);

/// Runs what a member does; an error of the engine becomes one of automation.
template <class Trabajo> auto como_fallo(Trabajo&& trabajo)
{
    try {
        return trabajo();
    } catch (const Error& error) {
        throw automation::Fallo(error.numero(), error.fuente(), error.descripcion());
    }
}

} // namespace atipicos::pruebas
