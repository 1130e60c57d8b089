#include "engines/odbc/Sesion.hpp"

#include "engines/sql/Tokens.hpp"

#include <utility>

namespace atipicos::odbc {

namespace {

    using adodb::Categoria;
    using adodb::ErrorBaseDatos;

}

Sesion::Sesion(const Opciones& opciones, Donde donde)
    : m_enlace(opciones, donde)
    , m_catalogos{ sql::Catalogo(servidor().dialecto), sql::Catalogo(servidor().dialecto) }
{
}

sql::Catalogo& Sesion::catalogo(sql::Lado lado) noexcept
{
    return m_catalogos[static_cast<std::size_t>(lado)];
}

Respuesta Sesion::ejecuta(const std::string& sql, Donde donde)
{
    if (m_transacciones.abierta())
        return ejecuta_protegida(sql, donde);
    if (m_enlace.perdido())
        m_enlace.reanuda(donde);
    return ejecuta_sola(sql, donde);
}

Respuesta Sesion::ejecuta_protegida(const std::string& sql, Donde donde)
{
    try {
        if (servidor().con_puntos)
            m_enlace.ejecuta("SAVEPOINT s", donde);
        auto respuesta = m_enlace.ejecuta(sql, donde);
        if (servidor().con_puntos)
            m_enlace.ejecuta("RELEASE s", donde);
        return respuesta;
    } catch (const ErrorBaseDatos&) {
        repara();
        throw;
    }
}

Respuesta Sesion::ejecuta_sola(const std::string& sql, Donde donde)
{
    try {
        return m_enlace.ejecuta(sql, donde);
    } catch (const ErrorBaseDatos&) {
        // A line that went dead while it was idle is no news to anybody: what has changed nothing is
        // repeated.
        if (!m_enlace.perdido() || !sql::no_cambia_nada(sql))
            throw;
    }
    m_enlace.reanuda(donde);
    return m_enlace.ejecuta(sql, donde);
}

void Sesion::repara() noexcept
{
    if (!m_transacciones.abierta())
        return;
    auto queda = Queda::no_se_sabe;
    try {
        if (!m_enlace.perdido())
            queda = lo_que_queda();
    } catch (...) { // NOLINT(bugprone-empty-catch): the error that led here is the one to show
    }
    if (queda != Queda::todo)
        pierde(queda == Queda::no_se_sabe);
}

Sesion::Queda Sesion::lo_que_queda()
{
    if (!servidor().con_puntos)
        return sigue_viva() ? Queda::todo : Queda::nada;
    m_enlace.ejecuta("ROLLBACK TO s", Donde{}); // an error where there is no such savepoint
    m_enlace.ejecuta("RELEASE s", Donde{});
    return Queda::todo;
}

bool Sesion::sigue_viva()
{
    if (*servidor().transaccion_viva != '\0')
        return CLng(m_enlace.ejecuta(servidor().transaccion_viva, Donde{}).filas.at(0).at(0)) != 0;
    if (*servidor().comienzo_de_prueba == '\0')
        return true;
    try {
        m_enlace.ejecuta(servidor().comienzo_de_prueba, Donde{});
    } catch (const ErrorBaseDatos&) {
        return true;
    }
    m_enlace.ejecuta(servidor().deshace, Donde{});
    return false;
}

void Sesion::pierde(bool deshaz) noexcept
{
    try {
        if (deshaz && !m_enlace.perdido())
            m_enlace.ejecuta(servidor().deshace, Donde{});
    } catch (...) { // the server undoes it when the line goes
        if (!m_enlace.perdido())
            m_enlace.abandona();
    }
    m_vigencia.deshecha();
    m_transacciones.se_pierde(m_enlace.perdido() ? Categoria::conexion : Categoria::otra,
        "La transacción se ha perdido por un error anterior: sólo se puede deshacer.");
}

void Sesion::empieza(Donde donde)
{
    m_con_punto = false;
    ejecuta(servidor().empieza, donde);
}

void Sesion::confirma(Donde donde)
{
    try {
        m_enlace.ejecuta("COMMIT", donde);
    } catch (const ErrorBaseDatos& error) {
        repara();
        if (!m_enlace.perdido())
            throw;
        throw ErrorBaseDatos(error.categoria(), fuente,
            error.descripcion() + " No se sabe si los datos llegaron a guardarse: compruébelo.", "COMMIT",
            donde);
    }
    m_vigencia.confirmada();
}

void Sesion::deshace(Donde donde)
{
    m_vigencia.deshecha();
    try {
        m_enlace.ejecuta(servidor().deshace, donde);
    } catch (const ErrorBaseDatos&) {
        if (!m_enlace.perdido())
            m_enlace.abandona(); // nothing must be written into what is left
        throw;
    }
}

void Sesion::pon_punto(Donde donde)
{
    try {
        if (std::exchange(m_con_punto, false) && *servidor().suelta_punto != '\0')
            m_enlace.ejecuta(servidor().suelta_punto, donde);
        m_enlace.ejecuta(servidor().pon_punto, donde);
    } catch (const ErrorBaseDatos&) {
        repara();
        throw;
    }
    m_con_punto = true;
}

void Sesion::vuelve_al_punto(Donde donde)
{
    m_vigencia.deshecha_en_parte();
    m_con_punto = false;
    try {
        m_enlace.ejecuta(servidor().vuelve_al_punto, donde);
        if (*servidor().suelta_punto != '\0')
            m_enlace.ejecuta(servidor().suelta_punto, donde);
    } catch (const ErrorBaseDatos&) {
        pierde(true); // what was to be undone must not be committed with the rest
        throw;
    }
}

void Sesion::lee_catalogo(Donde donde)
{
    m_claves.clear();
    for (auto& catalogo : m_catalogos)
        catalogo.olvida_fechas();
    if (*servidor().fechas != '\0')
        for (const auto& fila : ejecuta(servidor().fechas, donde).filas)
            for (auto& catalogo : m_catalogos)
                catalogo.agrega_fecha(CStr(fila[0], donde), CStr(fila[1], donde),
                    static_cast<std::size_t>(CLng(fila[2], donde)));
    m_bits.clear();
    if (*servidor().bits != '\0')
        for (const auto& fila : ejecuta(servidor().bits, donde).filas)
            m_bits.emplace(CStr(fila[0], donde), CStr(fila[1], donde));
    m_vigencia.leido();
}

void Sesion::vuelve_bits(Respuesta& respuesta) const
{
    for (std::size_t i = 0; i < respuesta.columnas.size(); ++i)
        if (m_bits.contains(respuesta.columnas[i].origen))
            for (auto& fila : respuesta.filas)
                if (!fila[i].es_nulo())
                    fila[i] = CBool(fila[i]);
}

const std::vector<std::string>& Sesion::columnas_clave(const TablaNombrada& tabla, Donde donde)
{
    const auto lugar = m_claves.find(tabla.calificada);
    if (lugar != m_claves.end())
        return lugar->second;
    try {
        return m_claves.emplace(tabla.calificada, m_enlace.columnas_clave(tabla, donde)).first->second;
    } catch (const ErrorBaseDatos&) {
        repara();
        throw;
    }
}

} // namespace atipicos::odbc
