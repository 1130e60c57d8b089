#include "host/sesion/BorradoresEnCarpeta.hpp"

#include "context/modComun.hpp"
#include "host/bases/FicheroNuevo.hpp"
#include "host/sesion/CerrojoDeBorrador.hpp"
#include "host/sesion/OpcionesComunes.hpp"
#include "runtime/MotivoSistema.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace atipicos::app {

namespace {

    namespace fs = std::filesystem;

    constexpr auto final_de_borrador = ".json";
    constexpr mode_t carpeta_suya = 0700;
    constexpr mode_t fichero_suyo = 0600;

    [[noreturn]] void no_se_escribe(const fs::path& fichero, int error)
    {
        throw Error(no_hecho, "atipicos",
            "No se puede escribir «" + fichero.string() + "»: " + motivo_sistema(error) + ".");
    }

    /// With the folders above it that are missing, all of them for their owner alone.
    void crea_carpeta(const fs::path& carpeta)
    {
        if (mkdir(carpeta.c_str(), carpeta_suya) == 0 || errno == EEXIST)
            return;
        const int error = errno;
        if (error != ENOENT || carpeta.parent_path() == carpeta)
            no_se_escribe(carpeta, error);
        crea_carpeta(carpeta.parent_path());
        if (mkdir(carpeta.c_str(), carpeta_suya) != 0 && errno != EEXIST)
            no_se_escribe(carpeta, errno);
    }

    /// 0, or the number of the error.
    int escribe_todo(int descriptor, std::string_view texto)
    {
        while (!texto.empty()) {
            const auto escritos = write(descriptor, texto.data(), texto.size());
            if (escritos < 0 && errno == EINTR)
                continue;
            if (escritos < 0)
                return errno;
            texto.remove_prefix(static_cast<std::size_t>(escritos));
        }
        return fsync(descriptor) == 0 ? 0 : errno;
    }

    int escribe_fichero(const fs::path& fichero, std::string_view texto)
    {
        const int descriptor
            = open(fichero.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, fichero_suyo);
        if (descriptor < 0)
            return errno;
        const int error = escribe_todo(descriptor, texto);
        close(descriptor);
        return error;
    }

    /// A short name for the place of the databases (FNV-1a): the same for every version of the program.
    std::string huella(std::string_view texto)
    {
        std::uint64_t valor = 14695981039346656037U;
        for (const char c : texto)
            valor = (valor ^ static_cast<unsigned char>(c)) * 1099511628211U;
        std::string cifras;
        for (int i = 0; i < 16; ++i, valor /= 16)
            cifras += "0123456789abcdef"[valor % 16];
        return cifras;
    }

    std::string en_una_sola_forma(const bases::Lugar& lugar)
    {
        if (lugar.clase() != bases::Lugar::Clase::carpeta)
            return lugar.texto();
        std::error_code fallo;
        const auto entera = fs::weakly_canonical(fs::absolute(lugar.carpeta()), fallo);
        return (fallo ? lugar.carpeta() : entera).string();
    }

    fs::path carpeta_de_estado()
    {
        const auto de = [](const char* variable) {
            const char* valor = std::getenv(variable);
            return fs::path(valor == nullptr ? "" : valor);
        };
        if (auto estado = de("XDG_STATE_HOME"); estado.is_absolute())
            return estado;
        const auto casa = de("HOME");
        return casa.is_absolute() ? casa / ".local" / "state" : fs::path();
    }

    bool es_borrador(const fs::directory_entry& entrada)
    {
        std::error_code da_igual;
        return entrada.path().extension() == final_de_borrador && !entrada.is_symlink(da_igual)
            && entrada.is_regular_file(da_igual);
    }

    /// What a process leaves that is killed before its first draft is whole, or after it took one away.
    void barre_restos(const std::vector<fs::path>& ficheros)
    {
        for (const auto& fichero : ficheros) {
            auto borrador = fichero;
            borrador.replace_extension(); // x.json.cerrojo, x.json.parcial
            std::error_code fallo;
            if (borrador.extension() != final_de_borrador || fs::exists(borrador, fallo)
                || CerrojoDeBorrador::tomado(borrador))
                continue;
            try {
                if (const auto cerrojo = CerrojoDeBorrador::toma(borrador);
                    cerrojo && !fs::exists(borrador, fallo))
                    cerrojo->borra_borrador();
            } catch (const Error&) { // they stay where nobody may write
            }
        }
    }

}

/// The file of one editor; it has a name from its first draft on.
class BorradoresEnCarpeta::Abierto final : public BorradorAbierto {
public:
    Abierto(fs::path carpeta, DuenoDeBorradores dueno)
        : m_carpeta(std::move(carpeta))
        , m_dueno(std::move(dueno))
    {
    }

    void Guardar(const Borrador& borrador) override
    {
        crea_carpeta(m_carpeta);
        if (!m_cerrojo)
            m_cerrojo = toma_uno_nuevo();
        const auto parcial = m_cerrojo->parcial();
        int error = escribe_fichero(parcial, borrador_en_texto(borrador, modComun::reloj().ahora(), m_dueno));
        if (error == 0 && rename(parcial.c_str(), m_cerrojo->borrador().c_str()) != 0)
            error = errno;
        if (error != 0) {
            unlink(parcial.c_str());
            no_se_escribe(m_cerrojo->borrador(), error);
        }
        bases::asegura_nombres(m_carpeta);
    }

    void Quitar() noexcept override
    {
        if (!m_cerrojo)
            return;
        m_cerrojo->borra_borrador();
        m_cerrojo.reset();
        bases::asegura_nombres(m_carpeta); // one that came back would be saved twice
    }

private:
    [[nodiscard]] std::unique_ptr<CerrojoDeBorrador> toma_uno_nuevo() const
    {
        static int numero = 0;
        for (;;) {
            const auto fichero = m_carpeta
                / ("cargo-" + std::to_string(getpid()) + "-" + std::to_string(++numero) + final_de_borrador);
            auto cerrojo = CerrojoDeBorrador::toma(fichero);
            std::error_code fallo;
            if (cerrojo && !fs::exists(fs::symlink_status(fichero, fallo))) // of a process long gone
                return cerrojo;
        }
    }

    fs::path m_carpeta;
    DuenoDeBorradores m_dueno;
    std::unique_ptr<CerrojoDeBorrador> m_cerrojo;
};

BorradoresEnCarpeta::BorradoresEnCarpeta(fs::path carpeta, DuenoDeBorradores dueno)
    : m_carpeta(std::move(carpeta))
    , m_dueno(std::move(dueno))
{
}

std::shared_ptr<BorradoresEnCarpeta> BorradoresEnCarpeta::de_la_persona(
    const bases::Lugar& lugar, std::int16_t empresa, std::int32_t usuario)
{
    const auto estado = carpeta_de_estado();
    if (estado.empty())
        return nullptr;
    const DuenoDeBorradores dueno{ en_una_sola_forma(lugar), empresa, usuario };
    return std::make_shared<BorradoresEnCarpeta>(estado / "atipicos" / "borradores"
            / (std::to_string(empresa) + "-" + std::to_string(usuario) + "-" + huella(dueno.lugar)),
        dueno);
}

std::unique_ptr<BorradorAbierto> BorradoresEnCarpeta::Abrir()
{
    return std::make_unique<Abierto>(m_carpeta, m_dueno);
}

std::vector<BorradorOfrecido> BorradoresEnCarpeta::ofrecidos() const
{
    std::vector<BorradorOfrecido> hallados;
    std::vector<fs::path> restos;
    std::error_code fallo;
    for (fs::directory_iterator entrada(m_carpeta, fallo), fin; !fallo && entrada != fin;
         entrada.increment(fallo)) {
        if (!es_borrador(*entrada)) {
            restos.push_back(entrada->path());
            continue;
        }
        if (CerrojoDeBorrador::tomado(entrada->path()))
            continue;
        auto& hallado = hallados.emplace_back();
        hallado.fichero = entrada->path();
        try {
            hallado.leido = lee(hallado.fichero);
        } catch (const Error& error) {
            hallado.motivo = error.descripcion();
        }
    }
    barre_restos(restos);
    std::sort(hallados.begin(), hallados.end(), [](const auto& a, const auto& b) {
        if (a.leido.has_value() != b.leido.has_value())
            return a.leido.has_value();
        if (a.leido && a.leido->momento != b.leido->momento)
            return b.leido->momento < a.leido->momento;
        return a.fichero < b.fichero;
    });
    return hallados;
}

BorradorLeido BorradoresEnCarpeta::lee(const fs::path& fichero) const
{
    std::ifstream abierto(fichero, std::ios::binary);
    if (!abierto)
        throw Error(no_hecho, "atipicos", motivo_sistema(errno));
    const std::string texto{ std::istreambuf_iterator<char>(abierto), {} };
    return lee_borrador(texto, m_dueno);
}

} // namespace atipicos::app
