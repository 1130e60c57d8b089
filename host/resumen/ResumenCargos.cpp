#include "host/resumen/ResumenCargos.hpp"

#include "host/resumen/Porcentaje.hpp"

#include <algorithm>
#include <array>
#include <iterator>
#include <tuple>
#include <utility>

namespace atipicos::app {

namespace {

    constexpr std::array<const char*, 12> meses{ "enero", "febrero", "marzo", "abril", "mayo", "junio",
        "julio", "agosto", "septiembre", "octubre", "noviembre", "diciembre" };

    constexpr std::int32_t meses_con_vacios = 120; ///< that begin and end a range

    std::string sin_nombre(VistaResumen por, std::int32_t clave)
    {
        if (por == VistaResumen::mes)
            return nombre_de_mes(clave);
        return por == VistaResumen::articulo && clave == 0 ? "(sin artículo)" : "(ya no está en su catálogo)";
    }

    std::vector<GrupoResumen> junta_iguales(std::vector<GrupoResumen> grupos)
    {
        std::ranges::stable_sort(grupos, {}, &GrupoResumen::clave);
        std::vector<GrupoResumen> juntos;
        for (auto& grupo : grupos) {
            if (juntos.empty() || juntos.back().clave != grupo.clave) {
                juntos.push_back(std::move(grupo));
                continue;
            }
            juntos.back().ahora += grupo.ahora;
            juntos.back().antes += grupo.antes;
        }
        return juntos;
    }

}

Cifras& Cifras::operator+=(const Cifras& otras)
{
    cuantos += otras.cuantos;
    base += otras.base;
    impuesto += otras.impuesto;
    return *this;
}

std::int32_t clave_de_mes(Date fecha) noexcept { return fecha.anio() * 12 + fecha.mes() - 1; }

std::string nombre_de_mes(std::int32_t clave)
{
    return std::string(meses[static_cast<std::size_t>(clave % 12)]) + " de " + std::to_string(clave / 12);
}

ResumenCargos::ResumenCargos(const PeticionResumen& peticion, std::vector<GrupoResumen> grupos)
    : m_peticion(peticion)
    , m_grupos(junta_iguales(std::move(grupos)))
{
    if (m_peticion.por == VistaResumen::mes)
        completa_meses();
    for (auto& grupo : m_grupos)
        if (grupo.nombre.empty())
            grupo.nombre = sin_nombre(m_peticion.por, grupo.clave);
    ordena();
    suma();
}

void ResumenCargos::completa_meses()
{
    auto primero = clave_de_mes(m_peticion.periodo.desde);
    auto ultimo = clave_de_mes(m_peticion.periodo.hasta);
    if (ultimo - primero >= meses_con_vacios) {
        ultimo = m_grupos.empty() ? primero - 1 : m_grupos.back().clave;
        primero = m_grupos.empty() ? primero : m_grupos.front().clave;
    }
    std::vector<GrupoResumen> todos;
    auto hay = m_grupos.begin();
    for (auto clave = primero; clave <= ultimo; ++clave) {
        hay = std::find_if(hay, m_grupos.end(), [&](const auto& uno) { return uno.clave >= clave; });
        if (hay != m_grupos.end() && hay->clave == clave)
            todos.push_back(std::move(*hay));
        else
            todos.push_back({ clave, {}, {}, {} });
    }
    m_grupos = std::move(todos);
}

void ResumenCargos::ordena()
{
    if (m_peticion.por == VistaResumen::mes)
        return;
    std::ranges::sort(m_grupos, [](const auto& uno, const auto& otro) {
        return std::tuple(otro.ahora.total(), otro.antes.total(), uno.clave)
            < std::tuple(uno.ahora.total(), uno.antes.total(), otro.clave);
    });
}

void ResumenCargos::suma()
{
    bool hay_mas = false;
    bool hay_menos = false;
    m_total.nombre = "Total";
    for (const auto& grupo : m_grupos) {
        m_total.ahora += grupo.ahora;
        m_total.antes += grupo.antes;
        hay_mas = hay_mas || grupo.ahora.total() > Currency();
        hay_menos = hay_menos || grupo.ahora.total() < Currency();
    }
    m_con_partes = hay_mas != hay_menos;
}

std::optional<Currency> ResumenCargos::parte(const GrupoResumen& grupo) const
{
    if (!m_con_partes)
        return std::nullopt;
    const auto tanto = porcentaje(grupo.ahora.total(), m_total.ahora.total());
    return tanto && m_total.ahora.total() < Currency() ? std::optional(Currency() - *tanto) : tanto;
}

std::string ResumenCargos::texto_de_parte(const GrupoResumen& grupo) const
{
    if (!m_con_partes)
        return "–";
    const auto todo = m_total.ahora.total();
    const auto propio = grupo.ahora.total();
    return todo < Currency() ? texto_parte(Currency() - propio, todo) : texto_parte(propio, todo);
}

ResumenCargos ResumenCargos::primeros(std::size_t cuantos) const
{
    auto resumen = *this;
    if (m_grupos.size() <= cuantos + 1)
        return resumen;
    const auto donde = resumen.m_grupos.begin() + static_cast<std::ptrdiff_t>(cuantos);
    GrupoResumen resto;
    resto.es_resto = true;
    resto.nombre = "Los demás (" + std::to_string(std::distance(donde, resumen.m_grupos.end())) + ")";
    for (auto grupo = donde; grupo != resumen.m_grupos.end(); ++grupo) {
        resto.ahora += grupo->ahora;
        resto.antes += grupo->antes;
    }
    resumen.m_grupos.erase(donde, resumen.m_grupos.end());
    resumen.m_grupos.push_back(std::move(resto));
    return resumen;
}

std::string nota_de(const ResumenCargos& resumen)
{
    std::string nota;
    if (resumen.peticion().por == VistaResumen::articulo)
        nota = "El impuesto de cada artículo es el de sus líneas; los cargos lo redondean una vez cada uno, "
               "y su "
               "suma puede ser otra en unos céntimos.";
    if (!resumen.con_partes() && resumen.total().ahora.cuantos > 0)
        nota += std::string(nota.empty() ? "" : " ")
            + "No se dicen partes del total: hay importes de los dos signos, o todos son cero.";
    return nota;
}

std::optional<Currency> cambio(const GrupoResumen& grupo)
{
    return porcentaje(grupo.ahora.total() - grupo.antes.total(), grupo.antes.total());
}

std::string texto_de_cambio(const GrupoResumen& grupo)
{
    if (grupo.antes.cuantos == 0)
        return grupo.ahora.cuantos == 0 ? "–" : "nuevo";
    return texto_cambio(grupo.antes.total(), grupo.ahora.total());
}

} // namespace atipicos::app
