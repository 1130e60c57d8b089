#include "host/bases/FicheroNuevo.hpp"

#include "host/bases/CarpetaProvisional.hpp"
#include "host/bases/Fallo.hpp"
#include "runtime/MotivoSistema.hpp"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace atipicos::bases {

namespace {

    namespace fs = std::filesystem;

    constexpr mode_t permisos = 0644; ///< those that SQLite gives to its files

    class Abierto {
    public:
        explicit Abierto(int fichero)
            : m_fichero(fichero)
        {
        }
        Abierto(const Abierto&) = delete;
        Abierto& operator=(const Abierto&) = delete;
        ~Abierto()
        {
            if (m_fichero >= 0)
                close(m_fichero);
        }

        [[nodiscard]] explicit operator bool() const noexcept { return m_fichero >= 0; }
        [[nodiscard]] int numero() const noexcept { return m_fichero; }

    private:
        int m_fichero;
    };

    [[noreturn]] void no_se_escribe(const fs::path& fichero, int error, Donde donde)
    {
        falla(fichero, "no se puede crear el fichero: " + motivo_sistema(error) + ".", donde);
    }

    void escribe(const Abierto& abierto, std::string_view contenido, const fs::path& fichero, Donde donde)
    {
        constexpr auto trozo = std::size_t{ 64 } * 1024;
        while (!contenido.empty()) {
            const auto escritos
                = write(abierto.numero(), contenido.data(), std::min(contenido.size(), trozo));
            if (escritos < 0 && errno == EINTR)
                continue;
            if (escritos < 0)
                no_se_escribe(fichero, errno, donde);
            contenido.remove_prefix(static_cast<std::size_t>(escritos));
        }
        if (fsync(abierto.numero()) != 0)
            no_se_escribe(fichero, errno, donde);
    }

    /// A file without a name, which is gone with whoever has it open. Not every file system knows them.
    int abre_sin_nombre(const fs::path& carpeta)
    {
        return open(carpeta.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, permisos);
    }

    /// 0, or the number of the error. A name that is taken is EEXIST.
    int pon_nombre(const Abierto& abierto, const fs::path& fichero)
    {
        const auto suyo = "/proc/self/fd/" + std::to_string(abierto.numero());
        return linkat(AT_FDCWD, suyo.c_str(), AT_FDCWD, fichero.c_str(), AT_SYMLINK_FOLLOW) == 0 ? 0 : errno;
    }

    /// Where there are no files without a name: one in a folder that is swept later.
    bool escribe_en_provisional(const fs::path& fichero, std::string_view contenido, Donde donde)
    {
        const CarpetaProvisional provisional(fichero.parent_path(), donde);
        const auto nuevo = provisional / "nuevo";
        const Abierto abierto(open(nuevo.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, permisos));
        if (!abierto)
            no_se_escribe(fichero, errno, donde);
        escribe(abierto, contenido, fichero, donde);
        return coloca(nuevo, fichero, donde);
    }

}

bool escribe_nuevo(const fs::path& fichero, std::string_view contenido, Donde donde)
{
    const auto entero = fs::absolute(fichero);
    const Abierto abierto(abre_sin_nombre(entero.parent_path()));
    if (!abierto)
        return escribe_en_provisional(entero, contenido, donde); // which tells what is wrong with the folder
    escribe(abierto, contenido, fichero, donde);
    const int error = pon_nombre(abierto, entero);
    if (error == ENOENT) // no /proc here, by which a file without a name is named
        return escribe_en_provisional(entero, contenido, donde);
    if (error != 0 && error != EEXIST)
        no_se_escribe(fichero, error, donde);
    if (error == 0)
        asegura_nombres(entero.parent_path());
    return error == 0;
}

void asegura_nombres(const fs::path& carpeta) noexcept
{
    const Abierto abierta(open(carpeta.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (abierta)
        fsync(abierta.numero());
}

} // namespace atipicos::bases
