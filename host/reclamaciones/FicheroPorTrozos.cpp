#include "host/reclamaciones/FicheroPorTrozos.hpp"

#include "host/sesion/OpcionesComunes.hpp"
#include "runtime/Error.hpp"
#include "runtime/MotivoSistema.hpp"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace atipicos::app {

namespace {

    constexpr std::size_t tamano_trozo = 65'536;
    constexpr auto no_se_puede = "No se puede leer ";
    constexpr auto no_entero = "No se pudo leer entero ";

}

FicheroPorTrozos::Descriptor::~Descriptor()
{
    if (m_numero >= 0)
        close(m_numero);
}

FicheroPorTrozos::FicheroPorTrozos(std::filesystem::path fichero)
    : m_fichero(std::move(fichero))
    , m_descriptor(open(m_fichero.c_str(), O_RDONLY | O_CLOEXEC))
    , m_trozo(tamano_trozo)
{
    if (*m_descriptor < 0)
        falla(no_se_puede, errno);
    if (struct stat que{}; fstat(*m_descriptor, &que) == 0 && S_ISDIR(que.st_mode))
        throw Error(no_hecho, "atipicos", "«" + m_fichero.string() + "» es una carpeta, no un fichero.");
    if (lseek(*m_descriptor, 0, SEEK_SET) < 0)
        copia();
}

void FicheroPorTrozos::empieza()
{
    m_huella = Huella();
    if (lseek(*m_descriptor, 0, SEEK_SET) < 0)
        falla(no_entero, errno);
}

std::string_view FicheroPorTrozos::trozo()
{
    const std::string_view leido(m_trozo.data(), lee());
    m_huella.agrega(leido);
    return leido;
}

/// As much as a piece holds, or all there is left.
std::size_t FicheroPorTrozos::lee()
{
    std::size_t leido = 0;
    while (leido < m_trozo.size()) {
        const auto ahora = read(*m_descriptor, m_trozo.data() + leido, m_trozo.size() - leido);
        if (ahora == 0)
            break;
        if (ahora < 0 && errno != EINTR)
            falla(no_entero, errno);
        leido += ahora < 0 ? 0 : static_cast<std::size_t>(ahora);
    }
    return leido;
}

void FicheroPorTrozos::copia()
{
    auto nombre = (std::filesystem::temp_directory_path() / "atipicos-XXXXXX").string();
    Descriptor copia(mkostemp(nombre.data(), O_CLOEXEC));
    if (*copia < 0)
        falla(no_se_puede, errno);
    unlink(nombre.c_str()); // gone with the program, however that ends
    while (const auto leido = lee())
        escribe(copia, { m_trozo.data(), leido });
    m_descriptor.cambia(copia);
}

void FicheroPorTrozos::escribe(const Descriptor& copia, std::string_view texto) const
{
    while (!texto.empty()) {
        const auto escrito = write(*copia, texto.data(), texto.size());
        if (escrito < 0 && errno != EINTR)
            falla(no_entero, errno);
        texto.remove_prefix(escrito < 0 ? 0 : static_cast<std::size_t>(escrito));
    }
}

void FicheroPorTrozos::falla(const std::string& que, int numero) const
{
    throw Error(no_hecho, "atipicos", que + "«" + m_fichero.string() + "»: " + motivo_sistema(numero) + ".");
}

} // namespace atipicos::app
