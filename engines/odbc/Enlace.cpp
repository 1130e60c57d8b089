#include "engines/odbc/Enlace.hpp"

#include "engines/odbc/Unicode.hpp"
#include "engines/sql/Vista.hpp"

#include <array>
#include <sqlucode.h>

namespace atipicos::odbc {

namespace {

    using adodb::Categoria;
    using adodb::ErrorBaseDatos;

    /// Whether one of the words before "=" is that one.
    bool tiene(const std::string& cadena, std::string_view palabra)
    {
        auto tokens = sql::separa(cadena);
        const sql::Vista vista(tokens);
        for (std::size_t i = 0; i < vista.size(); ++i)
            if (vista.es(i, palabra) && vista.es(i + 1, "="))
                return true;
        return false;
    }

    std::string entre_llaves(const std::string& valor)
    {
        std::string texto = "{";
        for (const char c : valor) {
            texto += c;
            if (c == '}')
                texto += c;
        }
        return texto + "}";
    }

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
    , m_servidor(&odbc::servidor({}))
{
    if (tiene(m_opciones.cadena, "PWD") || tiene(m_opciones.cadena, "PASSWORD"))
        throw ErrorBaseDatos(Categoria::conexion, "ODBC",
            "La contraseña no se escribe en la cadena de conexión, donde otros la verían.", {}, donde);
    SQLHANDLE entorno = SQL_NULL_HANDLE;
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &entorno);
    m_entorno.reset(entorno);
    SQLSetEnvAttr(entorno, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    abre(donde);
}

Enlace::~Enlace()
{
    if (m_linea)
        SQLDisconnect(m_linea.get());
}

void Enlace::abre(Donde donde)
{
    SQLHANDLE linea = SQL_NULL_HANDLE;
    SQLAllocHandle(SQL_HANDLE_DBC, m_entorno.get(), &linea);
    m_linea.reset(linea);
    SQLSetConnectAttr(linea, SQL_ATTR_LOGIN_TIMEOUT,
        reinterpret_cast<SQLPOINTER>(m_opciones.espera_conexion.count()), SQL_IS_UINTEGER);
    // As bytes: the driver manager narrows wide texts by halves before it knows the driver.
    auto cadena
        = m_opciones.cadena + (m_opciones.clave.empty() ? "" : ";PWD=" + entre_llaves(m_opciones.clave));
    const auto resultado = SQLDriverConnect(linea, nullptr, reinterpret_cast<SQLCHAR*>(cadena.data()),
        static_cast<SQLSMALLINT>(cadena.size()), nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(resultado))
        throw ErrorBaseDatos(Categoria::conexion, "ODBC",
            "No se puede conectar con el servidor de la base de datos ("
                + error_de(SQL_HANDLE_DBC, linea, servidor(), {}, donde).descripcion() + ").",
            {}, donde);
    m_perdido = false;
    m_servidor = &odbc::servidor(nombre_de_servidor(linea));
    for (const auto& sql : servidor().sesion(m_opciones.espera))
        static_cast<void>(ejecuta(sql, donde));
    if (m_opciones.al_abrir)
        for (const auto& sql : m_opciones.al_abrir(servidor()))
            static_cast<void>(ejecuta(sql, donde));
}

void Enlace::reanuda(Donde donde)
{
    SQLDisconnect(m_linea.get());
    abre(donde);
}

Instruccion Enlace::ejecuta(const std::string& sql, Donde donde)
{
    try {
        return { m_linea.get(), servidor(), sql, donde };
    } catch (const ErrorBaseDatos& error) {
        SQLUINTEGER muerta = SQL_CD_FALSE;
        SQLGetConnectAttr(m_linea.get(), SQL_ATTR_CONNECTION_DEAD, &muerta, SQL_IS_UINTEGER, nullptr);
        m_perdido = error.categoria() == Categoria::conexion || muerta == SQL_CD_TRUE;
        if (!m_perdido)
            throw;
        throw ErrorBaseDatos(Categoria::conexion, "ODBC",
            "Se ha perdido la conexión con el servidor de la base de datos. La próxima operación volverá a "
            "conectar. "
                + error.descripcion(),
            sql, donde);
    }
}

Instruccion Enlace::clave(const std::string& tabla, Donde donde)
{
    return Instruccion::clave(m_linea.get(), servidor(), tabla, donde);
}

} // namespace atipicos::odbc
