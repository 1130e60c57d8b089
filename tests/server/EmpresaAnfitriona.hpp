#pragma once

#include "automation/Anfitrion.hpp"

namespace atipicos::pruebas {

/// A member of an object of the host that always gives the same.
inline automation::Anfitrion::Miembro con_valor(const char* nombre, automation::Valor valor)
{
    return { nombre, [valor](const automation::Argumentos&) { return valor; } };
}

/// The management company of a host, with what windows ask of it.
inline automation::Despacho empresa_con_ventanas()
{
    using automation::Argumentos;
    using automation::Valor;
    return automation::Anfitrion::crea({ con_valor("Codigo", 1), con_valor("Nombre", "Muestra"),
        con_valor("DecimalesImporte", 2), con_valor("DecimalesCosto", 3), con_valor("DecimalesPrecio", 3),
        con_valor("AlmacenDefecto", 1), con_valor("EnlaceContable", 1), con_valor("EmpresaProveedores", 1),
        con_valor("RaizProveedores", 400), con_valor("PorcentajeImpuesto", 7),
        { "Parametro", [](const Argumentos& a) {
             return a.valor(0).texto() == "UsuarioActual" ? Valor("1") : Valor();
         } } });
}

} // namespace atipicos::pruebas
