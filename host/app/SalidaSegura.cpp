#include "host/app/SalidaSegura.hpp"

#include "host/app/Ordenes.hpp"
#include "runtime/Error.hpp"

#include <cerrno>
#include <cstring>
#include <iostream>
#include <system_error>
#include <unistd.h>

namespace atipicos::app {

SalidaSegura::SalidaSegura(std::filesystem::path destino)
    : m_destino(std::move(destino))
{
    if (m_destino.empty())
        return;
    if (std::filesystem::is_directory(m_destino))
        falla("es una carpeta");
    m_provisional = m_destino.string() + "." + std::to_string(getpid()) + ".parcial";
    m_fichero.open(m_provisional, std::ios::binary | std::ios::trunc);
    if (!m_fichero)
        falla(std::strerror(errno));
}

SalidaSegura::~SalidaSegura()
{
    std::error_code da_igual;
    if (!m_provisional.empty())
        std::filesystem::remove(m_provisional, da_igual);
}

std::ostream& SalidaSegura::flujo() { return m_destino.empty() ? std::cout : m_fichero; }

void SalidaSegura::termina()
{
    if (m_destino.empty())
        return;
    errno = 0;
    m_fichero.close();
    if (m_fichero.fail())
        falla(errno == 0 ? "no se pudo escribir entero" : std::strerror(errno));
    std::error_code fallo;
    std::filesystem::rename(m_provisional, m_destino, fallo);
    if (fallo)
        falla(fallo.message());
}

void SalidaSegura::falla(const std::string& motivo) const
{
    throw Error(no_hecho, "atipicos", "No se puede escribir «" + m_destino.string() + "»: " + motivo + ".");
}

} // namespace atipicos::app
