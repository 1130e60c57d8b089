#pragma once

#include <cstdlib>
#include <string>

/// A SQL Server of somebody's, for tests: they drop its databases Orvalin and Bexmor and make them anew.
namespace atipicos::pruebas::sqlserver {

/// The connection string, without a password: that is where the program looks for it, in
/// ATIPICOS_ODBC_CLAVE.
[[nodiscard]] inline std::string cadena()
{
    const char* valor = std::getenv("ATIPICOS_TEST_SQLSERVER");
    return valor == nullptr ? "" : valor;
}

[[nodiscard]] inline std::string clave()
{
    const char* valor = std::getenv("ATIPICOS_ODBC_CLAVE");
    return valor == nullptr ? "" : valor;
}

/// What there is to set before there can be one; empty when nothing.
[[nodiscard]] inline std::string falta()
{
    return cadena().empty()
        ? "set ATIPICOS_TEST_SQLSERVER to an ODBC connection string, and ATIPICOS_ODBC_CLAVE to its password"
        : "";
}

/// A statement that drops a database, also when somebody is connected to it.
[[nodiscard]] inline std::string borra(const std::string& base)
{
    return "IF DB_ID('" + base + "') IS NOT NULL BEGIN ALTER DATABASE " + base
        + " SET SINGLE_USER WITH ROLLBACK IMMEDIATE DROP DATABASE " + base + " END";
}

} // namespace atipicos::pruebas::sqlserver
