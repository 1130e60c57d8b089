#pragma once

#include "automation/Anfitrion.hpp"

#include <utility>
#include <vector>

namespace atipicos::pruebas {

/// A member of an object of the host that always gives the same.
inline automation::Anfitrion::Miembro con_valor(const char* nombre, automation::Valor valor)
{
    return { nombre, [valor](const automation::Argumentos&) { return valor; } };
}

/// The management company of a host, with what windows ask of it, and what else it is given.
inline automation::Despacho empresa_con_ventanas(std::vector<automation::Anfitrion::Miembro> mas = {})
{
    using automation::Argumentos;
    using automation::Valor;
    for (auto&& suyo : std::vector<automation::Anfitrion::Miembro>{ con_valor("Codigo", 1),
             con_valor("Nombre", "Muestra"), con_valor("DecimalesImporte", 2), con_valor("DecimalesCosto", 3),
             con_valor("DecimalesPrecio", 3), con_valor("AlmacenDefecto", 1), con_valor("EnlaceContable", 1),
             con_valor("EmpresaProveedores", 1), con_valor("RaizProveedores", 400),
             con_valor("PorcentajeImpuesto", 7), { "Parametro", [](const Argumentos& a) {
                                                      return a.valor(0).texto() == "UsuarioActual"
                                                          ? Valor("1")
                                                          : Valor();
                                                  } } })
        mas.push_back(std::move(suyo));
    return automation::Anfitrion::crea(std::move(mas));
}

} // namespace atipicos::pruebas
