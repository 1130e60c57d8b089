#include "engines/postgresql/Sesion.hpp"

#include "engines/sql/Postgresql.hpp"
#include "engines/sql/Reescritura.hpp"
#include "engines/sql/Tokens.hpp"

#include <algorithm>
#include <utility>

namespace atipicos::postgresql {

namespace {

    using adodb::Categoria;
    using adodb::ErrorBaseDatos;

    constexpr auto con_la_conexion = "La transacción se ha perdido con la conexión: sólo se puede deshacer.";
    constexpr auto al_confirmar
        = "La transacción se ha perdido porque no se ha podido confirmar: sólo se puede deshacer.";
    constexpr auto por_el_servidor
        = "La transacción se ha perdido porque el servidor la ha terminado: sólo se puede deshacer.";

    constexpr auto no_se_guardo = "Se ha perdido la conexión con el servidor de la base de datos al "
                                  "confirmar. Se ha vuelto a conectar y "
                                  "se ha comprobado: no se ha guardado nada. Repita la operación.";
    constexpr auto no_se_sabe = "No se sabe si los datos llegaron a guardarse: compruébelo.";

    /// Each time a transaction that has not ended is waited for as long as for any other's lock.
    constexpr int veces_que_se_busca = 6;

    std::string con_bloqueo(std::string sql, bool bloquea)
    {
        return bloquea ? std::move(sql).append(Preparadas::bloqueando) : std::move(sql);
    }

    /// Whether an error may be one of a value, or of what the server makes of it.
    bool es_de_los_valores(const Respuesta& respuesta)
    {
        const auto codigo = codigo_de(respuesta);
        return codigo.starts_with("22") || codigo.starts_with("42")
            || codigo == "23514"; // no value of a domain
    }

}

Sesion::Sesion(const Opciones& opciones, Donde donde)
    : m_enlace(opciones, donde)
    , m_catalogos{ sql::Catalogo(sql::dialecto_postgresql()), sql::Catalogo(sql::dialecto_postgresql()) }
    , m_solo_lectura(opciones.solo_lectura)
    , m_transacciones(*this, fuente)
{
}

sql::Catalogo& Sesion::catalogo(sql::Lado lado) noexcept
{
    return m_catalogos[static_cast<std::size_t>(lado)];
}

void Sesion::asegura_catalogo(Donde donde)
{
    if (!m_vigencia.vale())
        lee_catalogo(donde);
}

std::string Sesion::reescribe(sql::Lado lado, const std::string& sql, Donde donde)
{
    if (sql.find('\0') != std::string::npos)
        throw ErrorBaseDatos(Categoria::instruccion, fuente,
            "La instrucción contiene un carácter nulo, que la base de datos no admite.", sql, donde);
    asegura_catalogo(donde);
    return sql::reescribe(sql, catalogo(lado), donde);
}

void Sesion::lee_catalogo(Donde donde)
{
    m_tablas.lee(ejecuta({ Tablas::consulta }, false, donde), m_catalogos);
    m_preparadas.olvida_formas();
    m_vigencia.leido();
}

Respuesta Sesion::pide(sql::Lado lado, const std::string& sql, bool cambia, bool bloquea, Donde donde)
{
    if (m_enlace.con_preparadas())
        if (auto respuesta = pide_preparada(lado, sql, cambia, bloquea, donde))
            return *std::move(respuesta);
    const auto texto = con_bloqueo(reescribe(lado, sql, donde), bloquea);
    return ejecuta({ texto.c_str() }, cambia, donde);
}

Respuesta Sesion::pide_para_leer(sql::Lado lado, const std::string& sql, Lectura& lectura, Donde donde)
{
    if (m_enlace.con_preparadas())
        if (auto respuesta = pide_preparada(lado, sql, false, false, donde))
            return *std::move(respuesta);
    const auto texto = reescribe(lado, sql, donde);
    if (m_transacciones.abierta() || !sql::no_cambia_nada(texto) || texto.find(';') != std::string::npos)
        return ejecuta({ texto.c_str() }, false, donde);
    m_enlace.exige_libre(donde);
    asegura_enlace(donde);
    Respuesta primera;
    try {
        primera = m_enlace.empieza_lectura(texto, lectura, donde);
    } catch (const ErrorBaseDatos&) { // a line that went dead while it was idle
        asegura_enlace(donde);
        primera = m_enlace.empieza_lectura(texto, lectura, donde);
    }
    if (es_error(primera))
        throw error_de(primera, texto, donde);
    return primera;
}

/// Nothing when the statement is to go as a text: because it is not prepared, because the server no longer
/// has what was, or because the text alone says exactly what is wrong with a value.
std::optional<Respuesta> Sesion::pide_preparada(
    sql::Lado lado, const std::string& sql, bool cambia, bool bloquea, Donde donde)
{
    asegura_catalogo(donde);
    const auto pedido = m_preparadas.de_lado(lado, sql, bloquea, catalogo(lado), donde);
    if (!pedido)
        return std::nullopt;
    const auto texto = [&] { return con_bloqueo(sql::reescribe(sql, catalogo(lado), donde), bloquea); };
    Respuesta respuesta;
    try {
        respuesta = intenta(pedido->orden, cambia, donde);
    } catch (const ErrorBaseDatos& error) {
        throw ErrorBaseDatos(error.categoria(), error.fuente(), error.descripcion(), texto(), donde);
    }
    if (!es_error(respuesta))
        return respuesta;
    if (ha_olvidado(respuesta, *pedido->orden.preparada))
        return std::nullopt;
    if (pedido->orden.valores.empty() || !es_de_los_valores(respuesta))
        throw error_de(respuesta, texto(), donde);
    auto otra = intenta({ texto().c_str() }, cambia, donde);
    if (es_error(otra))
        throw error_de(otra, texto(), donde);
    pedido->como_texto = true;
    return otra;
}

bool Sesion::ha_olvidado(const Respuesta& respuesta, Preparada& preparada)
{
    const auto codigo = codigo_de(respuesta);
    if (codigo == "26000") // it has no such statement
        m_enlace.olvida_preparadas();
    else if (codigo == "0A000") // its rows are no longer what they were
        preparada.olvida();
    else
        return false;
    return true;
}

Respuesta Sesion::ejecuta(const Orden& orden, bool cambia, Donde donde)
{
    auto respuesta = intenta(orden, cambia, donde);
    if (es_error(respuesta) && orden.preparada != nullptr && ha_olvidado(respuesta, *orden.preparada))
        respuesta = intenta({ orden.sql, orden.valores }, cambia, donde);
    if (es_error(respuesta))
        throw error_de(respuesta, orden.sql, donde);
    return respuesta;
}

Respuesta Sesion::intenta(const Orden& orden, bool cambia, Donde donde)
{
    m_enlace.exige_libre(donde);
    return m_transacciones.abierta() ? intenta_dentro(orden, cambia, donde) : intenta_fuera(orden, donde);
}

Respuesta Sesion::intenta_dentro(const Orden& orden, bool cambia, Donde donde)
{
    const auto envio = m_puntos.con(orden, cambia);
    std::vector<Respuesta> respuestas;
    try {
        respuestas = intercambia(envio.ordenes, orden.sql, !m_puntos.empezada(), donde);
    } catch (const ErrorBaseDatos&) {
        pierde(Categoria::conexion, con_la_conexion);
        throw;
    }
    const auto fallida = std::find_if(respuestas.begin(), respuestas.end(), es_error);
    if (fallida != respuestas.end()) {
        const auto lugar = static_cast<std::size_t>(fallida - respuestas.begin());
        vuelve_atras(lugar >= envio.lugar, donde);
        return std::move(*fallida);
    }
    m_puntos.lograda(cambia);
    return std::move(respuestas[envio.lugar]);
}

void Sesion::vuelve_atras(bool previas, Donde donde)
{
    const bool empezada = previas || m_puntos.empezada();
    const auto* const atras = m_puntos.fallida(previas);
    if (PQtransactionStatus(base()) == PQTRANS_IDLE) {
        if (empezada) // else not even its beginning was understood, which stood in the same text
            pierde(Categoria::otra, por_el_servidor);
        return;
    }
    try {
        if (es_error(di(atras, donde)))
            pierde(Categoria::otra, por_el_servidor);
    } catch (const ErrorBaseDatos&) {
        pierde(Categoria::conexion, con_la_conexion);
        throw;
    }
}

Respuesta Sesion::intenta_fuera(const Orden& orden, Donde donde)
{
    // A line that went dead while it was idle is no news to anybody: what has changed nothing is repeated.
    auto respuestas = intercambia({ &orden, 1 }, orden.sql, sql::no_cambia_nada(orden.sql), donde);
    return std::move(respuestas.front());
}

std::vector<Respuesta> Sesion::intercambia(
    std::span<const Orden> ordenes, std::string_view instruccion, bool repetible, Donde donde)
{
    asegura_enlace(donde);
    try {
        return m_enlace.intercambia(ordenes, instruccion, donde);
    } catch (const ErrorBaseDatos&) {
        if (!repetible)
            throw;
    }
    asegura_enlace(donde);
    return m_enlace.intercambia(ordenes, instruccion, donde);
}

Respuesta Sesion::di(const char* sql, Donde donde)
{
    const Orden orden{ sql };
    return std::move(m_enlace.intercambia({ &orden, 1 }, sql, donde).front());
}

void Sesion::asegura_enlace(Donde donde)
{
    if (!m_enlace.perdido())
        return;
    m_enlace.reanuda(donde);
    m_vigencia.caduca();
}

void Sesion::pierde(Categoria categoria, const char* motivo)
{
    m_transacciones.se_pierde(categoria, motivo);
    m_vigencia.deshecha();
    if (m_enlace.perdido() || PQtransactionStatus(base()) == PQTRANS_IDLE)
        return;
    try {
        static_cast<void>(di("ROLLBACK", Donde{}));
    } catch (const ErrorBaseDatos&) { // NOLINT(bugprone-empty-catch): then the server does it by itself
    }
}

void Sesion::empieza(Donde) { m_puntos.empieza(); }

void Sesion::confirma(Donde donde)
{
    auto ordenes = m_puntos.confirmacion();
    if (!ordenes.empty()) {
        const bool con_clave = lleva_clave();
        if (con_clave) {
            auto& clave = m_confirmaciones.escribe();
            clave.preparada = preparada(clave.sql);
            ordenes.insert(ordenes.end() - 1, clave);
        }
        std::vector<Respuesta> respuestas;
        try {
            respuestas = m_enlace.intercambia(ordenes, "COMMIT", donde);
        } catch (const ErrorBaseDatos& error) {
            aclara(error, con_clave ? busca_confirmacion(donde) : Confirmada::no_se_sabe, donde);
            return m_vigencia.confirmada();
        }
        const auto fallida = std::find_if(respuestas.begin(), respuestas.end(), es_error);
        if (fallida != respuestas.end()) {
            pierde(Categoria::otra, al_confirmar);
            throw error_de(*fallida, "COMMIT", donde);
        }
        if (con_clave)
            m_confirmaciones.confirmada();
    }
    m_vigencia.confirmada();
}

bool Sesion::lleva_clave() const
{
    return !m_solo_lectura && m_puntos.cambiada() && m_tablas.tabla(Confirmaciones::tabla) != nullptr;
}

Sesion::Confirmada Sesion::busca_confirmacion(Donde donde)
{
    auto& orden = m_confirmaciones.pregunta();
    for (int vez = 0; vez < veces_que_se_busca; ++vez) {
        try {
            asegura_enlace(donde);
        } catch (const ErrorBaseDatos&) {
            return Confirmada::no_se_sabe;
        }
        try {
            const auto respuesta = std::move(m_enlace.intercambia({ &orden, 1 }, orden.sql, donde).front());
            if (!es_error(respuesta))
                return PQgetvalue(respuesta.get(), 0, 0) == std::string_view("1") ? Confirmada::si
                                                                                  : Confirmada::no;
            const auto error = error_de(respuesta, orden.sql, donde);
            if (error.categoria() != Categoria::bloqueo && error.categoria() != Categoria::conexion)
                return Confirmada::no_se_sabe;
        } catch (const ErrorBaseDatos&) { // NOLINT(bugprone-empty-catch): lost again, and opened again
        }
    }
    return Confirmada::no_se_sabe;
}

void Sesion::aclara(const ErrorBaseDatos& error, Confirmada que, Donde donde)
{
    if (que == Confirmada::si)
        return;
    pierde(Categoria::conexion, con_la_conexion);
    throw ErrorBaseDatos(error.categoria(), fuente,
        que == Confirmada::no ? no_se_guardo : error.descripcion() + " " + no_se_sabe, "COMMIT", donde);
}

void Sesion::deshace(Donde donde)
{
    m_vigencia.deshecha();
    if (m_puntos.empezada() && !m_enlace.perdido() && PQtransactionStatus(base()) != PQTRANS_IDLE)
        static_cast<void>(di("ROLLBACK", donde));
}

void Sesion::pon_punto(Donde) { m_puntos.pon(); }

void Sesion::vuelve_al_punto(Donde)
{
    m_puntos.vuelve();
    m_vigencia.deshecha_en_parte();
}

} // namespace atipicos::postgresql
