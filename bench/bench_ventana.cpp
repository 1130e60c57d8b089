// The editor on screen against an empty window of its size, on SQLite and on PostgreSQL, and the 500th line
// keyed in against the 5th. Runs without a display: what is measured is everything but the display.
#include "bench/Medida.hpp"
#include "bench/SueloPostgresql.hpp"
#include "context/modComun.hpp"
#include "controls/VSFlexGrid.hpp"
#include "editor/frmCompras_Atipicos.hpp"
#include "host/sesion/Sesion.hpp"
#include "tests/integracion/Sedes.hpp"
#include "tests/support/Persona.hpp"

#include <QLabel>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

void en_pantalla(QWidget& ventana)
{
    if (!QTest::qWaitForWindowExposed(&ventana))
        throw std::runtime_error("the window is not exposed");
    ventana.repaint();
}

void linea()
{
    pulsa(Qt::Key_1);
    teclea("006");
    intro(3);
    teclea("12");
    intro();
    teclea("5,63");
    intro(2);
    enfocado().window()->repaint();
}

void abre_editor()
{
    frmCompras_Atipicos form;
    form.Show();
    en_pantalla(form);
}

void abre_vacia(const QString& palabra = {})
{
    QLabel ventana(palabra);
    ventana.resize(920, 620); // as the editor opens
    ventana.show();
    en_pantalla(ventana);
}

// What the first letter of a program costs, whatever the program: its fonts are looked for and loaded.
void abre_una_palabra() { abre_vacia(QStringLiteral("Proveedor")); }

struct Modo {
    const char* nombre;
    std::function<void()> abre;
    bench::Medida medida = {};
};

/// The first one against each of the others.
void compara(const char* que, std::vector<Modo> modos)
{
    for (int i = 0; i < 30; ++i)
        for (auto& modo : modos)
            modo.medida.mide(modo.abre);
    std::printf("%s\n", que);
    for (auto& modo : modos)
        modo.medida.escribe(modo.nombre);
    for (std::size_t i = 1; i < modos.size(); ++i)
        std::printf("  ratio to the %s %.2f\n", modos[i].nombre,
            modos[0].medida.mediana() / modos[i].medida.mediana());
}

/// This program again, to open one window and end.
void ejecuta(const std::string& programa, const std::string& argumentos)
{
    if (std::system(("'" + programa + "' " + argumentos + " 2>/dev/null").c_str()) != 0)
        throw std::runtime_error("the program cannot be run again");
}

void lineas()
{
    frmCompras_Atipicos form;
    form.Show();
    en_pantalla(form);
    intro();
    teclea("104");
    intro(4);
    bench::Medida primeras;
    bench::Medida con_la_rejilla_llena;
    bench::Medida ultimas;
    for (int i = 1; i <= 505; ++i) {
        if (i <= 10)
            primeras.mide(linea);
        else if (i > 45 && i <= 55)
            con_la_rejilla_llena.mide(linea);
        else if (i > 495)
            ultimas.mide(linea);
        else
            linea();
    }
    if (control<VSFlexGrid>(form, "vsCargos").Rows() != 506)
        throw std::runtime_error("a line is missing");
    std::printf("one line, from its first key to its painted row\n");
    primeras.escribe("around the 5th");
    con_la_rejilla_llena.escribe(
        "around the 50th"); // from here on as many rows are painted as there is room for
    ultimas.escribe("around the 500th");
    std::printf("  ratio to the 5th %.2f, to the 50th %.2f\n", ultimas.mediana() / primeras.mediana(),
        ultimas.mediana() / con_la_rejilla_llena.mediana());
}

}

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication aplicacion(argc, argv);
    if (argc == 2) { // --vacia or --palabra
        argv[1] == std::string_view("--palabra") ? abre_una_palabra() : abre_vacia();
        return 0;
    }
    app::OpcionesComunes opciones;
    if (argc == 3 && argv[1] == std::string_view("--conectada")) { // ADDRESS
        const auto linea = bench::conecta(argv[2], "orvalin");
        abre_vacia();
        return 0;
    }
    if (argc == 3) { // --editor ADDRESS
        opciones.conexion = argv[2];
        app::Sesion sesion(opciones);
        abre_editor();
        return 0;
    }
    const std::string programa = argv[0];
    const auto muestra = en_carpeta().muestra();
    opciones.datos = muestra->lugar().carpeta();
    compara("from starting the program to its window on screen, and its end",
        { { "editor", [&] { ejecuta(programa, "--editor 'sqlite:" + opciones.datos.string() + "'"); } },
            { "empty window", [&] { ejecuta(programa, "--vacia"); } },
            { "window with one word", [&] { ejecuta(programa, "--palabra"); } } });
    if (en_postgresql().falta.empty()) {
        const auto en_servidor = en_postgresql().muestra();
        const auto direccion = "'" + en_servidor->lugar().direccion() + "'";
        compara("the same with the databases on a PostgreSQL server",
            { { "editor", [&] { ejecuta(programa, "--editor " + direccion); } },
                { "empty, a bare connection", [&] { ejecuta(programa, "--conectada " + direccion); } } });
    } else {
        std::printf("%s\n", en_postgresql().falta.c_str());
    }
    app::Sesion sesion(opciones);
    compara("one more window of a running program",
        { { "editor", abre_editor }, { "empty window", [] { abre_vacia(); } } });
    lineas();
}
