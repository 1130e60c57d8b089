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
        for (const auto* fichero : { fichero_orvalin, fichero_bexmor })
            if (fs::exists(fs::symlink_status(carpeta / fichero, fallo)))
                falla(carpeta / fichero, "ya existe. Elija otra carpeta o retire antes esas bases de datos.",
                    donde);
    }

    template <class Tablas> void crea(const fs::path& fichero, Tablas crea_tablas, bool vacia, Donde donde)
    {
        const auto conexion = sqlite::Connection::Abrir({ .fichero = fichero, .crear = true }, donde);
        conexion->BeginTrans(donde);
        crea_tablas(*conexion, vacia, donde);
        conexion->CommitTrans(donde);
    }

    void coloca(const fs::path& nuevo, const fs::path& definitivo, Donde donde)
    {
        std::error_code fallo;
        fs::rename(nuevo, definitivo, fallo);
        if (fallo)
            falla(definitivo, "no se puede crear el fichero.", donde);
    }

    std::shared_ptr<adodb::Connection> abre(
        sqlite::Opciones fichero, const OpcionesBases& opciones, Donde donde)
    {
        fichero.solo_lectura = opciones.solo_lectura;
        fichero.espera = opciones.espera;
        fichero.sincronizacion_completa = opciones.sincronizacion_completa;
        auto conexion = sqlite::Connection::Abrir(fichero, donde);
        // Named in full: a table missing here would be looked for in the attached database.
        comprueba_version(*conexion, "main.Esquema", fichero.fichero.string(), donde);
        return conexion;
    }

}

void crea_en_carpeta(const fs::path& carpeta, bool vacia, Donde donde)
{
    prepara_carpeta(carpeta, donde);
    const CarpetaProvisional provisional(carpeta, donde);
    const auto orvalin = provisional / fichero_orvalin;
    const auto bexmor = provisional / fichero_bexmor;
    crea(bexmor, crea_tablas_bexmor, vacia, donde);
    crea(orvalin, crea_tablas_orvalin, vacia, donde);
    coloca(bexmor, carpeta / fichero_bexmor, donde);
    try {
        coloca(orvalin, carpeta / fichero_orvalin, donde);
    } catch (const Error&) {
        std::error_code ignorado;
        fs::remove(carpeta / fichero_bexmor, ignorado);
        throw;
    }
}

void exige_bases(const fs::path& carpeta, Donde donde)
{
    if (!fs::exists(carpeta / fichero_orvalin) && !fs::exists(carpeta / fichero_bexmor))
        falla(carpeta,
            "no hay bases de datos en esta carpeta. Créelas con: atipicos crear --datos " + carpeta.string(),
            donde);
}

Bases abre_de_carpeta(const fs::path& carpeta, const OpcionesBases& opciones, Donde donde)
{
    exige_bases(carpeta, donde);
    Bases bases;
    bases.bexmor = abre({ .fichero = carpeta / fichero_bexmor }, opciones, donde);
    bases.orvalin = abre(
        { .fichero = carpeta / fichero_orvalin, .adjuntas = { { "Bexmor", carpeta / fichero_bexmor } } },
        opciones, donde);
    return bases;
}

} // namespace atipicos::bases
