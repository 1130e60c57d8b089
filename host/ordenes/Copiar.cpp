#include "host/bases/Copia.hpp"
#include "host/comprobacion/Verificacion.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "host/terminal/Interrupcion.hpp"
#include "host/terminal/Progreso.hpp"

#include <iostream>
#include <optional>

namespace atipicos::app {

int copiar(const OpcionesComunes& comunes, const std::filesystem::path& destino)
{
    const auto lugar = comunes.lugar();
    std::optional<Progreso> progreso;
    progreso.emplace("Copiando");
    Verificacion resultado;
    const auto copia = bases::copia_bases(lugar, destino,
        { .avance =
                [&](auto hechas, auto total) {
                    Interrupcion::comprueba();
                    progreso->va_por(hechas, total);
                },
            .comprueba =
                [&](const bases::Bases& bases) {
                    progreso.reset(); // the reading tells its own
                    resultado = verifica(bases);
                } });
    std::cout << "Copiada " << lugar.texto() << " en " << copia.string() << ".\n" << resumen(resultado);
    if (!resultado.diferencias.empty())
        std::cerr << "La copia es fiel: las diferencias están en el original. Véalas con: atipicos verificar "
                  << lugar.opcion() << '\n';
    return hecho;
}

} // namespace atipicos::app
