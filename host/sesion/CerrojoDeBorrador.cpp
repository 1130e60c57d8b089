#include "host/sesion/CerrojoDeBorrador.hpp"

#include "host/sesion/OpcionesComunes.hpp"
#include "runtime/Error.hpp"
#include "runtime/MotivoSistema.hpp"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace atipicos::app {

namespace {

    namespace fs = std::filesystem;

    constexpr mode_t solo_suyo = 0600;
    constexpr int intentos = 20; ///< who only looks holds it for a moment
    constexpr std::chrono::milliseconds entre_intentos{ 5 };

    fs::path con(fs::path ruta, const char* final)
    {
        ruta += final;
        return ruta;
    }

    fs::path fichero_de(const fs::path& borrador) { return con(borrador, ".cerrojo"); }

    /// A file that was taken away after it had been opened locks nothing.
    bool es_el_de_ahora(int descriptor, const fs::path& fichero)
    {
        struct stat abierto { };
        struct stat ahora { };
        return fstat(descriptor, &abierto) == 0 && stat(fichero.c_str(), &ahora) == 0
            && abierto.st_ino == ahora.st_ino && abierto.st_dev == ahora.st_dev;
    }

    int abre(const fs::path& fichero)
    {
        const int descriptor = open(fichero.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, solo_suyo);
        if (descriptor < 0)
            throw Error(no_hecho, "atipicos",
                "No se puede escribir «" + fichero.string() + "»: " + motivo_sistema(errno) + ".");
        return descriptor;
    }

}

CerrojoDeBorrador::CerrojoDeBorrador(int descriptor, fs::path borrador)
    : m_descriptor(descriptor)
    , m_borrador(std::move(borrador))
{
}

std::unique_ptr<CerrojoDeBorrador> CerrojoDeBorrador::toma(const fs::path& borrador)
{
    const auto fichero = fichero_de(borrador);
    for (int intento = 0; intento < intentos; ++intento) {
        const int descriptor = abre(fichero);
        const bool cerrado = flock(descriptor, LOCK_EX | LOCK_NB) == 0;
        if (cerrado && es_el_de_ahora(descriptor, fichero))
            return std::unique_ptr<CerrojoDeBorrador>(new CerrojoDeBorrador(descriptor, borrador));
        close(descriptor);
        if (!cerrado)
            std::this_thread::sleep_for(entre_intentos);
    }
    return nullptr;
}

bool CerrojoDeBorrador::tomado(const fs::path& borrador)
{
    const int descriptor = open(fichero_de(borrador).c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (descriptor < 0)
        return false;
    const bool libre = flock(descriptor, LOCK_SH | LOCK_NB) == 0;
    close(descriptor);
    return !libre;
}

fs::path CerrojoDeBorrador::parcial() const { return con(m_borrador, ".parcial"); }

void CerrojoDeBorrador::borra_borrador() const noexcept
{
    std::error_code da_igual;
    fs::remove(m_borrador, da_igual);
    fs::remove(parcial(), da_igual);
}

CerrojoDeBorrador::~CerrojoDeBorrador()
{
    unlink(fichero_de(m_borrador).c_str()); // while it is held: whoever opens it now sees that it is none
    close(m_descriptor);
}

} // namespace atipicos::app
