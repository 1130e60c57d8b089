#include "host/bases/Actualizacion.hpp"
#include "host/comprobacion/Verificacion.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "host/terminal/Interrupcion.hpp"
#include "host/terminal/Progreso.hpp"

#include <iostream>
#include <optional>

namespace atipicos::app {

int actualizar(const OpcionesComunes& comunes)
{
    const auto lugar = comunes.lugar();
    std::optional<Progreso> progreso;
    const auto examina = [&](const bases::Bases& bases) {
        progreso.reset(); // the reading tells its own
        const auto resultado = verifica(bases);
        std::string dicho = resumen(resultado);
        for (const auto& diferencia : resultado.diferencias)
            dicho += diferencia + '\n';
        return dicho;
    };
    const auto avance = [&](auto hechas, auto total) {
        if (!progreso)
            progreso.emplace("Copiando filas");
        Interrupcion::comprueba();
        progreso->va_por(hechas, total);
    };
    const auto actualizada = bases::actualiza_bases(lugar, { .examina = examina, .avance = avance });
    if (actualizada.desde == actualizada.hasta)
        std::cout << "Ya está al día: " << lugar.texto() << " tiene la versión " << actualizada.hasta
                  << ".\n";
    else
        std::cout << "Actualizada " << lugar.texto() << " de la versión " << actualizada.desde << " a la "
                  << actualizada.hasta << ".\n";
    if (actualizada.repartida)
        std::cout << repartida;
    for (const auto& apartado : actualizada.apartados)
        std::cout << "El fichero anterior se guarda como " << apartado.string()
                  << "; retírelo cuando ya no lo quiera.\n";
    return hecho;
}

} // namespace atipicos::app
