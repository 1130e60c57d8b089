#include "host/bases/Acceso.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "host/orvalin/Catalogos.hpp"
#include "host/terminal/Tabla.hpp"

#include <algorithm>
#include <iostream>

namespace atipicos::app {

namespace {

    std::string nombre_de(const std::vector<orvalin::Ficha>& usuarios, std::int32_t codigo)
    {
        const auto suyo = std::find_if(
            usuarios.begin(), usuarios.end(), [&](const auto& uno) { return uno.Codigo == codigo; });
        return suyo == usuarios.end() ? std::string() : suyo->Nombre;
    }

    void di_accesos(const bases::Bases& bases, const std::vector<orvalin::Ficha>& usuarios)
    {
        const auto todos = bases::accesos(bases);
        if (todos.empty()) {
            std::cout << "No se ha dicho de ningún login qué usuario es.\n";
            return;
        }
        Tabla tabla({ { "Login" }, { "Usuario", Alineacion::derecha }, { "Nombre" } });
        for (const auto& uno : todos)
            tabla.agrega({ en_una_linea(uno.login), std::to_string(uno.usuario),
                en_una_linea(nombre_de(usuarios, uno.usuario)) });
        tabla.escribe(std::cout);
    }

    void exige_libre(const bases::Bases& bases, const bases::Lugar& lugar)
    {
        if (const auto acceso = bases::acceso_de(bases, lugar); !acceso.por_otros)
            rehusa("«" + acceso.login + "» no puede decir qué usuario es cada uno: lo dice quien administra "
                + lugar.texto() + ".");
    }

    void asigna(const bases::Bases& bases, const std::vector<orvalin::Ficha>& usuarios,
        const OpcionesAccesos& opciones)
    {
        const auto nombre = nombre_de(usuarios, opciones.usuario);
        if (nombre.empty())
            rehusa("No existe el usuario " + std::to_string(opciones.usuario) + ".");
        bases::asigna_acceso(bases, { opciones.login, opciones.usuario });
        std::cout << "«" << opciones.login << "» es el usuario " << opciones.usuario << ", " << nombre
                  << ".\n";
    }

    void quita(const bases::Bases& bases, const std::string& login)
    {
        if (!bases::quita_acceso(bases, login))
            rehusa("«" + login + "» no es ningún usuario.");
        std::cout << "«" << login << "» ya no es ningún usuario.\n";
    }

    void di_acceso(
        const bases::Bases& bases, const std::vector<orvalin::Ficha>& usuarios, const std::string& login)
    {
        for (const auto& uno : bases::accesos(bases))
            if (uno.login == login) {
                std::cout << "«" << login << "» es el usuario " << uno.usuario << ", "
                          << nombre_de(usuarios, uno.usuario) << ".\n";
                return;
            }
        rehusa("«" + login + "» no es ningún usuario.");
    }

}

int accesos(const OpcionesComunes& comunes, const OpcionesAccesos& opciones)
{
    const bool cambia = opciones.quitar || opciones.usuario != 0;
    const auto lugar = comunes.lugar();
    const auto bases = bases::abre_bases(lugar, { .solo_lectura = !cambia });
    const auto usuarios = orvalin::Catalogos(bases.orvalin, comunes.empresa).usuarios();
    if (cambia)
        exige_libre(bases, lugar);
    if (opciones.login.empty())
        di_accesos(bases, usuarios);
    else if (opciones.quitar)
        quita(bases, opciones.login);
    else if (opciones.usuario != 0)
        asigna(bases, usuarios, opciones);
    else
        di_acceso(bases, usuarios, opciones.login);
    return hecho;
}

} // namespace atipicos::app
