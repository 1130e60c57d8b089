#include "host/bases/BasesEnCarpeta.hpp"

#include "engines/sqlite/Connection.hpp"
#include "host/bases/Tablas.hpp"
#include "host/bases/Version.hpp"

#include <cstdlib>
#include <string>
#include <system_error>

namespace atipicos::bases {

namespace {

    namespace fs = std::filesystem;

    constexpr std::int32_t error_bases = 1000;
    constexpr auto fuente = "Orvalin:Bases";

    [[noreturn]] void falla(const fs::path& ruta, const std::string& motivo, Donde donde)
    {
        throw Error(error_bases, fuente, "«" + ruta.string() + "»: " + motivo, donde);
    }

    /// A folder of its own inside another, gone at the end with all that is still in it.
    class CarpetaProvisional {
    public:
        CarpetaProvisional(const fs::path& carpeta, Donde donde)
        {
            std::string plantilla = (carpeta / ".nuevas-XXXXXX").string();
            if (mkdtemp(plantilla.data()) == nullptr)
                falla(carpeta, "no se puede escribir en la carpeta.", donde);
            m_ruta = plantilla;
        }
        CarpetaProvisional(const CarpetaProvisional&) = delete;
        CarpetaProvisional& operator=(const CarpetaProvisional&) = delete;
        ~CarpetaProvisional()
        {
            std::error_code ignorado;
            fs::remove_all(m_ruta, ignorado);
        }
        [[nodiscard]] fs::path operator/(const char* nombre) const { return m_ruta / nombre; }

    private:
        fs::path m_ruta;
    };

    void prepara_carpeta(const fs::path& carpeta, Donde donde)
    {
        std::error_code fallo;
        fs::create_directories(carpeta, fallo);
        if (!fs::is_directory(carpeta, fallo))
            falla(carpeta, "no se puede crear la carpeta.", donde);
        if (fs::exists(fs::symlink_status(carpeta / fichero_empresa, fallo)))
            falla(carpeta / fichero_empresa,
                "ya existe. Elija otra carpeta o retire antes esa base de datos.", donde);
    }

    void crea(const fs::path& fichero, bool vacia, Donde donde)
    {
        const auto pareja = sqlite::Connection::AbrirPareja({ .fichero = fichero, .crear = true }, {}, donde);
        pareja.gestion->BeginTrans(donde);
        pareja.contabilidad->BeginTrans(donde);
        crea_tablas_bexmor(*pareja.contabilidad, vacia, donde);
        crea_tablas_orvalin(*pareja.gestion, vacia, donde);
        pareja.gestion->CommitTrans(donde);
        pareja.contabilidad->CommitTrans(donde);
    }

    void coloca(const fs::path& nuevo, const fs::path& definitivo, Donde donde)
    {
        std::error_code fallo;
        fs::rename(nuevo, definitivo, fallo);
        if (fallo)
            falla(definitivo, "no se puede crear el fichero.", donde);
    }

}

void crea_en_carpeta(const fs::path& carpeta, bool vacia, Donde donde)
{
    prepara_carpeta(carpeta, donde);
    const CarpetaProvisional provisional(carpeta, donde);
    const auto nueva = provisional / fichero_empresa;
    crea(nueva, vacia, donde);
    coloca(nueva, carpeta / fichero_empresa, donde);
}

void exige_bases(const fs::path& carpeta, Donde donde)
{
    if (!fs::exists(carpeta / fichero_empresa))
        falla(carpeta,
            "no hay ninguna base de datos en esta carpeta. Créela con: atipicos crear --datos "
                + carpeta.string(),
            donde);
}

Bases abre_de_carpeta(const fs::path& carpeta, const OpcionesBases& opciones, Donde donde)
{
    exige_bases(carpeta, donde);
    const auto fichero = carpeta / fichero_empresa;
    const auto pareja
        = sqlite::Connection::AbrirPareja({ .fichero = fichero,
                                              .solo_lectura = opciones.solo_lectura,
                                              .espera = opciones.espera,
                                              .sincronizacion_completa = opciones.sincronizacion_completa },
            {}, donde);
    comprueba_version(*pareja.gestion, "Esquema", fichero.string(), donde);
    comprueba_version(*pareja.contabilidad, "Esquema", fichero.string(), donde);
    return { pareja.gestion, pareja.contabilidad, pareja.transacciones };
}

} // namespace atipicos::bases
