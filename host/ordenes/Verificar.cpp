#include "host/bases/Danos.hpp"
#include "host/comprobacion/Propuesta.hpp"
#include "host/comprobacion/Verificacion.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "host/sesion/ReintentoEnTerminal.hpp"
#include "host/terminal/EsperaServidor.hpp"
#include "host/terminal/Tabla.hpp"

#include <iostream>

namespace atipicos::app {

namespace {

    constexpr int veces_que_se_empieza = 3;

    /// What is read is of one server: a line that is lost half-way leaves nothing to go on with.
    template <class Accion> auto desde_el_principio(const ReintentoServidor& reintento, Accion accion)
    {
        for (int vez = 1;; ++vez) {
            try {
                return accion();
            } catch (const adodb::ErrorBaseDatos& error) {
                if (error.categoria() != adodb::Categoria::conexion || vez == veces_que_se_empieza
                    || reintento.dejado())
                    throw;
                std::cerr << "atipicos: " << en_una_linea(error.descripcion())
                          << " La verificación empieza otra vez." << std::endl;
            }
        }
    }

}

int verificar(const OpcionesComunes& comunes, bool proponer)
{
    bases::OpcionesBases opciones{ .solo_lectura = true,
        .sigue_esperando = EsperaServidor(std::cerr),
        .avisa_espera = espera_de_controlador() };
    const auto reintento = reintenta_en_terminal(opciones);
    const auto bases = bases::abre_bases(comunes.lugar(), opciones);
    const auto danos = bases::danos(bases);
    for (const auto& dano : danos)
        std::cout << dano << '\n';
    if (!danos.empty()) // reading what is damaged may fail: the damage is told by then
        std::cout << std::flush;
    auto resultado = desde_el_principio(*reintento, [&] { return verifica(bases); });
    for (const auto& diferencia : resultado.diferencias)
        std::cout << diferencia << '\n';
    resultado.diferencias.insert(resultado.diferencias.begin(), danos.begin(), danos.end());
    std::cout << resumen(resultado);
    if (proponer)
        std::cout << propone(resultado, comunes);
    return resultado.diferencias.empty() ? hecho : no_hecho;
}

} // namespace atipicos::app
