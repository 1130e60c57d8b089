#include "host/orvalin/Lugar.hpp"

#include <utility>

namespace atipicos::orvalin {

namespace {

    constexpr std::int32_t conexion_no_valida = 1000;

}

Lugar::Lugar(std::filesystem::path carpeta)
    : m_carpeta(std::move(carpeta))
{
}

Lugar Lugar::de_conexion(const std::string& conexion, Donde donde)
{
    constexpr std::string_view de_carpeta = "sqlite:";
    if (conexion.starts_with(de_carpeta) && conexion.size() > de_carpeta.size())
        return { std::filesystem::path(conexion.substr(de_carpeta.size())) };
    if (!conexion.starts_with("postgresql://") && !conexion.starts_with("postgres://"))
        throw Error(conexion_no_valida, "Orvalin:Lugar",
            "La conexión se escribe sqlite:CARPETA o postgresql://usuario@servidor/base.", donde);
    Lugar lugar{ std::filesystem::path() };
    lugar.m_clase = Clase::postgresql;
    lugar.m_direccion = conexion;
    return lugar;
}

std::string Lugar::texto() const { return m_clase == Clase::carpeta ? m_carpeta.string() : m_direccion; }

std::string_view Lugar::motor() const noexcept { return m_clase == Clase::carpeta ? "SQLite" : "PostgreSQL"; }

} // namespace atipicos::orvalin
