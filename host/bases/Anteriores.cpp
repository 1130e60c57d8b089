#include "host/bases/Anteriores.hpp"

#include "engines/sqlite/Connection.hpp"
#include "engines/sqlite/Examen.hpp"
#include "engines/sqlite/Instruccion.hpp"
#include "engines/sqlite/Traslado.hpp"
#include "host/bases/BasesEnCarpeta.hpp"
#include "host/bases/CarpetaProvisional.hpp"
#include "host/bases/Fallo.hpp"
#include "host/bases/Pasos.hpp"
#include "host/bases/Tablas.hpp"
#include "host/bases/Version.hpp"

#include <system_error>

namespace atipicos::bases {

namespace {

    namespace fs = std::filesystem;

    constexpr std::int32_t version_anterior = 1;

    /// Nobody else reads or writes the file while this lives. What its log still held is in it then, and
    /// nothing stands beside it.
    std::shared_ptr<sqlite::Connection> abre_a_solas(const fs::path& fichero, Donde donde)
    {
        auto conexion = sqlite::Connection::Abrir({ .fichero = fichero }, donde);
        comprueba_version(*conexion, "Esquema", fichero.string(), donde, version_anterior);
        try {
            for (const auto* ajuste : { "PRAGMA journal_mode=DELETE", "PRAGMA locking_mode=EXCLUSIVE",
                     "BEGIN EXCLUSIVE", "COMMIT" })
                conexion->sesion().ejecuta(ajuste, nullptr, donde);
            if (CStr(primera_fila(*conexion, "PRAGMA journal_mode", donde)[0], donde) == "delete")
                return conexion;
        } catch (const adodb::ErrorBaseDatos& error) {
            if (error.categoria() != adodb::Categoria::bloqueo)
                throw;
        }
        falla(fichero, "la tiene abierta otro programa. Ciérrelo antes de actualizar.", donde);
    }

    /// Gives one of them a name that is free.
    fs::path aparta(const fs::path& fichero, Donde donde)
    {
        const auto nombre = fichero.string() + ".anterior";
        fs::path apartado = nombre;
        for (int n = 2; !coloca(fichero, apartado, donde); ++n)
            apartado = nombre + "-" + std::to_string(n);
        return apartado;
    }

    /// Counts what is copied.
    class Marcha {
    public:
        Marcha(
            sqlite::Sesion& orvalin, sqlite::Sesion& bexmor, const OpcionesActualizar& opciones, Donde donde)
            : m_avance(opciones.avance)
        {
            for (const auto& [tabla, filas] : sqlite::filas_por_tabla(orvalin, donde))
                m_esperadas[tabla] = filas;
            for (const auto& [tabla, filas] : sqlite::filas_por_tabla(bexmor, donde))
                m_esperadas[sqlite::Segundo().prefijo + tabla] = filas;
            for (const auto& [tabla, filas] : m_esperadas)
                m_total += static_cast<std::uint64_t>(filas);
        }

        void cada_fila()
        {
            if (++m_hechas % 1024 == 0 && m_avance)
                m_avance(m_hechas, m_total);
        }
        [[nodiscard]] const std::map<std::string, std::int64_t>& esperadas() const noexcept
        {
            return m_esperadas;
        }

    private:
        const std::function<void(std::uint64_t, std::uint64_t)>& m_avance;
        std::map<std::string, std::int64_t> m_esperadas; ///< rows of each table of the new file
        std::uint64_t m_hechas = 0;
        std::uint64_t m_total = 0;
    };

    /// Everything that both files hold, in a new one.
    void reune(sqlite::Sesion& orvalin, sqlite::Sesion& bexmor, const fs::path& nueva,
        const OpcionesActualizar& opciones, Donde donde)
    {
        Marcha marcha(orvalin, bexmor, opciones, donde);
        const auto cada_fila = [&marcha] { marcha.cada_fila(); };
        const auto destino = sqlite::Sesion::abre({ .fichero = nueva, .crear = true }, donde);
        // Half of it is worth nothing, and nobody else has it: no journal.
        for (const auto* ajuste : { "PRAGMA journal_mode=OFF", "PRAGMA foreign_keys=OFF", "BEGIN" })
            destino->ejecuta(ajuste, nullptr, donde);
        sqlite::traslada(bexmor, *destino, sqlite::Segundo().prefijo, cada_fila, donde);
        sqlite::traslada(orvalin, *destino, {}, cada_fila, donde);
        destino->ejecuta("COMMIT", nullptr, donde);
        sqlite::exige_integridad(*destino, donde);
        if (sqlite::filas_por_tabla(*destino, donde) != marcha.esperadas())
            falla(nueva, "la copia no tiene las mismas filas.", donde);
    }

    void iguala(
        const fs::path& nueva, const std::string& antes, const OpcionesActualizar& opciones, Donde donde)
    {
        const auto bases = abre_fichero(nueva, {}, donde);
        da_pasos(bases, pasos(), nueva.string(), donde);
        if (opciones.examina(bases) != antes)
            falla(nueva, "la comprobación de la copia no dice lo mismo que la de los originales.", donde);
    }

}

bool hay_anteriores(const fs::path& carpeta)
{
    return fs::exists(carpeta / fichero_orvalin) || fs::exists(carpeta / fichero_bexmor);
}

void pide_actualizar(const fs::path& carpeta, Donde donde)
{
    falla(carpeta,
        "las bases de datos son de una versión anterior del programa, en dos ficheros. Actualícelas con: "
        "atipicos actualizar "
            + Lugar(carpeta).opcion(),
        donde);
}

Actualizada une_anteriores(const fs::path& carpeta, const OpcionesActualizar& opciones, Donde donde)
{
    const auto definitiva = carpeta / fichero_empresa;
    // Held until the new file is in their place: nothing can be written into what has been copied.
    const auto orvalin = abre_a_solas(carpeta / fichero_orvalin, donde);
    const auto bexmor = abre_a_solas(carpeta / fichero_bexmor, donde);
    const auto antes = opciones.examina({ orvalin, bexmor });
    const CarpetaProvisional provisional(carpeta, donde);
    const auto nueva = provisional / fichero_empresa;
    sqlite::nombrando("No se pudo hacer «" + definitiva.string() + "»", donde, [&] {
        reune(orvalin->sesion(), bexmor->sesion(), nueva, opciones, donde);
        iguala(nueva, antes, opciones, donde);
    });
    if (!coloca(nueva, definitiva, donde))
        falla(definitiva, "otro programa la ha hecho mientras tanto.", donde);
    return { version_anterior, guiones::version,
        { aparta(carpeta / fichero_orvalin, donde), aparta(carpeta / fichero_bexmor, donde) } };
}

std::vector<fs::path> aparta_anteriores(const fs::path& carpeta, Donde donde)
{
    std::vector<fs::path> apartados;
    for (const auto* fichero : { fichero_orvalin, fichero_bexmor })
        if (fs::exists(carpeta / fichero)) {
            const auto a_solas = abre_a_solas(carpeta / fichero, donde);
            apartados.push_back(aparta(carpeta / fichero, donde));
        }
    return apartados;
}

} // namespace atipicos::bases
