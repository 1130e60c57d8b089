// The editor on screen against an empty window of its size, and the 500th line keyed in against the 5th. Runs
// without a display: what is measured is everything but the display.
#include "bench/Medida.hpp"
#include "context/modComun.hpp"
#include "controls/VSFlexGrid.hpp"
#include "editor/frmCompras_Atipicos.hpp"
#include "host/app/Sesion.hpp"
#include "tests/support/Persona.hpp"

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

void abre_vacia()
{
    QWidget ventana;
    ventana.resize(920, 620); // as the editor opens
    ventana.show();
    en_pantalla(ventana);
}

void compara(const char* que, const std::function<void()>& editor, const std::function<void()>& vacia)
{
    bench::Medida con_editor;
    bench::Medida con_vacia;
    for (int i = 0; i < 30; ++i) {
        con_editor.mide(editor);
        con_vacia.mide(vacia);
    }
    std::printf("%s\n", que);
    con_editor.escribe("editor");
    con_vacia.escribe("empty window");
    std::printf("  ratio %.2f\n", con_editor.mediana() / con_vacia.mediana());
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
    if (argc == 2) { // --vacia
        abre_vacia();
        return 0;
    }
    app::OpcionesComunes opciones;
    if (argc == 3) { // --editor FOLDER
        opciones.datos = argv[2];
        app::Sesion sesion(opciones);
        abre_editor();
        return 0;
    }
    const bench::Carpeta carpeta;
    opciones.datos = carpeta / "datos";
    orvalin::crea_bases(opciones.lugar(), false);
    app::Sesion sesion(opciones);
    const std::string programa = argv[0];
    compara(
        "from starting the program to its window on screen, and its end",
        [&] { ejecuta(programa, "--editor '" + opciones.datos.string() + "'"); },
        [&] { ejecuta(programa, "--vacia"); });
    compara("one more window of a running program", abre_editor, abre_vacia);
    lineas();
}
