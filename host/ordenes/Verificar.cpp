#include "host/bases/Danos.hpp"
#include "host/comprobacion/Propuesta.hpp"
#include "host/comprobacion/Verificacion.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "host/terminal/EsperaServidor.hpp"

#include <iostream>

namespace atipicos::app {

int verificar(const OpcionesComunes& comunes, bool proponer)
{
    const auto bases = bases::abre_bases(
        comunes.lugar(), { .solo_lectura = true, .sigue_esperando = EsperaServidor(std::cerr) });
    const auto danos = bases::danos(bases);
    for (const auto& dano : danos)
        std::cout << dano << '\n';
    if (!danos.empty()) // reading what is damaged may fail: the damage is told by then
        std::cout << std::flush;
    auto resultado = verifica(bases);
    for (const auto& diferencia : resultado.diferencias)
        std::cout << diferencia << '\n';
    resultado.diferencias.insert(resultado.diferencias.begin(), danos.begin(), danos.end());
    std::cout << resumen(resultado);
    if (proponer)
        std::cout << propone(resultado, comunes);
    return resultado.diferencias.empty() ? hecho : no_hecho;
}

} // namespace atipicos::app
