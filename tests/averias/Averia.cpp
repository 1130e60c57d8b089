#include "tests/averias/Averia.hpp"

#include <libpq-fe.h>
#include <sqlite3.h>
#include <sys/socket.h>

namespace atipicos::pruebas::averia {

namespace {

    Clase clase_preparada = Clase::ninguna;
    std::size_t en = 0;
    std::size_t dichas = 0;

    constexpr auto imposible = "SELECT fallo_provocado()"; // a function that no database has

    bool toca()
    {
        ++dichas;
        return clase_preparada != Clase::ninguna && dichas == en;
    }

}

void prepara(Clase clase, std::size_t n)
{
    clase_preparada = clase;
    en = n;
    dichas = 0;
}

bool ha_ocurrido() { return clase_preparada != Clase::ninguna && dichas >= en; }

} // namespace atipicos::pruebas::averia

// The names and arguments are those of the linker and of both libraries.
// NOLINTBEGIN
using namespace atipicos::pruebas;

extern "C" {

int __real_sqlite3_prepare_v2(sqlite3*, const char*, int, sqlite3_stmt**, const char**);
int __wrap_sqlite3_prepare_v2(
    sqlite3* base, const char* sql, int tamano, sqlite3_stmt** instruccion, const char** resto)
{
    const bool ahora = averia::toca();
    if (ahora || (averia::clase_preparada == averia::Clase::conexion && averia::ha_ocurrido()))
        return __real_sqlite3_prepare_v2(base, averia::imposible, -1, instruccion, resto);
    return __real_sqlite3_prepare_v2(base, sql, tamano, instruccion, resto);
}

int __real_PQsendQuery(PGconn*, const char*);
int __wrap_PQsendQuery(PGconn* linea, const char* sql)
{
    const bool ahora = averia::toca();
    if (ahora && averia::clase_preparada == averia::Clase::conexion)
        shutdown(PQsocket(linea), SHUT_RDWR);
    const bool falla = ahora && averia::clase_preparada == averia::Clase::instruccion;
    return __real_PQsendQuery(linea, falla ? averia::imposible : sql);
}

int __real_PQsendQueryParams(
    PGconn*, const char*, int, const Oid*, const char* const*, const int*, const int*, int);
int __wrap_PQsendQueryParams(PGconn* linea, const char* sql, int cuantos, const Oid* tipos,
    const char* const* valores, const int* tamanos, const int* formatos, int formato)
{
    if (averia::toca()) {
        if (averia::clase_preparada == averia::Clase::conexion)
            shutdown(PQsocket(linea), SHUT_RDWR);
        else
            return __real_PQsendQueryParams(
                linea, averia::imposible, 0, nullptr, nullptr, nullptr, nullptr, formato);
    }
    return __real_PQsendQueryParams(linea, sql, cuantos, tipos, valores, tamanos, formatos, formato);
}
}
// NOLINTEND
