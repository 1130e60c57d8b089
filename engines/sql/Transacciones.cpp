#include "engines/sql/Transacciones.hpp"

#include <utility>

namespace atipicos::sql {

namespace {

    using adodb::Categoria;

    constexpr Lado otro(Lado lado) { return lado == Lado::gestion ? Lado::contabilidad : Lado::gestion; }

    constexpr auto no_se_deshizo
        = "Una transacción de la unidad no se ha podido deshacer: sólo se puede deshacer la unidad.";
    constexpr auto deshecha_por_la_otra
        = "La otra conexión ha deshecho la transacción de las dos: sólo se puede deshacer.";

}

void Transacciones::falla(
    Categoria categoria, const std::string& motivo, const std::string& sql, Donde donde) const
{
    throw adodb::ErrorBaseDatos(categoria, m_fuente, motivo, sql, donde);
}

void Transacciones::empieza(Lado lado, Donde donde)
{
    auto& estado = de(lado);
    if (estado == Estado::dentro || estado == Estado::perdida)
        falla(Categoria::instruccion, "Ya hay una transacción abierta en esta conexión.", "BEGIN", donde);
    if (estado == Estado::prometida)
        falla(Categoria::instruccion,
            "La transacción anterior de esta conexión espera a que la otra termine la suya.", "BEGIN", donde);
    if (m_unidad_perdida)
        falla(m_unidad_perdida->categoria, m_unidad_perdida->motivo, "BEGIN", donde);
    if (de(otro(lado)) != Estado::dentro)
        empieza_fisica(donde);
    estado = Estado::dentro;
}

void Transacciones::confirma(Lado lado, Donde donde)
{
    admite(lado, "COMMIT", false, donde);
    auto& estado = de(lado);
    if (estado != Estado::dentro)
        falla(
            Categoria::instruccion, "No hay ninguna transacción abierta en esta conexión.", "COMMIT", donde);
    auto& del_otro = de(otro(lado));
    if (del_otro == Estado::dentro) {
        estado = Estado::prometida;
        return;
    }
    confirma_fisica(donde);
    estado = Estado::fuera;
    if (del_otro == Estado::prometida)
        del_otro = Estado::fuera;
}

void Transacciones::deshace(Lado lado, Donde donde)
{
    auto& estado = de(lado);
    if (estado == Estado::fuera)
        falla(Categoria::instruccion, "No hay ninguna transacción abierta en esta conexión.", "ROLLBACK",
            donde);
    const bool participa = estado == Estado::dentro || estado == Estado::prometida;
    estado = Estado::fuera;
    if (!participa)
        return;
    auto& del_otro = de(otro(lado));
    if (del_otro == Estado::dentro) {
        del_otro = Estado::perdida;
        m_perdidas[static_cast<std::size_t>(otro(lado))] = { Categoria::otra, deshecha_por_la_otra };
    } else if (del_otro == Estado::prometida) {
        del_otro = Estado::deshecha;
    }
    deshace_fisica(donde);
}

void Transacciones::abandona(Lado lado) noexcept
{
    if (!en_transaccion(lado))
        return;
    try {
        deshace(lado, Donde{});
    } catch (...) { // NOLINT(bugprone-empty-catch): a session that cannot even roll back has lost it anyway
    }
}

void Transacciones::admite(Lado lado, const std::string& sql, bool escribe, Donde donde) const
{
    const auto estado = de(lado);
    if (estado == Estado::perdida) {
        const auto& perdida = m_perdidas[static_cast<std::size_t>(lado)];
        falla(perdida.categoria, perdida.motivo, sql, donde);
    }
    if (!escribe || estado == Estado::dentro)
        return;
    if (de(otro(lado)) == Estado::dentro)
        falla(Categoria::instruccion,
            "La otra conexión tiene una transacción abierta y esta no: antes de escribir, empiécela.", sql,
            donde);
    if (m_unidad_perdida)
        falla(m_unidad_perdida->categoria, m_unidad_perdida->motivo, sql, donde);
    if (m_en_unidad)
        falla(Categoria::instruccion, "Dentro de una unidad sólo se escribe en una transacción.", sql, donde);
}

void Transacciones::se_pierde(Categoria categoria, std::string motivo)
{
    if (!std::exchange(m_abierta, false))
        return;
    const Perdida perdida{ categoria, std::move(motivo) };
    for (const auto lado : { Lado::gestion, Lado::contabilidad }) {
        if (de(lado) == Estado::dentro) {
            de(lado) = Estado::perdida;
            m_perdidas[static_cast<std::size_t>(lado)] = perdida;
        } else if (de(lado) == Estado::prometida) {
            de(lado) = Estado::deshecha;
        }
    }
    if (m_en_unidad)
        m_unidad_perdida = perdida;
}

void Transacciones::empieza_fisica(Donde donde)
{
    if (m_en_unidad) {
        m_con_punto = false;
        m_fisica.pon_punto(donde);
        m_con_punto = true;
        return;
    }
    m_fisica.empieza(donde);
    m_abierta = true;
}

void Transacciones::confirma_fisica(Donde donde)
{
    if (m_en_unidad)
        return; // with the unit
    m_fisica.confirma(donde);
    m_abierta = false;
}

void Transacciones::deshace_fisica(Donde donde)
{
    if (m_en_unidad) {
        if (m_abierta && std::exchange(m_con_punto, false))
            vuelve_al_punto(donde);
        return;
    }
    if (std::exchange(m_abierta, false))
        m_fisica.deshace(donde);
}

/// What cannot be undone alone is still there: then nothing of the unit may be kept.
void Transacciones::vuelve_al_punto(Donde donde)
{
    m_unidad_perdida = Perdida{ Categoria::otra, no_se_deshizo };
    m_fisica.vuelve_al_punto(donde);
    if (m_abierta)
        m_unidad_perdida.reset();
}

void Transacciones::exige_terminadas(Donde donde) const
{
    if (en_transaccion(Lado::gestion) || en_transaccion(Lado::contabilidad))
        falla(Categoria::instruccion, "Hay una transacción abierta: termínela antes.", {}, donde);
}

void Transacciones::empieza_unidad(Donde donde)
{
    exige_terminadas(donde);
    if (m_en_unidad)
        falla(Categoria::instruccion, "Ya hay una unidad abierta.", "BEGIN", donde);
    m_fisica.empieza(donde);
    m_abierta = true;
    m_en_unidad = true;
    m_con_punto = false;
}

void Transacciones::confirma_unidad(Donde donde)
{
    exige_terminadas(donde);
    if (m_unidad_perdida)
        falla(m_unidad_perdida->categoria, m_unidad_perdida->motivo, "COMMIT", donde);
    if (!m_en_unidad)
        falla(Categoria::instruccion, "No hay ninguna unidad abierta.", "COMMIT", donde);
    m_fisica.confirma(donde);
    m_abierta = false;
    m_en_unidad = false;
}

void Transacciones::deshace_unidad(Donde donde)
{
    m_en_unidad = false;
    m_con_punto = false;
    m_unidad_perdida.reset();
    for (auto& estado : m_estados)
        if (estado == Estado::dentro || estado == Estado::prometida)
            estado = Estado::deshecha;
    if (std::exchange(m_abierta, false))
        m_fisica.deshace(donde);
}

void Transacciones::deshace_ultima(Donde donde)
{
    exige_terminadas(donde);
    if (m_unidad_perdida)
        falla(m_unidad_perdida->categoria, m_unidad_perdida->motivo, "ROLLBACK", donde);
    if (m_en_unidad && std::exchange(m_con_punto, false))
        vuelve_al_punto(donde);
}

bool Transacciones::en_transaccion(Lado lado) const noexcept
{
    return de(lado) == Estado::dentro || de(lado) == Estado::perdida;
}

} // namespace atipicos::sql
