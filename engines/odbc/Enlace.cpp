#include "engines/odbc/Enlace.hpp"

#include "runtime/Unicode.hpp"

#include <algorithm>
#include <array>
#include <sqlucode.h>

namespace atipicos::odbc {

namespace {

    using adodb::Categoria;
    using adodb::ErrorBaseDatos;

    std::string nombre_de_servidor(SQLHDBC linea)
    {
        std::array<SQLWCHAR, 128> nombre{};
        SQLSMALLINT bytes = 0;
        SQLGetInfoW(linea, SQL_DBMS_NAME, nombre.data(), sizeof nombre, &bytes);
        return a_utf8({ reinterpret_cast<const char16_t*>(nombre.data()),
            static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR) });
    }

}

Enlace::Enlace(Opciones opciones, Donde donde)
    : m_opciones(std::move(opciones))
    , m_vigia(m_opciones.avisa_espera)
    , m_servidor(&odbc::servidor({}))
{
    if (const Cadena cadena(m_opciones.cadena); cadena.tiene("PWD") || cadena.tiene("PASSWORD"))
        throw ErrorBaseDatos(Categoria::conexion, fuente,
            "La contraseña no se escribe en la cadena de conexión, donde otros la verían.", {}, donde);
    SQLHANDLE entorno = SQL_NULL_HANDLE;
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &entorno);
    m_entorno.reset(entorno);
    SQLSetEnvAttr(entorno, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    m_controlador = controlador_de(Cadena(m_opciones.cadena), entorno);
    abre(donde);
}

Enlace::~Enlace()
{
    const Vigia::Llamada llamada(m_vigia);
    if (m_linea)
        SQLDisconnect(m_linea.get());
}

void Enlace::abre(Donde donde)
{
    SQLHANDLE linea = SQL_NULL_HANDLE;
    SQLAllocHandle(SQL_HANDLE_DBC, m_entorno.get(), &linea);
    m_linea.reset(linea);
    conecta(donde);
    m_perdido = false;
    m_servidor = &odbc::servidor(nombre_de_servidor(linea));
    try {
        for (const auto& sql : servidor().sesion(m_opciones.sesion))
            ejecuta(sql, donde);
        if (m_opciones.al_abrir)
            for (const auto& sql : m_opciones.al_abrir(servidor()))
                ejecuta(sql, donde);
    } catch (...) {
        m_perdido = true; // a session that is not set up is none
        SQLDisconnect(m_linea.get());
        throw;
    }
}

void Enlace::conecta(Donde donde)
{
    SQLSetConnectAttr(m_linea.get(), SQL_ATTR_LOGIN_TIMEOUT,
        // NOLINTNEXTLINE(performance-no-int-to-ptr): ODBC takes numbers so
        reinterpret_cast<SQLPOINTER>(m_opciones.espera_conexion.count()), SQL_IS_UINTEGER);
    Cadena con_clave(m_opciones.cadena);
    if (!m_opciones.clave.empty())
        con_clave.pon("PWD", m_opciones.clave);
    if (!con_clave.admite(m_controlador.llaves))
        throw ErrorBaseDatos(Categoria::conexion, fuente,
            "El controlador FreeTDS no admite «};» dentro de un usuario, una contraseña u otro valor de la "
            "conexión: use otros sin esas dos letras seguidas.",
            {}, donde);
    {
        const Vigia::Llamada llamada(m_vigia);
        if (SQL_SUCCEEDED(m_controlador.conecta(m_linea.get(), con_clave.texto(m_controlador.llaves))))
            return;
    }
    // Nothing has said which product it is; the numbers of SQL Server are looked up only where it can be one.
    const auto& supuesto = m_controlador.es_freetds ? odbc::servidor(nombre_sql_server) : servidor();
    const auto error = error_de(SQL_HANDLE_DBC, m_linea.get(), supuesto, {}, donde);
    if (error.categoria() == Categoria::no_existe)
        throw error;
    throw ErrorBaseDatos(Categoria::conexion, fuente,
        "No se puede conectar con el servidor de la base de datos ("
            + error_de(SQL_HANDLE_DBC, m_linea.get(), servidor(), {}, donde).descripcion() + ").",
        {}, donde);
}

std::chrono::seconds Enlace::limite() const noexcept
{
    // PostgreSQL's driver would ask for its limit in a round trip of its own: there the session has it.
    if (!servidor().dialecto.transact)
        return {};
    const auto todo = m_opciones.sesion.espera_instruccion;
    // FreeTDS calls the statement off after it, and waits as long again for the server to confirm that.
    return m_controlador.es_freetds ? std::max(todo / 2, std::chrono::seconds(1)) : todo;
}

void Enlace::reanuda(Donde donde)
{
    {
        const Vigia::Llamada llamada(m_vigia);
        SQLDisconnect(m_linea.get());
    }
    abre(donde);
    avisa(sql::Linea::reanudada);
}

void Enlace::abandona()
{
    m_perdido = true;
    avisa(sql::Linea::perdida);
}

Respuesta Enlace::ejecuta(const std::string& sql, Donde donde)
{
    try {
        const Vigia::Llamada llamada(m_vigia);
        return odbc::ejecuta(m_linea.get(), servidor(), sql, limite(), donde);
    } catch (const ErrorBaseDatos& error) {
        explica(error, sql, donde);
    }
}

std::vector<std::string> Enlace::columnas_clave(const TablaNombrada& tabla, Donde donde)
{
    try {
        const Vigia::Llamada llamada(m_vigia);
        return odbc::columnas_clave(m_linea.get(), servidor(), tabla, donde);
    } catch (const ErrorBaseDatos& error) {
        try { // of what a driver asks by itself it may not tell that the line is lost
            ejecuta("SELECT 1", donde);
        } catch (const ErrorBaseDatos&) {
            if (m_perdido)
                throw;
        }
        explica(error, {}, donde);
    }
}

void Enlace::avisa(sql::Linea que) const
{
    if (m_opciones.avisa)
        m_opciones.avisa(que);
}

void Enlace::explica(const ErrorBaseDatos& error, const std::string& sql, Donde donde)
{
    SQLUINTEGER muerta = SQL_CD_FALSE;
    SQLGetConnectAttr(m_linea.get(), SQL_ATTR_CONNECTION_DEAD, &muerta, SQL_IS_UINTEGER, nullptr);
    m_perdido = error.categoria() == Categoria::conexion || muerta == SQL_CD_TRUE;
    if (!m_perdido)
        throw error;
    avisa(sql::Linea::perdida);
    throw ErrorBaseDatos(Categoria::conexion, fuente,
        "Se ha perdido la conexión con el servidor de la base de datos. La próxima operación volverá a "
        "conectar. "
            + error.descripcion(),
        sql, donde);
}

} // namespace atipicos::odbc
