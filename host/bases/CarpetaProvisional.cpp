#include "host/bases/CarpetaProvisional.hpp"

#include "host/bases/Fallo.hpp"
#include "host/bases/FicheroNuevo.hpp"
#include "runtime/MotivoSistema.hpp"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace atipicos::bases {

namespace {

    namespace fs = std::filesystem;

    constexpr auto comienzo = ".nuevas-";
    constexpr std::chrono::minutes antigua{ 1 }; ///< far longer than it takes to lock one that has been made

    int abre_carpeta(const fs::path& carpeta)
    {
        return open(carpeta.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    }

    /// Takes away what killed processes have left: old ones that nobody holds locked.
    void barre(const fs::path& carpeta)
    {
        std::error_code fallo;
        const auto limite = fs::file_time_type::clock::now() - antigua;
        std::vector<fs::path> restos;
        for (fs::directory_iterator entrada(carpeta, fallo), fin; entrada != fin; entrada.increment(fallo))
            if (entrada->path().filename().string().starts_with(comienzo) && !entrada->is_symlink(fallo)
                && entrada->is_directory(fallo) && entrada->last_write_time(fallo) < limite)
                restos.push_back(entrada->path());
        for (const auto& resto : restos) {
            const int abierta = abre_carpeta(resto);
            if (abierta < 0)
                continue;
            if (flock(abierta, LOCK_EX | LOCK_NB) == 0)
                fs::remove_all(resto, fallo);
            close(abierta);
        }
    }

    /// Renames unless the new name is taken. 0, or the number of the error.
    int renombra_sin_pisar(const fs::path& nuevo, const fs::path& definitivo)
    {
        if (renameat2(AT_FDCWD, nuevo.c_str(), AT_FDCWD, definitivo.c_str(), RENAME_NOREPLACE) == 0)
            return 0;
        if (errno != EINVAL && errno != ENOSYS)
            return errno;
        // A file system that does not know it: a second name refuses to be one that is there.
        if (link(nuevo.c_str(), definitivo.c_str()) != 0)
            return errno;
        unlink(nuevo.c_str());
        return 0;
    }

}

CarpetaProvisional::CarpetaProvisional(const fs::path& carpeta, Donde donde)
{
    barre(carpeta);
    std::string plantilla = (carpeta / (std::string(comienzo) + "XXXXXX")).string();
    if (mkdtemp(plantilla.data()) == nullptr)
        falla(carpeta, "no se puede escribir en la carpeta: " + motivo_sistema(errno) + ".", donde);
    m_ruta = plantilla;
    m_candado = abre_carpeta(m_ruta);
    if (m_candado >= 0)
        flock(m_candado, LOCK_EX | LOCK_NB);
}

CarpetaProvisional::~CarpetaProvisional()
{
    std::error_code ignorado;
    fs::remove_all(m_ruta, ignorado);
    if (m_candado >= 0)
        close(m_candado);
}

bool coloca(const fs::path& nuevo, const fs::path& definitivo, Donde donde)
{
    if (const int error = renombra_sin_pisar(nuevo, definitivo); error == EEXIST)
        return false;
    else if (error != 0)
        falla(definitivo, "no se puede crear el fichero: " + motivo_sistema(error) + ".", donde);
    asegura_nombres(fs::absolute(definitivo).parent_path());
    return true;
}

} // namespace atipicos::bases
