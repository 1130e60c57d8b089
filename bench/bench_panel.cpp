// The main window of a company with 74 charges and of one with a million, on SQLite: from its construction to
// the window on screen, to its list and to all of its figures; and each reader by itself. Without a display.
//     bench_panel [FOLDER]     of a company that is there already
#include "bench/Medida.hpp"
#include "bench/MuchosCargos.hpp"
#include "context/modComun.hpp"
#include "host/panel/Busqueda.hpp"
#include "host/panel/Comparacion.hpp"
#include "host/panel/LecturaDeCargos.hpp"
#include "host/panel/Pendientes.hpp"
#include "host/ventanas/frmPrincipal.hpp"
#include "tests/integracion/Sedes.hpp"
#include "tests/support/Persona.hpp"

#include <QLabel>
#include <QTableView>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

constexpr int veces = 5;

template <class Trabajo> void mide(const char* nombre, Trabajo trabajo)
{
    bench::Medida medida;
    for (int i = 0; i < veces; ++i)
        medida.mide(trabajo);
    medida.escribe(nombre);
}

void espera(const char* que, const std::function<bool()>& llega)
{
    if (!QTest::qWaitFor(llega, 60'000))
        throw std::runtime_error(que);
}

void lee(const app::Ambito& ambito)
{
    const app::Sigue sigue = [] { return true; };
    const auto hoy = Date::de_dia(2026, 11, 22).value();
    const app::Busqueda busqueda(ambito);
    const auto busca = [&](const char* tecleado) {
        busqueda.busca(busqueda.interpreta(tecleado), sigue, [](const auto&) {});
    };
    mide("the latest hundred", [&] { static_cast<void>(app::ultimos_cargos(ambito, 100)); });
    mide("beginning of all codes", [&] { busca("AT26"); });
    mide("a code", [&] { busca("AT260017"); });
    mide("a supplier", [&] { busca("nandu"); });
    mide("an amount that is nowhere", [&] { busca("99.999,99"); });
    mide("months and years", [&] { static_cast<void>(app::compara(ambito, hoy, sigue)); });
    mide("charges without entry", [&] { static_cast<void>(app::cargos_sin_asiento(ambito)); });
    mide("forecasts", [&] { static_cast<void>(app::previsiones_proximas(ambito, hoy)); });
    mide("entries without charge", [&] { static_cast<void>(app::asientos_sueltos(ambito, sigue)); });
}

void abre(const app::OpcionesComunes& opciones)
{
    app::Sesion sesion(opciones);
    bench::Medida pantalla;
    bench::Medida lista;
    bench::Medida cifras;
    bench::Medida cierre;
    for (int i = 0; i < veces; ++i) {
        std::unique_ptr<app::frmPrincipal> ventana;
        const auto abierta = [&] {
            ventana = std::make_unique<app::frmPrincipal>(sesion, opciones);
            ventana->show();
            if (!QTest::qWaitForWindowExposed(ventana.get()))
                throw std::runtime_error("the window is not exposed");
        };
        pantalla.mide(abierta);
        lista.mide([&] {
            espera(
                "list", [&] { return control<QTableView>(*ventana, "vsUltimos").model()->rowCount() > 0; });
        });
        cifras.mide([&] {
            espera("figures", [&] {
                return control<QLabel>(*ventana, "lblSueltos").text() != QStringLiteral("Se está mirando…");
            });
        });
        ventana.reset();
        abierta(); // and closed while it is reading
        QTest::qWait(100);
        cierre.mide([&] { ventana.reset(); });
    }
    pantalla.escribe("window on screen");
    lista.escribe("and from then to its list");
    cifras.escribe("and from then to its figures");
    cierre.escribe("closed while it reads");
}

void todo(const app::OpcionesComunes& opciones)
{
    lee({ bases::abre_bases(opciones.lugar(), { .solo_lectura = true }), 1, 1 });
    abre(opciones);
}

}

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication aplicacion(argc, argv);
    app::OpcionesComunes opciones;
    if (argc > 1) {
        opciones.datos = argv[1];
        todo(opciones);
        return 0;
    }
    for (const std::size_t cuantos : { std::size_t{ 74 }, std::size_t{ 1'000'000 } }) {
        const auto muestra = en_carpeta().muestra();
        opciones.datos = muestra->lugar().carpeta();
        bases::abre_bases(muestra->lugar()).orvalin->Execute(bench::muchos_cargos(cuantos));
        std::printf("%zu charges\n", cuantos);
        todo(opciones);
    }
}
