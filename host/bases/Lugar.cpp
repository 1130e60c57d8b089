#include "host/bases/Lugar.hpp"

#include "host/bases/Palabra.hpp"

#include <utility>

namespace atipicos::bases {

namespace {

    constexpr std::int32_t conexion_no_valida = 1000;
    const std::string prefijo_odbc = "odbc:";

}

Lugar::Lugar(std::filesystem::path carpeta)
    : m_carpeta(std::move(carpeta))
{
}

Lugar Lugar::de_conexion(const std::string& conexion, Donde donde)
{
    const auto tras = [&](const std::string& comienzo) {
        return conexion.starts_with(comienzo) ? conexion.substr(comienzo.size()) : std::string();
    };
    if (const auto carpeta = tras("sqlite:"); !carpeta.empty())
        return { std::filesystem::path(carpeta) };
    Lugar lugar{ std::filesystem::path() };
    if (const auto cadena = tras(prefijo_odbc); !cadena.empty()) {
        lugar.m_clase = Clase::odbc;
        lugar.m_direccion = cadena;
    } else if (!tras("postgresql://").empty() || !tras("postgres://").empty()) {
        lugar.m_clase = Clase::postgresql;
        lugar.m_direccion = conexion;
    } else {
        throw Error(conexion_no_valida, "Orvalin:Lugar",
            "La conexión se escribe sqlite:CARPETA, postgresql://usuario@servidor/base u "
            "odbc:DRIVER=…;SERVER=…;UID=….",
            donde);
    }
    return lugar;
}

std::string Lugar::texto() const
{
    switch (m_clase) {
    case Clase::odbc:
        return prefijo_odbc + m_direccion;
    case Clase::postgresql:
        return m_direccion;
    case Clase::carpeta:
        break;
    }
    return m_carpeta.string();
}

Lugar Lugar::absoluto() const
{
    auto otro = *this;
    if (m_clase == Clase::carpeta)
        otro.m_carpeta = std::filesystem::absolute(m_carpeta).lexically_normal();
    return otro;
}

std::string Lugar::opcion() const
{
    return (m_clase == Clase::carpeta ? "--datos " : "--conexion ") + como_palabra(texto());
}

std::string_view Lugar::motor() const noexcept
{
    switch (m_clase) {
    case Clase::odbc:
        return "ODBC";
    case Clase::postgresql:
        return "PostgreSQL";
    case Clase::carpeta:
        break;
    }
    return "SQLite";
}

} // namespace atipicos::bases
