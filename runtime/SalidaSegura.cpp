#include "runtime/SalidaSegura.hpp"

#include "runtime/Error.hpp"
#include "runtime/MotivoSistema.hpp"

#include <cerrno>
#include <iostream>
#include <system_error>
#include <unistd.h>

namespace atipicos {

SalidaSegura::SalidaSegura(std::filesystem::path destino)
    : m_destino(std::move(destino))
{
    if (m_destino.empty())
        return;
    std::error_code da_igual; // what cannot be looked at cannot be opened either, and that says why
    const auto estado = std::filesystem::status(m_destino, da_igual);
    if (std::filesystem::is_directory(estado))
        falla("es una carpeta");
    const bool es_un_fichero = std::filesystem::is_regular_file(estado);
    m_definitivo = es_un_fichero && std::filesystem::is_symlink(m_destino, da_igual)
        ? std::filesystem::canonical(m_destino)
        : m_destino;
    m_provisional = m_definitivo;
    if (es_un_fichero || !std::filesystem::exists(estado)) // no file may take the place of a device or a pipe
        m_provisional += "." + std::to_string(getpid()) + ".parcial";
    m_fichero.open(m_provisional, std::ios::binary | std::ios::trunc);
    if (!m_fichero)
        falla(errno == ENOENT ? "no existe la carpeta" : motivo_sistema(errno));
}

SalidaSegura::~SalidaSegura()
{
    std::error_code da_igual;
    if (m_provisional != m_definitivo)
        std::filesystem::remove(m_provisional, da_igual);
}

std::ostream& SalidaSegura::flujo() { return m_destino.empty() ? std::cout : m_fichero; }

void SalidaSegura::comprueba()
{
    if (flujo())
        return;
    if (m_destino.empty())
        throw Error(1, "atipicos", "No se pudo escribir todo en la salida.");
    falla(errno == 0 ? "no se pudo escribir entero" : motivo_sistema(errno));
}

void SalidaSegura::termina()
{
    if (m_destino.empty())
        return;
    errno = 0;
    m_fichero.close();
    if (m_fichero.fail())
        falla(errno == 0 ? "no se pudo escribir entero" : motivo_sistema(errno));
    if (m_provisional == m_definitivo)
        return;
    std::error_code fallo;
    std::filesystem::rename(m_provisional, m_definitivo, fallo);
    if (fallo)
        falla(motivo_sistema(fallo.value()));
}

void SalidaSegura::falla(const std::string& motivo) const
{
    throw Error(1, "atipicos", "No se puede escribir «" + m_destino.string() + "»: " + motivo + ".");
}

} // namespace atipicos
