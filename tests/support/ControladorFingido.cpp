// An ODBC driver that says it is SQL Server's, or whose NOMBRE tells, for the driver manager to load. It has
// no database: it writes what it is told into the file that DATABASE names, a line each, keeps count of
// transactions, and fails as the server does on statements that name one of the accidents below, or on the
// commit after them. It knows no more calls than the engine makes.
#include "runtime/Unicode.hpp"

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
    const char* espera_a = ""; ///< happens with the next statement that begins so
    bool al_leer = false; ///< comes with the first row, not with the statement
};
/// Where names are taken for identifiers it must be told the database and the schema too.
constexpr Accidente nombre_a_medias{ "nombre a medias", "HY009", 0, false };
constexpr std::array<Accidente, 12> accidentes{ {
    { "ClaveRepetida", "23000", 2627, false },
    { "Espera", "HY000", 1222, false },
    { "EsperaAlLeer", "HY000", 1222, false, "", true },
    { "Interbloqueo", "40001", 1205, true },
    { "LineaCortada", "08S01", 0, true },
    { "SinSitioAlConfirmar", "42000", 9002, false, "COMMIT" },
    { "InterbloqueoAlConfirmar", "40001", 1205, true, "COMMIT" },
    { "LineaCortadaAlConfirmar", "08S01", 0, true, "COMMIT" },
    { "SinSitioAlVolver", "42000", 9002, false, "ROLLBACK TRANSACTION u" },
    { "LineaCortadaAlSeguir", "08S01", 0, true, "SAVE TRANSACTION u" },
    { "SinRespuestaAlPreguntar", "HYT00", 0, false, "SELECT @@TRANCOUNT" },
    { "SinRespuestaAlDeshacer", "HYT00", 0, false, "IF @@TRANCOUNT" },
} };

struct Linea {
    std::string registro;
    std::string nombre;
    int abiertas = 0;
    const Accidente* fallo = nullptr;
    const Accidente* esperado = nullptr;
};

struct Instruccion {
    Linea* linea;
    SQLSMALLINT columnas = 0;
    bool leida = false;
    bool con_identificadores = false;
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

std::string valor_de(const std::string& cadena, const std::string& nombre)
{
    const auto comienzo = cadena.find(nombre);
    if (comienzo == std::string::npos)
        return {};
    const auto valor = cadena.substr(comienzo + nombre.size());
    return valor.substr(0, valor.find(';'));
}

void copia(const std::string& texto, SQLWCHAR* destino, std::size_t letras)
{
    const auto ancho = atipicos::a_utf16(texto);
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
    const auto texto
        = atipicos::a_utf8({ reinterpret_cast<const char16_t*>(cadena), static_cast<std::size_t>(letras) });
    linea(asa) = { valor_de(texto, "DATABASE="), valor_de(texto, "NOMBRE=") };
    std::ofstream(linea(asa).registro, std::ios::app) << "CONECTA\n";
    return SQL_SUCCESS;
}

SQLRETURN SQLDisconnect(SQLHDBC) { return SQL_SUCCESS; }
SQLRETURN SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER) { return SQL_SUCCESS; }
SQLRETURN SQLSetConnectAttrW(SQLHDBC, SQLINTEGER, SQLPOINTER, SQLINTEGER) { return SQL_SUCCESS; }

SQLRETURN SQLSetStmtAttrW(SQLHSTMT asa, SQLINTEGER atributo, SQLPOINTER valor, SQLINTEGER)
{
    if (atributo == SQL_ATTR_METADATA_ID)
        instruccion(asa).con_identificadores = valor != nullptr;
    return SQL_SUCCESS;
}

SQLRETURN SQLGetConnectAttrW(SQLHDBC, SQLINTEGER, SQLPOINTER valor, SQLINTEGER, SQLINTEGER*)
{
    *static_cast<SQLUINTEGER*>(valor) = SQL_CD_FALSE;
    return SQL_SUCCESS;
}

SQLRETURN SQLGetInfoW(SQLHDBC asa, SQLUSMALLINT, SQLPOINTER valor, SQLSMALLINT bytes, SQLSMALLINT* largo)
{
    const std::string nombre = linea(asa).nombre.empty() ? "Microsoft SQL Server" : linea(asa).nombre;
    copia(nombre, static_cast<SQLWCHAR*>(valor), static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR));
    *largo = static_cast<SQLSMALLINT>(nombre.size() * sizeof(SQLWCHAR));
    return SQL_SUCCESS;
}

SQLRETURN SQLExecDirectW(SQLHSTMT asa, SQLWCHAR* texto, SQLINTEGER letras)
{
    auto& suya = *instruccion(asa).linea;
    const auto sql
        = atipicos::a_utf8({ reinterpret_cast<const char16_t*>(texto), static_cast<std::size_t>(letras) });
    std::ofstream(suya.registro, std::ios::app) << sql << '\n';
    suya.fallo = nullptr;
    if (suya.esperado != nullptr && sql.starts_with(suya.esperado->espera_a))
        return falla(suya, *std::exchange(suya.esperado, nullptr));
    for (const auto& accidente : accidentes) {
        if (!nombra(sql, accidente))
            continue;
        if (*accidente.espera_a != '\0')
            suya.esperado = &accidente;
        else if (accidente.al_leer)
            suya.fallo = &accidente;
        else
            return falla(suya, accidente);
    }
    suya.abiertas += sql == "BEGIN TRANSACTION" ? 1 : 0;
    if (sql == "COMMIT" || sql.ends_with("ROLLBACK TRANSACTION"))
        suya.abiertas = 0;
    instruccion(asa).columnas = sql.starts_with("SELECT") ? 1 : 0;
    return SQL_SUCCESS;
}

/// Of whatever table the key is "n", which is what the column of every query is called too.
SQLRETURN SQLPrimaryKeysW(SQLHSTMT asa, SQLWCHAR* catalogo, SQLSMALLINT, SQLWCHAR* esquema, SQLSMALLINT,
    SQLWCHAR* tabla, SQLSMALLINT)
{
    std::ofstream registro(instruccion(asa).linea->registro, std::ios::app);
    registro << "CLAVE";
    for (const auto* parte : { catalogo, esquema, tabla }) {
        std::u16string texto;
        for (const auto* letra = parte; letra != nullptr && *letra != 0; ++letra)
            texto += static_cast<char16_t>(*letra);
        registro << ' ' << (parte == nullptr ? "-" : atipicos::a_utf8(texto));
    }
    registro << '\n';
    instruccion(asa).linea->fallo = nullptr;
    if (instruccion(asa).con_identificadores && (catalogo == nullptr || esquema == nullptr))
        return falla(*instruccion(asa).linea, nombre_a_medias);
    instruccion(asa).columnas = 4;
    return SQL_SUCCESS;
}

SQLRETURN SQLNumResultCols(SQLHSTMT asa, SQLSMALLINT* cuantas)
{
    *cuantas = instruccion(asa).columnas;
    return SQL_SUCCESS;
}

SQLRETURN SQLRowCount(SQLHSTMT, SQLLEN* filas)
{
    *filas = 1;
    return SQL_SUCCESS;
}

SQLRETURN SQLDescribeColW(SQLHSTMT asa, SQLUSMALLINT, SQLWCHAR* nombre, SQLSMALLINT, SQLSMALLINT* largo,
    SQLSMALLINT* tipo, SQLULEN*, SQLSMALLINT*, SQLSMALLINT*)
{
    copia("n", nombre, 2);
    *largo = 1;
    *tipo = instruccion(asa).columnas == 1 ? SQL_INTEGER : SQL_WVARCHAR;
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
SQLRETURN SQLGetData(SQLHSTMT asa, SQLUSMALLINT columna, SQLSMALLINT, SQLPOINTER valor, SQLLEN, SQLLEN* bytes)
{
    const auto& suya = instruccion(asa);
    copia(suya.columnas > 1 && columna == suya.columnas ? "n" : std::to_string(suya.linea->abiertas),
        static_cast<SQLWCHAR*>(valor), 2);
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
