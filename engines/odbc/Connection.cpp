#include "engines/odbc/Connection.hpp"

#include "engines/odbc/Escritura.hpp"
#include "engines/odbc/Recordset.hpp"
#include "engines/sql/Tokens.hpp"

namespace atipicos::odbc {

namespace {

    using adodb::Categoria;
    using adodb::ErrorBaseDatos;

    constexpr auto fuente = "ODBC";

}

Connection::Connection(const Opciones& opciones, Donde donde)
    : m_enlace(opciones, donde)
    , m_catalogo(m_enlace.servidor().dialecto)
{
    for (const auto& [base, esquema] : opciones.bases)
        m_catalogo.agrega_base(base, esquema + ".");
}

std::shared_ptr<Connection> Connection::Abrir(const Opciones& opciones, Donde donde)
{
    return std::shared_ptr<Connection>(new Connection(opciones, donde));
}

void Connection::Execute(const std::string& sql, std::int32_t* afectadas, adodb::CommandType, Donde donde)
{
    const auto respuesta = ejecuta(reescribe(sql, donde), donde);
    if (afectadas != nullptr)
        *afectadas = respuesta.afectadas;
    m_vigencia.ejecutada(sql);
}

std::string Connection::reescribe(const std::string& sql, Donde donde)
{
    if (!m_vigencia.vale())
        lee_catalogo(donde);
    return sql::reescribe(sql, m_catalogo, donde);
}

Respuesta Connection::ejecuta(const std::string& sql, Donde donde)
{
    if (sql.find('\0') != std::string::npos)
        throw ErrorBaseDatos(Categoria::instruccion, fuente,
            "La instrucción contiene un carácter nulo, que la base de datos no admite.", sql, donde);
    asegura_enlace(sql, donde);
    return m_en_transaccion ? ejecuta_protegida(sql, donde) : ejecuta_sola(sql, donde);
}

Respuesta Connection::ejecuta_protegida(const std::string& sql, Donde donde)
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

Respuesta Connection::ejecuta_sola(const std::string& sql, Donde donde)
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

Respuesta Connection::pide_bloqueando(const std::string& sql, Donde donde)
{
    const auto bloqueando = con_bloqueo(sql, servidor());
    auto respuesta = ejecuta(bloqueando, donde);
    if (!respuesta.filas.empty() || *servidor().bloqueo_de_nada == '\0')
        return respuesta;
    ejecuta(servidor().bloqueo_de_nada + literal(sql, servidor(), donde) + ", 0))", donde);
    return ejecuta(bloqueando, donde);
}

void Connection::repara() noexcept
{
    if (m_enlace.perdido())
        return;
    try {
        m_transaccion_perdida = !sigue_viva();
    } catch (...) { // the error that led here is the one to show
        m_transaccion_perdida = true;
    }
}

bool Connection::sigue_viva()
{
    if (servidor().con_puntos) {
        m_enlace.ejecuta("ROLLBACK TO s", Donde{});
        m_enlace.ejecuta("RELEASE s", Donde{});
    }
    if (*servidor().transaccion_viva == '\0')
        return true;
    return CLng(m_enlace.ejecuta(servidor().transaccion_viva, Donde{}).filas.at(0).at(0)) != 0;
}

void Connection::BeginTrans(Donde donde)
{
    if (m_en_transaccion)
        throw ErrorBaseDatos(Categoria::instruccion, fuente,
            "Ya hay una transacción abierta en esta conexión.", "BEGIN", donde);
    ejecuta(servidor().empieza, donde);
    m_en_transaccion = true;
}

void Connection::CommitTrans(Donde donde)
{
    comprueba_transaccion("COMMIT", donde);
    asegura_enlace("COMMIT", donde);
    try {
        m_enlace.ejecuta("COMMIT", donde);
    } catch (const ErrorBaseDatos& error) {
        if (!m_enlace.perdido())
            throw;
        throw ErrorBaseDatos(error.categoria(), fuente,
            error.descripcion() + " No se sabe si los datos llegaron a guardarse: compruébelo.", "COMMIT",
            donde);
    }
    m_en_transaccion = false;
    m_vigencia.confirmada();
}

void Connection::RollbackTrans(Donde donde)
{
    comprueba_transaccion("ROLLBACK", donde);
    m_en_transaccion = false;
    m_vigencia.deshecha();
    const bool perdida = std::exchange(m_transaccion_perdida, false);
    if (!m_enlace.perdido() && !perdida)
        m_enlace.ejecuta(servidor().deshace, donde);
}

void Connection::comprueba_transaccion(const char* instruccion, Donde donde) const
{
    if (!m_en_transaccion)
        throw ErrorBaseDatos(Categoria::instruccion, fuente,
            "No hay ninguna transacción abierta en esta conexión.", instruccion, donde);
}

void Connection::asegura_enlace(const std::string& sql, Donde donde)
{
    if (m_en_transaccion && (m_transaccion_perdida || m_enlace.perdido()))
        throw ErrorBaseDatos(m_enlace.perdido() ? Categoria::conexion : Categoria::otra, fuente,
            "La transacción se ha perdido por un error anterior: sólo se puede deshacer.", sql, donde);
    if (m_enlace.perdido())
        m_enlace.reanuda(donde);
}

std::unique_ptr<adodb::Recordset> Connection::CreateRecordset() { return std::make_unique<Recordset>(*this); }

void Connection::lee_catalogo(Donde donde)
{
    m_claves.clear();
    m_catalogo.olvida_fechas();
    if (*servidor().fechas != '\0')
        for (const auto& fila : ejecuta(servidor().fechas, donde).filas)
            m_catalogo.agrega_fecha(
                CStr(fila[0], donde), CStr(fila[1], donde), static_cast<std::size_t>(CLng(fila[2], donde)));
    m_bits.clear();
    if (*servidor().bits != '\0')
        for (const auto& fila : ejecuta(servidor().bits, donde).filas)
            m_bits.emplace(CStr(fila[0], donde), CStr(fila[1], donde));
    m_vigencia.leido();
}

void Connection::vuelve_bits(Respuesta& respuesta) const
{
    for (std::size_t i = 0; i < respuesta.columnas.size(); ++i)
        if (m_bits.contains(respuesta.columnas[i].origen))
            for (auto& fila : respuesta.filas)
                if (!fila[i].es_nulo())
                    fila[i] = CBool(fila[i]);
}

const std::vector<std::string>& Connection::columnas_clave(const std::string& tabla, Donde donde)
{
    const auto lugar = m_claves.find(tabla);
    return lugar != m_claves.end()
        ? lugar->second
        : m_claves.emplace(tabla, m_enlace.columnas_clave(tabla, donde)).first->second;
}

} // namespace atipicos::odbc
