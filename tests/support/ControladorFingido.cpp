// An ODBC driver that says it is SQL Server's, for the driver manager to load. It has no database: it writes
// what it is told into the file that DATABASE names, a line each, keeps count of transactions, and fails as
// the server does on statements that name one of the accidents below. It knows no more calls than the engine
// makes.
#include "engines/odbc/Unicode.hpp"

#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>
#include <string>
#include <utility>

namespace {

struct Accidente {
    const char* nombre;
    const char* sqlstate;
    SQLINTEGER numero;
    bool deshace_todo;
    bool al_leer; ///< comes with the first row, not with the statement
};
constexpr std::array<Accidente, 5> accidentes{ {
    { "ClaveRepetida", "23000", 2627, false, false },
    { "Espera", "HY000", 1222, false, false },
    { "EsperaAlLeer", "HY000", 1222, false, true },
    { "Interbloqueo", "40001", 1205, true, false },
    { "LineaCortada", "08S01", 0, true, false },
} };

struct Linea {
    std::string registro;
    int abiertas = 0;
    const Accidente* fallo = nullptr;
};

struct Instruccion {
    Linea* linea;
    bool con_filas = false;
    bool leida = false;
};

Linea& linea(SQLHANDLE asa) { return *static_cast<Linea*>(asa); }
Instruccion& instruccion(SQLHANDLE asa) { return *static_cast<Instruccion*>(asa); }

bool nombra(const std::string& sql, const Accidente& accidente)
{
    return sql.find(accidente.nombre + std::string(" ")) != std::string::npos
        || sql.ends_with(accidente.nombre);
}

SQLRETURN falla(Linea& suya, const Accidente& accidente)
{
    suya.fallo = &accidente;
    if (accidente.deshace_todo)
        suya.abiertas = 0;
    return SQL_ERROR;
}

void copia(const std::string& texto, SQLWCHAR* destino, std::size_t letras)
{
    const auto ancho = atipicos::odbc::a_utf16(texto);
    const auto cuantas = std::min(ancho.size(), letras - 1);
    std::memcpy(destino, ancho.data(), cuantas * sizeof(SQLWCHAR));
    destino[cuantas] = 0;
}

}

extern "C" {

SQLRETURN SQLAllocHandle(SQLSMALLINT tipo, SQLHANDLE de, SQLHANDLE* asa)
{
    *asa = tipo == SQL_HANDLE_STMT ? static_cast<SQLHANDLE>(new Instruccion{ &linea(de) })
                                   : static_cast<SQLHANDLE>(new Linea);
    return SQL_SUCCESS;
}

SQLRETURN SQLFreeHandle(SQLSMALLINT tipo, SQLHANDLE asa)
{
    if (tipo == SQL_HANDLE_STMT)
        delete &instruccion(asa);
    else
        delete &linea(asa);
    return SQL_SUCCESS;
}

SQLRETURN SQLDriverConnectW(SQLHDBC asa, SQLHWND, SQLWCHAR* cadena, SQLSMALLINT letras, SQLWCHAR*,
    SQLSMALLINT, SQLSMALLINT*, SQLUSMALLINT)
{
    std::string texto; // the driver manager has made a wide letter of each byte
    std::transform(cadena, cadena + letras, std::back_inserter(texto),
        [](SQLWCHAR letra) { return static_cast<char>(static_cast<unsigned char>(letra)); });
    const auto comienzo = texto.find("DATABASE=") + std::strlen("DATABASE=");
    linea(asa) = { .registro = texto.substr(comienzo, texto.find(';', comienzo) - comienzo) };
    std::ofstream(linea(asa).registro, std::ios::app) << "CONECTA\n";
    return SQL_SUCCESS;
}

SQLRETURN SQLDisconnect(SQLHDBC) { return SQL_SUCCESS; }
SQLRETURN SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER) { return SQL_SUCCESS; }
SQLRETURN SQLSetConnectAttrW(SQLHDBC, SQLINTEGER, SQLPOINTER, SQLINTEGER) { return SQL_SUCCESS; }
SQLRETURN SQLSetStmtAttrW(SQLHSTMT, SQLINTEGER, SQLPOINTER, SQLINTEGER) { return SQL_SUCCESS; }

SQLRETURN SQLGetConnectAttrW(SQLHDBC, SQLINTEGER, SQLPOINTER valor, SQLINTEGER, SQLINTEGER*)
{
    *static_cast<SQLUINTEGER*>(valor) = SQL_CD_FALSE;
    return SQL_SUCCESS;
}

SQLRETURN SQLGetInfoW(SQLHDBC, SQLUSMALLINT, SQLPOINTER valor, SQLSMALLINT bytes, SQLSMALLINT* largo)
{
    const std::string nombre = "Microsoft SQL Server";
    copia(nombre, static_cast<SQLWCHAR*>(valor), static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR));
    *largo = static_cast<SQLSMALLINT>(nombre.size() * sizeof(SQLWCHAR));
    return SQL_SUCCESS;
}

SQLRETURN SQLExecDirectW(SQLHSTMT asa, SQLWCHAR* texto, SQLINTEGER letras)
{
    auto& suya = *instruccion(asa).linea;
    const auto sql = atipicos::odbc::a_utf8(
        { reinterpret_cast<const char16_t*>(texto), static_cast<std::size_t>(letras) });
    std::ofstream(suya.registro, std::ios::app) << sql << '\n';
    suya.fallo = nullptr;
    for (const auto& accidente : accidentes)
        if (nombra(sql, accidente) && !accidente.al_leer)
            return falla(suya, accidente);
        else if (nombra(sql, accidente))
            suya.fallo = &accidente;
    suya.abiertas += sql == "BEGIN TRANSACTION" ? 1 : 0;
    if (sql == "COMMIT" || sql.ends_with("ROLLBACK TRANSACTION"))
        suya.abiertas = 0;
    instruccion(asa).con_filas = sql.starts_with("SELECT");
    return SQL_SUCCESS;
}

SQLRETURN SQLNumResultCols(SQLHSTMT asa, SQLSMALLINT* cuantas)
{
    *cuantas = instruccion(asa).con_filas ? 1 : 0;
    return SQL_SUCCESS;
}

SQLRETURN SQLRowCount(SQLHSTMT, SQLLEN* filas)
{
    *filas = 1;
    return SQL_SUCCESS;
}

SQLRETURN SQLDescribeColW(SQLHSTMT, SQLUSMALLINT, SQLWCHAR* nombre, SQLSMALLINT, SQLSMALLINT* largo,
    SQLSMALLINT* tipo, SQLULEN*, SQLSMALLINT*, SQLSMALLINT*)
{
    copia("n", nombre, 2);
    *largo = 1;
    *tipo = SQL_INTEGER;
    return SQL_SUCCESS;
}

SQLRETURN SQLColAttributeW(
    SQLHSTMT, SQLUSMALLINT, SQLUSMALLINT, SQLPOINTER, SQLSMALLINT, SQLSMALLINT* bytes, SQLLEN*)
{
    *bytes = 0;
    return SQL_SUCCESS;
}

SQLRETURN SQLFetch(SQLHSTMT asa)
{
    auto& suya = instruccion(asa);
    if (suya.linea->fallo != nullptr)
        return falla(*suya.linea, *suya.linea->fallo);
    return std::exchange(suya.leida, true) ? SQL_NO_DATA : SQL_SUCCESS;
}

/// Every query has one row: how many transactions are open.
SQLRETURN SQLGetData(SQLHSTMT asa, SQLUSMALLINT, SQLSMALLINT, SQLPOINTER valor, SQLLEN, SQLLEN* bytes)
{
    copia(std::to_string(instruccion(asa).linea->abiertas), static_cast<SQLWCHAR*>(valor), 2);
    *bytes = sizeof(SQLWCHAR);
    return SQL_SUCCESS;
}

SQLRETURN SQLMoreResults(SQLHSTMT) { return SQL_NO_DATA; }

SQLRETURN SQLGetDiagRecW(SQLSMALLINT tipo, SQLHANDLE asa, SQLSMALLINT numero, SQLWCHAR* estado,
    SQLINTEGER* propio, SQLWCHAR* texto, SQLSMALLINT letras, SQLSMALLINT* largo)
{
    const auto* fallo = tipo == SQL_HANDLE_STMT ? instruccion(asa).linea->fallo : linea(asa).fallo;
    if (fallo == nullptr || numero != 1)
        return SQL_NO_DATA;
    copia(fallo->sqlstate, estado, 6);
    copia(fallo->nombre, texto, static_cast<std::size_t>(letras));
    *propio = fallo->numero;
    *largo = static_cast<SQLSMALLINT>(std::strlen(fallo->nombre));
    return SQL_SUCCESS;
}
/// The driver manager uses neither without the other.
SQLRETURN SQLGetDiagFieldW(
    SQLSMALLINT, SQLHANDLE, SQLSMALLINT, SQLSMALLINT, SQLPOINTER, SQLSMALLINT, SQLSMALLINT*)
{
    return SQL_NO_DATA;
}
}
