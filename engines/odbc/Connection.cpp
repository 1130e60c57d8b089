#include "engines/odbc/Connection.hpp"

#include "engines/odbc/Recordset.hpp"
#include "engines/sql/Tokens.hpp"

namespace atipicos::odbc {

namespace {

    using adodb::Categoria;
    using adodb::ErrorBaseDatos;

    constexpr auto fuente = "ODBC";

    bool cambia_el_esquema(std::string_view sql)
    {
        const auto primera = sql::primera_palabra(sql);
        return sql::iguales(primera, "CREATE") || sql::iguales(primera, "ALTER")
            || sql::iguales(primera, "DROP");
    }

}

Connection::Connection(const Opciones& opciones, Donde donde)
    : m_enlace(opciones, donde)
    , m_catalogo({ .isnull = m_enlace.servidor().isnull })
{
    for (const auto& [base, esquema] : opciones.bases)
        m_catalogo.agrega_base(base, esquema);
}

std::shared_ptr<Connection> Connection::Abrir(const Opciones& opciones, Donde donde)
{
    return std::shared_ptr<Connection>(new Connection(opciones, donde));
}

void Connection::Execute(const std::string& sql, std::int32_t* afectadas, adodb::CommandType, Donde donde)
{
    const auto instruccion = ejecuta(reescribe(sql, donde), donde);
    if (afectadas != nullptr)
        *afectadas = instruccion.afectadas();
    if (cambia_el_esquema(sql))
        m_catalogo_leido = false;
}

std::string Connection::reescribe(const std::string& sql, Donde donde)
{
    if (sql.find('\0') != std::string::npos)
        throw ErrorBaseDatos(Categoria::instruccion, fuente,
            "La instrucción contiene un carácter nulo, que la base de datos no admite.", sql, donde);
    if (!m_catalogo_leido)
        lee_catalogo(donde);
    return sql::reescribe(sql, m_catalogo, donde);
}

Instruccion Connection::ejecuta(const std::string& sql, Donde donde)
{
    asegura_enlace(sql, donde);
    const bool con_punto = m_en_transaccion && servidor().con_puntos;
    if (con_punto)
        static_cast<void>(m_enlace.ejecuta("SAVEPOINT s", donde));
    try {
        auto instruccion = m_enlace.ejecuta(sql, donde);
        if (con_punto)
            static_cast<void>(m_enlace.ejecuta("RELEASE s", donde));
        return instruccion;
    } catch (const ErrorBaseDatos&) {
        repara();
        throw;
    }
}

void Connection::repara() noexcept
{
    if (!m_en_transaccion || m_enlace.perdido())
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
        static_cast<void>(m_enlace.ejecuta("ROLLBACK TO s", Donde{}));
        static_cast<void>(m_enlace.ejecuta("RELEASE s", Donde{}));
    }
    if (*servidor().transaccion_viva == '\0')
        return true;
    auto abiertas = m_enlace.ejecuta(servidor().transaccion_viva, Donde{});
    return abiertas.avanza(Donde{}) && CLng(abiertas.lee(0, Tipo::Entero, Donde{})) != 0;
}

void Connection::BeginTrans(Donde donde)
{
    if (m_en_transaccion)
        throw ErrorBaseDatos(Categoria::instruccion, fuente,
            "Ya hay una transacción abierta en esta conexión.", "BEGIN", donde);
    static_cast<void>(ejecuta(servidor().empieza, donde));
    m_en_transaccion = true;
}

void Connection::CommitTrans(Donde donde)
{
    comprueba_transaccion("COMMIT", donde);
    asegura_enlace("COMMIT", donde);
    try {
        static_cast<void>(m_enlace.ejecuta("COMMIT", donde));
    } catch (const ErrorBaseDatos& error) {
        if (!m_enlace.perdido())
            throw;
        throw ErrorBaseDatos(error.categoria(), fuente,
            error.descripcion() + " No se sabe si los datos llegaron a guardarse: compruébelo.", "COMMIT",
            donde);
    }
    m_en_transaccion = false;
}

void Connection::RollbackTrans(Donde donde)
{
    comprueba_transaccion("ROLLBACK", donde);
    m_en_transaccion = false;
    m_catalogo_leido = false; // tables made in it are gone
    const bool perdida = std::exchange(m_transaccion_perdida, false);
    if (!m_enlace.perdido() && !perdida)
        static_cast<void>(m_enlace.ejecuta(servidor().deshace, donde));
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
    if (*servidor().fechas != '\0') {
        auto consulta = ejecuta(servidor().fechas, donde);
        while (consulta.avanza(donde)) {
            const auto tabla = CStr(consulta.lee(0, Tipo::Texto, donde), donde);
            const auto columna = CStr(consulta.lee(1, Tipo::Texto, donde), donde);
            m_catalogo.agrega_fecha(
                tabla, columna, static_cast<std::size_t>(CLng(consulta.lee(2, Tipo::Entero, donde), donde)));
        }
    }
    m_catalogo_leido = true;
}

const std::vector<std::string>& Connection::columnas_clave(const std::string& tabla, Donde donde)
{
    constexpr int nombre_de_columna = 3;
    const auto [lugar, nueva] = m_claves.try_emplace(tabla);
    if (nueva) {
        auto consulta = m_enlace.clave(tabla, donde);
        while (consulta.avanza(donde))
            lugar->second.push_back(CStr(consulta.lee(nombre_de_columna, Tipo::Texto, donde), donde));
    }
    return lugar->second;
}

} // namespace atipicos::odbc
