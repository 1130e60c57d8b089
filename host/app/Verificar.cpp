#include "host/app/Ordenes.hpp"
#include "host/app/Propuesta.hpp"
#include "host/app/Verificacion.hpp"

#include <iostream>

namespace atipicos::app {

int verificar(const OpcionesComunes& comunes, bool proponer)
{
    const auto bases = bases::abre_bases(comunes.lugar(), { .solo_lectura = true });
    const auto resultado = verifica(bases);
    for (const auto& diferencia : resultado.diferencias)
        std::cout << diferencia << '\n';
    if (resultado.asientos_sin_cargo > 0)
        std::cout << "Asientos sin cargo (de cargos eliminados o cambiados; se eliminan en Contabilidad): "
                  << resultado.asientos_sin_cargo << '\n';
    std::cout << "Verificación: " << resultado.cargos << " cargos, " << resultado.lineas << " líneas, "
              << resultado.asientos << " asientos, " << resultado.apuntes << " apuntes, "
              << resultado.registros << " registros de impuesto, " << resultado.previsiones
              << " previsiones: ";
    if (resultado.diferencias.empty())
        std::cout << "sin diferencias.\n";
    else
        std::cout << resultado.diferencias.size()
                  << (resultado.diferencias.size() == 1 ? " diferencia.\n" : " diferencias.\n");
    if (proponer)
        std::cout << propone(resultado, comunes);
    return resultado.diferencias.empty() ? hecho : no_hecho;
}

} // namespace atipicos::app
