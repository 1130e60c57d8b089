#include "engines/postgresql/Instruccion.hpp"

#include "engines/sql/EnCastellano.hpp"
#include "engines/sql/Fechas.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <limits>
#include <variant>

namespace atipicos::postgresql {

namespace {

    using adodb::Categoria;

    struct Clasificacion {
        std::string_view codigo; ///< the first characters of an SQLSTATE
        Categoria categoria;
        const char* en_castellano; ///< what the server's own words stand behind
    };

    constexpr auto bloqueada = "La base de datos está bloqueada por otro usuario";
    constexpr auto sin_conexion = "Se ha perdido la conexión con el servidor de la base de datos";

    // The first that fits counts.
    constexpr std::array<Clasificacion, 16> clasificaciones{ {
        { "08", Categoria::conexion, sin_conexion },
        { "22", Categoria::instruccion, "La base de datos no admite uno de los valores" },
        { "23", Categoria::restriccion, sql::no_admite },
        { "25006", Categoria::solo_lectura, "La base de datos es de sólo lectura" },
        { "28", Categoria::conexion, "El servidor no admite a este usuario o su contraseña" },
        { "3D", Categoria::conexion, "La base de datos no existe en el servidor" },
        { "40", Categoria::bloqueo, bloqueada },
        { "42501", Categoria::otra, "El usuario no tiene permiso" },
        { "42", Categoria::instruccion, sql::no_puede },
        { "0A", Categoria::instruccion, sql::no_puede },
        { "53100", Categoria::otra, "No queda sitio en el disco del servidor" },
        { "53300", Categoria::conexion, "El servidor no admite más conexiones" },
        { "54", Categoria::instruccion, sql::no_puede },
        { "55P03", Categoria::bloqueo, bloqueada },
        { "57014", Categoria::otra, "La instrucción ha tardado demasiado y se ha cancelado" },
        { "57P", Categoria::conexion, sin_conexion },
    } };

    Clasificacion clasifica(std::string_view codigo)
    {
        const auto lugar = std::find_if(clasificaciones.begin(), clasificaciones.end(),
            [&](const auto& una) { return codigo.starts_with(una.codigo); });
        return lugar == clasificaciones.end() ? Clasificacion{ {}, Categoria::otra, sql::ha_fallado }
                                              : *lugar;
    }

    std::string campo(const Respuesta& respuesta, int cual)
    {
        const char* texto = PQresultErrorField(respuesta.get(), cual);
        return texto == nullptr ? std::string() : texto;
    }

    struct AlServidor {
        Donde donde;

        std::optional<std::string> operator()(std::monostate) const { return std::nullopt; }
        std::optional<std::string> operator()(Nulo) const { return std::nullopt; }
        std::optional<std::string> operator()(bool valor) const { return valor ? "1" : "0"; }
        std::optional<std::string> operator()(std::int32_t valor) const { return std::to_string(valor); }
        std::optional<std::string> operator()(double valor) const
        {
            std::array<char, 32> cifras{};
            return std::string(
                cifras.data(), std::to_chars(cifras.data(), cifras.data() + cifras.size(), valor).ptr);
        }
        std::optional<std::string> operator()(Currency valor) const { return valor.texto(); }
        std::optional<std::string> operator()(Date valor) const { return sql::texto_iso(valor); }
        std::optional<std::string> operator()(const std::string& valor) const
        {
            if (valor.find('\0') != std::string::npos)
                throw Error::de_ejecucion(numero_error::argumento_no_valido, donde);
            return valor;
        }
        std::optional<std::string> operator()(const std::shared_ptr<Objeto>&) const
        {
            throw Error::de_ejecucion(numero_error::tipos_no_coinciden, donde);
        }
    };

    Variant entero(std::string_view texto)
    {
        std::int64_t valor = 0;
        std::from_chars(texto.data(), texto.data() + texto.size(), valor);
        using Limites = std::numeric_limits<std::int32_t>;
        if (valor < Limites::min() || valor > Limites::max())
            return static_cast<double>(valor);
        return static_cast<std::int32_t>(valor);
    }

    Variant real(std::string_view texto)
    {
        double valor = 0;
        const auto leido = std::from_chars(texto.data(), texto.data() + texto.size(), valor);
        return leido.ec == std::errc() ? Variant(valor) : Variant(texto);
    }

    /// The server leaves out the zeros at the end of a fraction of a second.
    Variant fecha(std::string_view texto)
    {
        constexpr std::size_t sin_fraccion = std::string_view("2026-11-21 09:05:03").size();
        std::string completa(texto);
        if (texto.size() > sin_fraccion && texto[sin_fraccion] == '.')
            completa.resize(sin_fraccion + 4, '0');
        const auto leida = sql::lee_iso(completa);
        return leida ? Variant(*leida) : Variant(texto); // "infinity" and the like
    }

    // Types of the server by number, fixed in its catalogue: bool, int8, int2, int4, float4, float8, date,
    // timestamp, numeric.
    constexpr Oid oid_bool = 16;
    constexpr Oid oid_int8 = 20;
    constexpr Oid oid_int2 = 21;
    constexpr Oid oid_int4 = 23;
    constexpr Oid oid_float4 = 700;
    constexpr Oid oid_float8 = 701;
    constexpr Oid oid_date = 1082;
    constexpr Oid oid_timestamp = 1114;
    constexpr Oid oid_numeric = 1700;

}

bool es_error(const Respuesta& respuesta) noexcept
{
    const auto estado = PQresultStatus(respuesta.get());
    return estado != PGRES_COMMAND_OK && estado != PGRES_TUPLES_OK && estado != PGRES_SINGLE_TUPLE
        && estado != PGRES_EMPTY_QUERY;
}

std::string_view codigo_de(const Respuesta& respuesta) noexcept
{
    const char* codigo = PQresultErrorField(respuesta.get(), PG_DIAG_SQLSTATE);
    return codigo == nullptr ? std::string_view() : std::string_view(codigo);
}

adodb::ErrorBaseDatos error_de(const Respuesta& respuesta, std::string_view instruccion, Donde donde)
{
    const auto codigo = campo(respuesta, PG_DIAG_SQLSTATE);
    auto descripcion = campo(respuesta, PG_DIAG_MESSAGE_PRIMARY);
    if (descripcion.empty()) // not from the server: from the client library itself
        descripcion = PQresultErrorMessage(respuesta.get());
    while (!descripcion.empty() && descripcion.back() == '\n')
        descripcion.pop_back();
    if (const auto detalle = campo(respuesta, PG_DIAG_MESSAGE_DETAIL); !detalle.empty())
        descripcion += ". " + detalle;
    if (!codigo.empty())
        descripcion += " [SQLSTATE " + codigo + "]";
    const auto clasificacion = clasifica(codigo);
    return { clasificacion.categoria, "PostgreSQL",
        std::string(clasificacion.en_castellano) + " (" + descripcion + ").", std::string(instruccion),
        donde };
}

std::optional<std::string> texto_de(const Variant& valor, Donde donde)
{
    return std::visit(AlServidor{ donde }, valor.valor());
}

bool es_fecha(Oid tipo) noexcept { return tipo == oid_date || tipo == oid_timestamp; }

Tipo tipo_de(Oid tipo) noexcept
{
    switch (tipo) {
    case oid_bool:
        return Tipo::Bit;
    case oid_int2:
    case oid_int4:
    case oid_int8:
        return Tipo::Entero;
    case oid_float4:
    case oid_float8:
        return Tipo::Real;
    case oid_numeric:
        return Tipo::Moneda;
    default:
        return es_fecha(tipo) ? Tipo::Fecha : Tipo::Texto;
    }
}

Variant valor_de(std::string_view texto, Tipo tipo, Donde donde)
{
    switch (tipo) {
    case Tipo::Entero:
        return entero(texto);
    case Tipo::Moneda:
        return Currency::de_texto(texto, donde);
    case Tipo::Real:
        return real(texto);
    case Tipo::Fecha:
        return fecha(texto);
    case Tipo::Bit:
        return texto == "1" || texto == "t";
    case Tipo::Texto:
        break;
    }
    return texto;
}

} // namespace atipicos::postgresql
