#include "engines/postgresql/Puntos.hpp"

#include <utility>

namespace atipicos::postgresql {

void Puntos::pon() noexcept
{
    if (m_unidad == Unidad::sin_punto)
        m_unidad = Unidad::por_poner;
    else if (m_unidad == Unidad::puesto)
        m_unidad = Unidad::por_mover;
    // else nothing has come behind where it is, or behind where the server will have gone back to
}

void Puntos::vuelve() noexcept
{
    if (m_unidad == Unidad::por_poner)
        m_unidad = Unidad::sin_punto;
    else if (m_unidad == Unidad::por_mover)
        m_unidad = Unidad::puesto;
    else if (m_unidad == Unidad::puesto)
        m_unidad = Unidad::por_volver;
}

Envio Puntos::con(const Orden& orden, bool cambia) const
{
    Envio envio;
    envio.ordenes.reserve(6);
    agrega_previas(envio.ordenes);
    envio.lugar = envio.ordenes.size();
    envio.ordenes.push_back(orden);
    if (cambia) {
        auto despues = *this;
        despues.cumple_previas();
        if (despues.m_tras_cambio)
            envio.ordenes.push_back({ "RELEASE s" });
        envio.ordenes.push_back({ "SAVEPOINT s" });
    }
    return envio;
}

void Puntos::agrega_previas(std::vector<Orden>& ordenes) const
{
    if (!m_empezada)
        ordenes.push_back({ "BEGIN" });
    if (m_unidad == Unidad::por_mover)
        ordenes.push_back({ "RELEASE u" });
    if (m_unidad == Unidad::por_poner || m_unidad == Unidad::por_mover)
        ordenes.push_back({ "SAVEPOINT u" });
    if (m_unidad == Unidad::por_volver)
        ordenes.push_back({ "ROLLBACK TO u" });
}

void Puntos::cumple_previas() noexcept
{
    m_empezada = true;
    if (m_unidad == Unidad::sin_punto || m_unidad == Unidad::puesto)
        return;
    m_unidad = Unidad::puesto;
    m_tras_cambio = false; // `s` stood behind the former `u`
}

void Puntos::lograda(bool cambia) noexcept
{
    cumple_previas();
    m_tras_cambio = m_tras_cambio || cambia;
    m_cambiada = m_cambiada || cambia;
}

const char* Puntos::fallida(bool previas) noexcept
{
    if (previas)
        cumple_previas();
    if (m_tras_cambio)
        return "ROLLBACK TO s";
    if (m_unidad != Unidad::sin_punto && m_unidad != Unidad::por_poner)
        return "ROLLBACK TO u";
    m_empezada = false;
    return "ROLLBACK";
}

std::vector<Orden> Puntos::confirmacion() const
{
    std::vector<Orden> ordenes;
    if (!m_empezada)
        return ordenes;
    if (m_unidad == Unidad::por_volver)
        agrega_previas(ordenes);
    ordenes.push_back({ "COMMIT" });
    return ordenes;
}

} // namespace atipicos::postgresql
