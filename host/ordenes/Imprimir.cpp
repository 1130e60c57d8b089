#include "browser/ListaAtipicos.hpp"
#include "controls/EscritorPdf.hpp"
#include "controls/LienzoQt.hpp"
#include "host/comprobacion/CargoConsultado.hpp"
#include "host/documento/DocumentoCargo.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "host/orvalin/Fichas.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/terminal/Interrupcion.hpp"
#include "host/terminal/Progreso.hpp"
#include "runtime/SalidaSegura.hpp"

#include <QGuiApplication>
#include <QIODevice>

#include <algorithm>

namespace atipicos::app {

namespace {

    namespace fs = std::filesystem;

    std::vector<ClaveCargo> pedidos(const OpcionesImprimir& opciones)
    {
        std::vector<ClaveCargo> claves;
        for (const auto& codigo : opciones.codigos)
            claves.push_back({ opciones.ejercicio, opciones.almacen, codigo });
        if (!claves.empty())
            return claves;
        Cargar_Atipicos({ opciones.desde.texto(), opciones.hasta.texto(), opciones.almacen, 0 },
            [&](const CargoListado& cargo) {
                Interrupcion::comprueba();
                claves.push_back({ static_cast<std::int16_t>(cargo.Fecha.anio()),
                    static_cast<std::int16_t>(cargo.Cod_Almacen), cargo.Codigo });
            });
        std::reverse(claves.begin(), claves.end()); // the list has the newest first
        return claves;
    }

    /// The documents of charges, each read and laid out when it is asked for.
    class Documentos {
    public:
        Documentos(Sesion& sesion, orvalin::Plantilla plantilla)
            : m_sesion(sesion)
            , m_plantilla(std::move(plantilla))
        {
        }

        [[nodiscard]] std::shared_ptr<const Report> documento(const ClaveCargo& clave)
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

    private:
        Sesion& m_sesion;
        orvalin::Plantilla m_plantilla;
        MedidorQt m_medidor;
    };

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

    void en_un_fichero(const std::vector<ClaveCargo>& claves, Documentos& documentos, const fs::path& destino)
    {
        auto documento = documentos.documento(claves.front());
        FicheroPdf pdf(destino,
            claves.size() == 1 ? documento->titulo()
                               : "Reclamaciones a proveedores (" + std::to_string(claves.size()) + ")");
        Progreso progreso("Imprimiendo", claves.size());
        for (std::size_t i = 0; i < claves.size(); ++i) {
            Interrupcion::comprueba();
            if (i > 0)
                documento = documentos.documento(claves[i]);
            pdf.agrega(*documento);
            progreso.avanza();
        }
        pdf.termina();
    }

    fs::path nombre_fichero(const Report& documento)
    {
        auto nombre = documento.nombre_de_fichero() + ".pdf";
        std::replace(nombre.begin(), nombre.end(), '/', '_');
        return nombre;
    }

    void en_una_carpeta(
        const std::vector<ClaveCargo>& claves, Documentos& documentos, const fs::path& carpeta)
    {
        fs::create_directories(carpeta);
        Progreso progreso("Imprimiendo", claves.size());
        for (const auto& clave : claves) {
            Interrupcion::comprueba();
            const auto documento = documentos.documento(clave);
            FicheroPdf pdf(carpeta / nombre_fichero(*documento), documento->titulo());
            pdf.agrega(*documento);
            pdf.termina();
            progreso.avanza();
        }
    }

    /// Qt's remarks on the surroundings are not for the person; what goes wrong is told by an error.
    void calla(QtMsgType, const QMessageLogContext&, const QString&) { }

    /// Nothing is shown, so no display is asked for, whatever the person has set for his windows: the
    /// platforms that need one end the program when there is none, and so do the themes of some desktops.
    void sin_pantalla()
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qunsetenv("QT_QPA_PLATFORMTHEME");
    }

}

int imprimir(const OpcionesComunes& comunes, const OpcionesImprimir& opciones)
{
    qInstallMessageHandler(calla);
    sin_pantalla();
    int argc = 1;
    char nombre[] = "atipicos";
    char* argv[] = { nombre, nullptr };
    const QGuiApplication aplicacion(argc, argv);

    Sesion sesion(comunes);
    const auto claves = pedidos(opciones);
    if (claves.empty())
        throw Error(no_hecho, "atipicos",
            "No hay cargos entre el " + opciones.desde.texto() + " y el " + opciones.hasta.texto() + ".");
    Documentos documentos(sesion,
        opciones.plantilla.empty() ? orvalin::Plantilla::de_lugar(comunes.lugar())
                                   : orvalin::Plantilla::de_fichero(opciones.plantilla));
    if (opciones.carpeta.empty())
        en_un_fichero(claves, documentos, opciones.salida);
    else
        en_una_carpeta(claves, documentos, opciones.carpeta);
    return hecho;
}

} // namespace atipicos::app
