#include "host/reclamaciones/RevisionReclamaciones.hpp"

#include "charges/clsAtipico.hpp"
#include "editor/GuardarAtipico.hpp"
#include "host/bases/Palabra.hpp"

#include <utility>

namespace atipicos::app {

namespace {

    constexpr std::size_t reclamaciones_por_bloque = 200;
    constexpr std::size_t lineas_por_bloque = 2000;

}

std::string con_otra_vez(const std::string& referencia)
{
    std::string escrita;
    for (const char c : referencia)
        escrita += c == ',' ? std::string("\\,") : std::string(1, c);
    return "--otra-vez " + bases::como_palabra(escrita);
}

std::string con_otro_contenido(const std::string& referencia, const ClaveCargo& clave)
{
    return "«" + referencia + "» ya se registró como " + clave.Codigo + " (ejercicio "
        + std::to_string(clave.Ejercicio) + ", almacén " + std::to_string(clave.Almacen)
        + ") con otro contenido. Si es otra reclamación, dele otra referencia; si sustituye a ese cargo, "
          "elimínelo y registre ésta con "
        + con_otra_vez(referencia);
}

RevisionReclamaciones::RevisionReclamaciones(const Importaciones& importaciones, CargosReclamados& cargos,
    Contabilizable& contabilizable, const Opciones& opciones, Dice dice)
    : m_importaciones(importaciones)
    , m_cargos(cargos)
    , m_contabilizable(contabilizable)
    , m_opciones(opciones)
    , m_dice(std::move(dice))
{
}

void RevisionReclamaciones::mira(Reclamacion una)
{
    if (una.repetida)
        juzga_bloque(); // what is known of its first part
    m_lineas += una.lineas.size();
    m_bloque.push_back(std::move(una));
    if (m_bloque.size() == reclamaciones_por_bloque || m_lineas >= lineas_por_bloque)
        juzga_bloque();
}

Revisadas RevisionReclamaciones::termina()
{
    juzga_bloque();
    return std::move(m_revisadas);
}

void RevisionReclamaciones::juzga_bloque()
{
    std::vector<std::string> referencias;
    for (const auto& una : m_bloque)
        if (una.valida)
            referencias.push_back(una.referencia);
    const auto todas = m_importaciones.busca(referencias);
    for (auto& una : m_bloque) {
        const auto lugar = todas.find(una.referencia);
        juzga(una, lugar == todas.end() ? Veces() : lugar->second);
    }
    m_bloque.clear();
    m_lineas = 0;
}

void RevisionReclamaciones::juzga(Reclamacion& una, const Veces& veces)
{
    m_revisadas.total += una.repetida ? 0 : 1;
    const bool nombrada = m_opciones.otra_vez.contains(una.referencia);
    if (nombrada)
        m_halladas.insert(una.referencia);
    if (!una.valida)
        return rechaza(una);
    clsAtipico cargo;
    CargoTecleado tecleado;
    m_cargos.prepara(una, cargo, tecleado);
    if (!veces.empty()) {
        m_revisadas.conocidas.insert(resumen_de(una.referencia));
        if (!nombrada) {
            if (m_importaciones.la_misma(veces, { contenido_de(una), tecleado }) != nullptr) {
                una.errores.clear(); // of what has gone from the catalogues since
                di_todo(una);
                m_iguales.insert(resumen_de(una.referencia));
                ++m_revisadas.ya_registradas;
                return;
            }
            una.errores.clear();
            repara(una, una.fila, "", con_otro_contenido(una.referencia, veces.back().clave));
        }
    }
    if (una.valida)
        comprueba(una, tecleado);
    if (!una.valida)
        return rechaza(una);
    di_todo(una);
}

/// What stands against saving it, and against posting it.
void RevisionReclamaciones::comprueba(Reclamacion& una, const CargoTecleado& tecleado)
{
    if (una.fecha < Date::de_dia(2000, 1, 1))
        return repara(una, una.fila, "fecha",
            "los cargos se numeran desde el 01/01/2000 y el " + una.fecha.texto() + " es anterior.");
    const auto reparos = m_contabilizable.reparos(una, tecleado);
    if (reparos.empty())
        return;
    if (m_opciones.sin_asiento)
        m_revisadas.sin_asiento.insert(resumen_de(una.referencia));
    for (const auto& reparo : reparos) {
        if (m_opciones.sin_asiento)
            una.notas.push_back({ reparo.fila, reparo.columna,
                "«" + una.referencia + "» se guarda sin asiento: " + reparo.motivo });
        else
            repara(una, reparo.fila, reparo.columna, reparo.motivo);
    }
    if (!una.valida)
        repara(una, una.fila, "",
            "«" + una.referencia
                + "» no se puede contabilizar; para guardarla sin asiento, dé --sin-asiento.");
}

void RevisionReclamaciones::rechaza(const Reclamacion& una)
{
    di_todo(una);
    if (una.referencia.empty()) {
        m_revisadas.rechazadas += 1;
        return;
    }
    const auto resumen = resumen_de(una.referencia);
    if (!m_revisadas.malas.insert(resumen).second)
        return;
    ++m_revisadas.rechazadas;
    m_revisadas.ya_registradas -= m_iguales.erase(resumen);
}

void RevisionReclamaciones::di_todo(const Reclamacion& una) const
{
    for (const auto& nota : una.notas)
        m_dice("aviso", nota);
    for (const auto& error : una.errores)
        m_dice("error", error);
}

} // namespace atipicos::app
