#include "host/comprobacion/Regularizados.hpp"

#include <algorithm>
#include <functional>

namespace atipicos::app {

namespace {

    std::uint64_t mezcla(std::uint64_t valor)
    {
        valor ^= valor >> 30U;
        valor *= 0xBF58476D1CE4E5B9U;
        valor ^= valor >> 27U;
        valor *= 0x94D049BB133111EBU;
        return valor ^ (valor >> 31U);
    }

    /// What an amount weighs in a sum that is 0 when, for each name, the amounts are.
    std::uint64_t peso(const std::string& nombre, Currency importe)
    {
        return (mezcla(std::hash<std::string>()(nombre)) | 1U) * static_cast<std::uint64_t>(importe.crudo());
    }

}

std::uint64_t huella_de_cuentas(const AsientoContabilizado& asiento)
{
    std::uint64_t suma = 0;
    for (const auto& uno : asiento.apuntes)
        suma += peso(uno.cuenta, uno.debe) - peso(uno.cuenta, uno.haber);
    return suma;
}

std::uint64_t huella_de_saldos(const AsientoContabilizado& asiento)
{
    auto suma = huella_de_cuentas(asiento);
    for (const auto& uno : asiento.apuntes) // to whose account it is put down
        suma += peso("d" + uno.departamento, uno.debe) - peso("d" + uno.departamento, uno.haber);
    for (const auto& uno : asiento.registros) {
        const auto tipo = std::to_string(uno.clase) + "/" + std::to_string(uno.tipo);
        suma += peso("base " + tipo, uno.base) + peso("cuota " + tipo, uno.cuota)
            + peso("total " + tipo, uno.total);
    }
    for (const auto& una : asiento.previsiones)
        suma += peso(
            "previsión " + una.cuenta + una.vencimiento.texto() + una.banco + std::to_string(una.tipo_doc),
            una.importe);
    return suma;
}

Regularizados::Regularizados(adodb::Connection& bexmor)
{
    lee_regularizaciones(bexmor, [&](const Regularizacion& una) {
        m_parejas[una.asiento].por = una.por;
        if (!una.a_mano())
            m_contrarios[una.por] = una.asiento;
    });
}

bool Regularizados::encuentra(const AsientoContabilizado& asiento)
{
    const auto original = m_parejas.find(asiento.clave);
    if (original != m_parejas.end()) {
        original->second.visto = true;
        original->second.suma += huella_de_saldos(asiento);
    }
    const auto contrario = m_contrarios.find(asiento.clave);
    if (contrario != m_contrarios.end()) {
        auto& pareja = m_parejas.at(contrario->second);
        pareja.por_visto = true;
        pareja.suma += huella_de_saldos(asiento);
    }
    return original != m_parejas.end() || contrario != m_contrarios.end();
}

std::string Regularizados::motivo(const ClaveAsiento& asiento) const
{
    if (const auto lugar = m_contrarios.find(asiento); lugar != m_contrarios.end())
        return "anula el " + texto(lugar->second);
    const auto lugar = m_parejas.find(asiento);
    if (lugar == m_parejas.end())
        return {};
    return lugar->second.por.numero == 0 ? "se saldó a mano" : "se anuló con el " + texto(lugar->second.por);
}

bool Regularizados::saldado_a_mano(const ClaveAsiento& asiento) const
{
    const auto lugar = m_parejas.find(asiento);
    return lugar != m_parejas.end() && lugar->second.por.numero == 0;
}

std::vector<std::string> Regularizados::diferencias() const
{
    std::vector<std::string> todas;
    for (const auto& [asiento, pareja] : m_parejas) {
        if (pareja.por.numero == 0)
            continue; // whoever did it by hand may have removed it as well
        if (!pareja.visto || !pareja.por_visto)
            todas.push_back(texto(asiento) + ": se anuló con el " + texto(pareja.por) + " y "
                + (pareja.visto            ? "éste"
                        : pareja.por_visto ? "él"
                                           : "ninguno de los dos")
                + " no está en Contabilidad.");
        else if (pareja.suma != 0)
            todas.push_back(
                texto(asiento) + ": el " + texto(pareja.por) + ", que lo anula, no es su contrario.");
    }
    return todas;
}

std::size_t Regularizados::anulados() const { return m_parejas.size() - a_mano(); }

std::size_t Regularizados::a_mano() const
{
    return static_cast<std::size_t>(std::count_if(
        m_parejas.begin(), m_parejas.end(), [](const auto& una) { return una.second.por.numero == 0; }));
}

} // namespace atipicos::app
