#include "host/ventanas/DocumentosEnPdf.hpp"

#include "controls/EscritorPdf.hpp"
#include "host/bases/CarpetaProvisional.hpp"
#include "host/documento/CargoImpreso.hpp"
#include "host/documento/DocumentoCargo.hpp"
#include "host/documento/DocumentosUnidos.hpp"
#include "host/orvalin/Fichas.hpp"
#include "runtime/SalidaSegura.hpp"

#include <QIODevice>

#include <algorithm>
#include <utility>

namespace atipicos::app {

namespace {

    namespace fs = std::filesystem;

    /// A stream as Qt writes to it.
    class Desague final : public QIODevice {
    public:
        explicit Desague(std::ostream& flujo)
            : m_flujo(flujo)
        {
            open(QIODevice::WriteOnly | QIODevice::Unbuffered);
        }

        [[nodiscard]] bool isSequential() const override { return true; }

    protected:
        qint64 readData(char*, qint64) override { return -1; }
        qint64 writeData(const char* datos, qint64 cuantos) override
        {
            return m_flujo.write(datos, cuantos) ? cuantos : -1;
        }

    private:
        std::ostream& m_flujo;
    };

    /// One PDF file that gets its name when all of it is there.
    class FicheroPdf {
    public:
        FicheroPdf(const fs::path& destino, const std::string& titulo)
            : m_salida(destino)
            , m_desague(m_salida.flujo())
            , m_pdf(m_desague, titulo)
        {
        }

        void agrega(const Report& report)
        {
            m_pdf.agrega(report);
            if (!m_salida.flujo())
                m_salida.termina(); // raises what went wrong, before the rest is painted for nothing
        }

        void termina()
        {
            m_pdf.termina();
            m_salida.termina();
        }

    private:
        SalidaSegura m_salida;
        Desague m_desague;
        EscritorPdf m_pdf;
    };

    /// The name of its file the first, second, … time.
    std::string nombre_fichero(const Report& documento, int vez)
    {
        auto nombre = documento.nombre_de_fichero() + (vez == 1 ? "" : " (" + std::to_string(vez) + ")");
        std::replace(nombre.begin(), nombre.end(), '/', '_');
        return nombre + ".pdf";
    }

    /// Gives a complete file the first of its names that is free, however many work in the same folder.
    fs::path coloca(const fs::path& nuevo, const fs::path& carpeta, const Report& documento, int& vez)
    {
        for (vez = 1;; ++vez)
            if (auto fichero = carpeta / nombre_fichero(documento, vez); bases::coloca(nuevo, fichero))
                return fichero;
    }

}

DocumentosEnPdf::DocumentosEnPdf(Sesion& sesion, orvalin::Plantilla plantilla)
    : m_sesion(sesion)
    , m_plantilla(std::move(plantilla))
{
}

std::shared_ptr<const Report> DocumentosEnPdf::documento(const ClaveCargo& clave) const
{
    const auto cargo = orvalin::CargoImpreso::lee(
        *m_sesion.bases.orvalin, *m_sesion.empresa, clave.Ejercicio, clave.Almacen, clave.Codigo);
    orvalin::FichaAlmacen almacen(m_sesion.bases.orvalin, *m_sesion.empresa);
    almacen.Codigo = clave.Almacen;
    almacen.Cargar();
    orvalin::FichaProveedor proveedor(m_sesion.bases.orvalin, *m_sesion.empresa);
    proveedor.Codigo = cargo.Proveedor;
    proveedor.Cargar();
    return orvalin::documento_cargo(cargo, almacen, proveedor, m_plantilla, m_medidor);
}

void DocumentosEnPdf::en_un_fichero(
    const std::vector<ClaveCargo>& claves, const fs::path& destino, const HechoUno& hecho_uno)
{
    auto report = documento(claves.front());
    FicheroPdf pdf(destino, claves.size() == 1 ? report->titulo() : orvalin::titulo_de_varios(claves.size()));
    for (std::size_t i = 0; i < claves.size(); ++i) {
        if (i > 0)
            report = documento(claves[i]);
        pdf.agrega(*report);
        hecho_uno();
    }
    pdf.termina();
}

std::vector<fs::path> DocumentosEnPdf::en_una_carpeta(
    const std::vector<ClaveCargo>& claves, const fs::path& carpeta, const HechoUno& hecho_uno)
{
    fs::create_directories(carpeta);
    const bases::CarpetaProvisional provisional(carpeta);
    std::vector<fs::path> con_otro_nombre;
    for (const auto& clave : claves) {
        const auto report = documento(clave);
        const auto nuevo = provisional / nombre_fichero(*report, 1).c_str();
        FicheroPdf pdf(nuevo, report->titulo());
        pdf.agrega(*report);
        pdf.termina();
        int vez = 1;
        if (const auto fichero = coloca(nuevo, carpeta, *report, vez); vez > 1)
            con_otro_nombre.push_back(fichero.filename());
        hecho_uno();
    }
    return con_otro_nombre;
}

} // namespace atipicos::app
