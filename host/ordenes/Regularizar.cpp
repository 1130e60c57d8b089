#include "context/claves.hpp"
#include "context/modComun.hpp"
#include "host/comprobacion/Contrario.hpp"
#include "host/comprobacion/LosQueSobran.hpp"
#include "host/comprobacion/Verificacion.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/terminal/Pregunta.hpp"
#include "host/terminal/Tabla.hpp"
#include "runtime/Formato.hpp"

#include <algorithm>
#include <iostream>
#include <set>

namespace atipicos::app {

namespace {

    using Lista = std::vector<AsientoSinCargo>;

    void escribe(const Lista& lista)
    {
        const auto derecha = Alineacion::derecha;
        Tabla tabla({ { "Asiento" }, { "Fecha" }, { "Documento" }, { "Cuenta" }, { "Importe", derecha },
            { "Qué es" } });
        for (const auto& uno : lista)
            tabla.agrega({ nombre_corto(uno.asiento), uno.fecha.texto(), uno.documento, uno.cuenta,
                texto_pantalla(uno.importe, 2), uno.explicacion });
        tabla.escribe(std::cout);
    }

    /// Those that are asked for by name, in their order; each has to be one without charge.
    Lista nombrados(const Lista& todos, const std::vector<ClaveAsiento>& cuales)
    {
        const std::set<ClaveAsiento> pedidos(cuales.begin(), cuales.end());
        Lista elegidos;
        std::copy_if(todos.begin(), todos.end(), std::back_inserter(elegidos),
            [&](const auto& uno) { return pedidos.contains(uno.asiento); });
        for (const auto& pedido : pedidos)
            if (std::none_of(
                    elegidos.begin(), elegidos.end(), [&](const auto& uno) { return uno.asiento == pedido; }))
                rehusa("El " + texto(pedido)
                    + " no es de los que están sin cargo: no se ha hecho nada. Véalos con: atipicos "
                      "regularizar");
        return elegidos;
    }

    void exige_abierto(const Sesion& sesion, const Lista& elegidos, Date fecha)
    {
        if (const auto motivo = impedimento_para_anular(*sesion.bases.bexmor, elegidos, fecha);
            !motivo.empty())
            rehusa(motivo + " No se ha anulado nada; otro día se da con --fecha.");
    }

    std::string cuantos(std::size_t n) { return n == 1 ? "1 asiento" : std::to_string(n) + " asientos"; }

    void cuenta_lo_hecho(const ResultadoRegularizar& resultado)
    {
        for (const auto& una : resultado.hechas)
            if (una.a_mano())
                std::cout << "El " << texto(una.asiento) << " queda como saldado a mano.\n";
            else
                std::cout << "El " << texto(una.asiento) << " queda anulado con el " << nombre_corto(una.por)
                          << ".\n";
        for (const auto& [asiento, motivo] : resultado.omitidas)
            std::cout << "El " << texto(asiento) << " se deja como está: " << motivo << ".\n";
    }

    /// What is told of those that are left out unless they are named.
    void explica_los_demas(std::size_t cuales)
    {
        if (cuales > 0)
            std::cout << "Sin nombrarlos no se anulan " << cuantos(cuales)
                      << ", porque no es seguro que sobren. Uno así se anula con: atipicos regularizar "
                         "EMPRESA/EJERCICIO/ASIENTO\n";
    }

    bool confirma(const Lista& elegidos, const OpcionesRegularizar& opciones, Date fecha)
    {
        if (opciones.si)
            return true;
        if (!opciones.saldados.empty())
            return pregunta("\n¿Dar por saldados a mano " + cuantos(elegidos.size()) + "?");
        return pregunta("\n¿Anular " + cuantos(elegidos.size()) + ", por "
            + texto_pantalla(suma_de(elegidos), 2) + ", con fecha " + fecha.texto() + "?");
    }

}

int regularizar(const OpcionesComunes& comunes, const OpcionesRegularizar& opciones)
{
    const Sesion sesion(comunes);
    const bool a_mano = !opciones.saldados.empty();
    const auto todos = verifica(sesion.bases).sin_cargo;
    const auto& pedidos = a_mano ? opciones.saldados : opciones.asientos;
    const auto elegidos = pedidos.empty() ? los_que_sobran(todos) : nombrados(todos, pedidos);
    const auto ahora = modComun::reloj().ahora();
    const auto fecha = opciones.fecha.value_or(ahora.solo_dia());
    if (!todos.empty())
        escribe(pedidos.empty() ? todos : elegidos);
    if (pedidos.empty())
        explica_los_demas(todos.size() - elegidos.size());
    if (elegidos.empty()) {
        std::cout << "No hay asientos que anular.\n";
        return hecho;
    }
    if (!a_mano)
        exige_abierto(sesion, elegidos, fecha);
    if (!confirma(elegidos, opciones, fecha)) {
        std::cout << "No se ha anulado nada.\n";
        return no_hecho;
    }
    std::vector<ClaveAsiento> cuales;
    cuales.reserve(elegidos.size());
    for (const auto& uno : elegidos)
        cuales.push_back(uno.asiento);
    const Regularizador quien{ fecha, CStr(modComun::EmpresaOrvalin()->Parametro(claves::UsuarioActual)),
        ahora };
    cuenta_lo_hecho(
        a_mano ? da_por_saldados(sesion.bases, cuales, quien) : regulariza(sesion.bases, cuales, quien));
    return hecho;
}

} // namespace atipicos::app
