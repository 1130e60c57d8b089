#include "browser/ListaAtipicos.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/terminal/Interrupcion.hpp"
#include "host/terminal/Progreso.hpp"
#include "host/ventanas/DocumentosEnPdf.hpp"

#include <QGuiApplication>

#include <algorithm>
#include <iostream>

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

    void cuenta_otros_nombres(const std::vector<fs::path>& nombres)
    {
        for (const auto& nombre : nombres)
            std::cout << "Ya había un fichero con ese nombre: queda en «" << nombre.string() << "».\n";
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
    DocumentosEnPdf documentos(sesion,
        opciones.plantilla.empty() ? orvalin::Plantilla::de_lugar(comunes.lugar())
                                   : orvalin::Plantilla::de_fichero(opciones.plantilla));
    Progreso progreso("Imprimiendo", claves.size());
    const auto hecho_uno = [&] {
        progreso.avanza();
        Interrupcion::comprueba();
    };
    if (opciones.carpeta.empty())
        documentos.en_un_fichero(claves, opciones.salida, hecho_uno);
    else
        cuenta_otros_nombres(documentos.en_una_carpeta(claves, opciones.carpeta, hecho_uno));
    return hecho;
}

} // namespace atipicos::app
