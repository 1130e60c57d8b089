#pragma once

#include "host/ordenes/Uso.hpp"
#include "host/sesion/OpcionesComunes.hpp"
#include "runtime/Date.hpp"

#include <CLI/CLI.hpp>

#include <initializer_list>
#include <limits>
#include <string>

/// What the commands declare their options with. Every value is checked here, in our words: the library only
/// puts it into its variable.
namespace atipicos::app {

/// Has the option take plain digits, read as decimal, up to `tope`.
CLI::Option* solo_numero(CLI::Option& opcion, std::int64_t tope);

[[nodiscard]] CLI::Validator uno_de(std::initializer_list<const char*> valores, std::string que);

/// An option with a number that fits into `destino`.
template <class T>
CLI::Option* agrega_numero(CLI::App& orden, const std::string& nombre, T& destino, const std::string& ayuda)
{
    return solo_numero(*orden.add_option(nombre, destino, ayuda), std::numeric_limits<T>::max());
}

/// An option with a day, `dd/mm/yyyy`.
CLI::Option* agrega_dia(CLI::App& orden, const std::string& nombre, Date& destino, const std::string& ayuda);

/// "--formato", one of `valores`; the first one is what it is without.
CLI::Option* agrega_formato(CLI::App& orden, std::string& destino, std::initializer_list<const char*> valores,
    const std::string& ayuda);

/// The key of one charge: `codigo`, `ejercicio` and `almacen` of the command's options.
void agrega_cargo(CLI::App& orden, auto& opciones)
{
    orden.add_option("CODIGO", opciones.codigo, "Código del cargo, como AT260001")->required();
    agrega_numero(orden, "--ejercicio", opciones.ejercicio, "Ejercicio del cargo")->required();
    agrega_numero(orden, "--almacen", opciones.almacen, "Almacén del cargo")->required();
}

void agrega_lugar(CLI::App& orden, OpcionesComunes& comunes); ///< where the databases are
void agrega_comunes(CLI::App& orden, OpcionesComunes& comunes); ///< and which company and user it is for

/// Gives the help of `app` and its commands the Spanish words of the library's formatter.
void en_castellano(CLI::App& app);

} // namespace atipicos::app
