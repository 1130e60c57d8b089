// One operation after the other of every command of the browser fails, or loses its connection, on SQLite and
// PostgreSQL: a box says so, the charges stay as they were or as the command leaves them, and the same
// command works in the next window.
#include "tests/browser/EscenaVisor.hpp"
#include "tests/support/Ventanas.hpp"

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

struct Comando {
    const char* nombre;
    int elimina; ///< charges that it takes away
    void (*da)(EscenaVisor&);
};

const std::vector<Comando> comandos{
    { "search", 0,
        [](EscenaVisor& visor) {
            visor.c<>("txtFechaF").setFocus();
            visor.busca();
        } },
    { "details", 0, [](EscenaVisor& visor) { visor.pestanas().setCurrentIndex(1); } },
    { "next in the details", 0,
        [](EscenaVisor& visor) {
            visor.pestanas().setCurrentIndex(1);
            visor.clic("cmdSiguiente");
        } },
    { "delete", 1,
        [](EscenaVisor& visor) {
            visor.banco.avisos->respuestas = { Respuesta::Si };
            visor.clic("cmdEliminar");
        } },
};

}

class BarridoVisor_Test : public QObject {
    Q_OBJECT

    static int cargos(EscenaVisor& visor) { return visor.banco.estado().at("Proveedores_Cargos_Atipicos"); }

    /// With another connection, as after the program has been started again.
    static void abre_otra_ventana(EscenaVisor& visor)
    {
        visor.form.close();
        visor.banco.parte->falla_en = 0;
        visor.banco.parte->conexion_perdida = false;
        modComun::set_ConexionOrvalin(
            std::make_shared<ConexionEspia>("gestion", visor.banco.bases().orvalin, visor.banco.parte));
        visor.abre_y_busca();
        visor.banco.avisos->dichos.clear();
    }

private slots:
    void every_operation_of_every_command_data()
    {
        QTest::addColumn<int>("sede");
        QTest::addColumn<bool>("perdida");
        const auto todas = sedes_sin_odbc();
        for (std::size_t i = 0; i < todas.size(); ++i)
            for (const bool perdida : { false, true })
                QTest::addRow("%s, %s", todas[i].nombre.c_str(), perdida ? "lost connection" : "statement")
                    << static_cast<int>(i) << perdida;
    }

    void every_operation_of_every_command()
    {
        QFETCH(const int, sede);
        QFETCH(const bool, perdida);
        const auto donde = sedes_sin_odbc().at(static_cast<std::size_t>(sede));
        if (!donde.falta.empty())
            QSKIP(donde.falta.c_str());
        int averias = 0;
        for (const auto& comando : comandos)
            for (std::size_t n = 1;; ++n) {
                EscenaVisor visor(donde);
                visor.banco.guarda();
                visor.banco.guarda();
                visor.abre_y_busca();
                visor.banco.avisos->dichos.clear();
                visor.banco.parte->conexion_perdida = perdida;
                visor.banco.parte->falla_en = n;
                comando.da(visor);
                if (visor.banco.parte->dichas.size() < n)
                    break; // it has no more operations
                ++averias;
                const auto titulos = visor.banco.titulos();
                const auto cual = std::string(comando.nombre) + ", operation " + std::to_string(n);
                QVERIFY2(!titulos.empty() && titulos.back() != "¡ Atención !", cual.c_str());
                QVERIFY2(visor.form.isVisible(), cual.c_str());
                const int quedan = cargos(visor);
                QVERIFY2(quedan == 2 || quedan == 2 - comando.elimina, cual.c_str());
                QVERIFY2(visor.banco.estado().at("Proveedores_Cargos_Atipicos_Lineas") == 3 * quedan,
                    cual.c_str());
                abre_otra_ventana(visor);
                comando.da(visor);
                QVERIFY2(cargos(visor) == quedan - comando.elimina, cual.c_str());
                QVERIFY2(visor.banco.titulos().size() == static_cast<std::size_t>(comando.elimina),
                    cual.c_str()); // the question alone
            }
        QCOMPARE(averias, 15); // 1 of the search, 3 and 6 of the details, 5 of the deletion
    }
};

ATIPICOS_PRUEBA_VENTANAS(BarridoVisor_Test)
#include "BarridoVisor_test.moc"
