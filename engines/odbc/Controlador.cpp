#include "engines/odbc/Controlador.hpp"

#include "engines/sql/Tokens.hpp"
#include "runtime/Unicode.hpp"

#include <algorithm>
#include <array>
#include <sqlucode.h>
#include <string_view>

namespace atipicos::odbc {

namespace {

    template <std::size_t n> std::string leido(const std::array<SQLCHAR, n>& letras, SQLSMALLINT cuantas)
    {
        return { reinterpret_cast<const char*>(letras.data()),
            std::clamp<std::size_t>(static_cast<std::size_t>(cuantas), 0, n - 1) };
    }

    /// What the driver manager has beside a name in one of its lists; empty when the name is not there.
    template <class Siguiente>
    std::string busca(const std::string& nombre, SQLHENV entorno, Siguiente siguiente)
    {
        std::array<SQLCHAR, 256> uno{};
        std::array<SQLCHAR, 2'048> suyo{};
        SQLSMALLINT largo = 0;
        SQLSMALLINT largo_suyo = 0;
        for (SQLUSMALLINT cual = SQL_FETCH_FIRST; SQL_SUCCEEDED(siguiente(
                 entorno, cual, uno.data(), uno.size(), &largo, suyo.data(), suyo.size(), &largo_suyo));
             cual = SQL_FETCH_NEXT)
            if (sql::iguales(leido(uno, largo), nombre))
                return leido(suyo, largo_suyo);
        return {};
    }

    /// Its name and what is known of it, in small letters.
    std::string senas(const Cadena& cadena, SQLHENV entorno)
    {
        auto nombre = cadena.valor("DRIVER");
        if (nombre.empty())
            nombre = busca(cadena.valor("DSN"), entorno, &SQLDataSources);
        auto todo = nombre + ' ' + busca(nombre, entorno, &SQLDrivers);
        std::transform(todo.begin(), todo.end(), todo.begin(), &sql::minuscula);
        return todo;
    }

}

Controlador controlador_de(const Cadena& cadena, SQLHENV entorno)
{
    const auto texto = senas(cadena, entorno);
    const auto dice = [&](std::string_view parte) { return texto.find(parte) != std::string::npos; };
    Controlador controlador;
    controlador.es_freetds = dice("freetds") || dice("tdsodbc");
    controlador.por_bytes = dice("sqlite") || dice("ansi");
    controlador.llaves = controlador.es_freetds ? Llaves::sencillas : Llaves::dobladas;
    return controlador;
}

SQLRETURN Controlador::conecta(SQLHDBC linea, std::string cadena) const
{
    if (por_bytes) // the driver manager would narrow wide letters by halves
        return SQLDriverConnect(linea, nullptr, reinterpret_cast<SQLCHAR*>(cadena.data()),
            static_cast<SQLSMALLINT>(cadena.size()), nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    auto ancha = a_utf16(cadena); // of bytes it could not be known in which letters they are written
    return SQLDriverConnectW(linea, nullptr, reinterpret_cast<SQLWCHAR*>(ancha.data()),
        static_cast<SQLSMALLINT>(ancha.size()), nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
}

} // namespace atipicos::odbc
