#include "editor/ImpuestoDelCargo.hpp"

#include "charges/Impuesto.hpp"
#include "context/modComun.hpp"
#include "runtime/Formato.hpp"

#include <algorithm>

namespace atipicos {

namespace {

    /// "7", "3,25": without the zeros that a rate of four decimals ends in.
    std::string tipo_en_letras(Currency porcentaje)
    {
        std::string texto = texto_pantalla(porcentaje, 4);
        texto.erase(texto.find_last_not_of('0') + 1);
        if (texto.ends_with(','))
            texto.pop_back();
        return texto;
    }

}

void ImpuestoDelCargo::Leer() noexcept
{
    m_tipo.reset();
    try {
        const auto empresa = modComun::EmpresaOrvalin();
        m_tipo = Tipo{ empresa->PorcentajeImpuesto(tipo_impuesto_atipicos()), empresa->DecimalesImporte() };
    } catch (...) { // told when the charge is saved, and not before
    }
}

std::string ImpuestoDelCargo::texto(Currency base) const
{
    if (!m_tipo)
        return {};
    try {
        const Currency impuesto = importe_impuesto(base, m_tipo->porcentaje, m_tipo->decimales);
        const int decimales = std::clamp(m_tipo->decimales, 2, 4);
        return "Base " + texto_pantalla(base, 2) + "  +  impuesto (" + tipo_en_letras(m_tipo->porcentaje)
            + " %) " + texto_pantalla(impuesto, decimales) + "  =  total con impuesto "
            + texto_pantalla(base + impuesto, decimales);
    } catch (const Error&) {
        return {};
    }
}

} // namespace atipicos
