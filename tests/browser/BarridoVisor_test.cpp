// One operation after the other of every command of the browser fails, or loses its connection, on SQLite and
// PostgreSQL: a box says so, the charges stay as they were or as the command leaves them, and the same
// command works in the next window.
#include "tests/browser/EscenaVisor.hpp"
#include "tests/support/Ventanas.hpp"

#include <QSettings>
#include <QTemporaryDir>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

struct Comando {
    const char* nombre;
    void (*da)(EscenaVisor&);
};

const std::vector<Comando> comandos{
    { "search",
        [](EscenaVisor& visor) {
            visor.c<>("txtFechaF").setFocus();
            visor.busca();
        } },
    { "details", [](EscenaVisor& visor) { visor.pestanas().setCurrentIndex(1); } },
    { "next in the details",
        [](EscenaVisor& visor) {
            visor.pestanas().setCurrentIndex(1);
            visor.clic("cmdSiguiente");
        } },
    { "delete",
        [](EscenaVisor& visor) {
            visor.banco.avisos->respuestas = { Respuesta::Si };
            visor.clic("cmdEliminar");
        } },
};

}

class BarridoVisor_Test : public QObject {
    Q_OBJECT

    QTemporaryDir m_ajustes;

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("atipicos"));
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_ajustes.path());
    }

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
                const auto cargos = visor.banco.estado().at("Proveedores_Cargos_Atipicos");
                const auto lineas = visor.banco.estado().at("Proveedores_Cargos_Atipicos_Lineas");
                QVERIFY2(lineas == 3 * cargos && (cargos == 2 || (cargos == 1 && comando.nombre[1] == 'e')),
                    cual.c_str());
            }
        qInfo("%d faults", averias);
        QVERIFY(averias >= 7);
    }
};

ATIPICOS_PRUEBA_VENTANAS(BarridoVisor_Test)
#include "BarridoVisor_test.moc"
