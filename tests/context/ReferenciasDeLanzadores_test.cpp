// What a host hands to a launcher reaches the component, each in its own place.
#include "browser/frmCompras_Atipicos_Visor.hpp"
#include "context/frmclsCompras_Atipicos.hpp"
#include "context/frmclsComprasAtipVisor.hpp"
#include "context/modComun.hpp"
#include "tests/integracion/Banco.hpp"
#include "tests/support/Contexto.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

template <class Lanzador> void llegan_las_cuatro()
{
    const Contexto contexto;
    const Lanzador lanzador;
    const auto gestion = std::make_shared<ConexionDePrueba>();
    lanzador.set_ConexionOrvalin(gestion);
    QCOMPARE(modComun::ConexionOrvalin().get(), gestion.get());
    QCOMPARE(modComun::ConexionBexmor().get(), contexto.contabilidad.get());
    const auto contabilidad = std::make_shared<ConexionDePrueba>();
    lanzador.set_ConexionBexmor(contabilidad);
    QCOMPARE(modComun::ConexionBexmor().get(), contabilidad.get());
    QCOMPARE(modComun::ConexionOrvalin().get(), gestion.get());
    const auto empresa = std::make_shared<EmpresaDePrueba>();
    lanzador.set_EmpresaOrvalin(empresa);
    QCOMPARE(modComun::EmpresaOrvalin().get(), empresa.get());
    const std::shared_ptr<qvbxemp::Empresa> contable = contexto.biblioteca->NuevaEmpresa(Donde::aqui());
    lanzador.set_EmpresaBexmor(contable);
    QCOMPARE(modComun::EmpresaBexmor().get(), contable.get());
}

QWidget& visor_abierto()
{
    for (QWidget* ventana : QApplication::topLevelWidgets())
        if (ventana->objectName() == QLatin1String("frmCompras_Atipicos_Visor") && ventana->isVisible())
            return *ventana;
    qFatal("the browser is not open");
}

}

class ReferenciasDeLanzadores_Test : public QObject {
    Q_OBJECT
private slots:
    void companies_and_connections_of_the_editors_launcher_are_those_of_the_component()
    {
        llegan_las_cuatro<frmclsCompras_Atipicos>();
    }

    void so_are_those_of_the_browsers_launcher() { llegan_las_cuatro<frmclsComprasAtipVisor>(); }

    void each_search_that_has_been_run_is_told_to_the_host()
    {
        const Banco banco;
        std::vector<frmclsComprasAtipVisor::Busqueda> dichas;
        frmclsComprasAtipVisor lanzador;
        lanzador.Ejercicio = 2025;
        lanzador.Almacen_Inicial = 3;
        lanzador.Proveedor_Inicial = 106;
        lanzador.Fecha_Inicial = dia("02/03/2025");
        lanzador.Fecha_Final = dia("29/10/2026");
        lanzador.Show();
        auto& visor = visor_abierto();
        QCOMPARE(static_cast<frmCompras_Atipicos_Visor&>(visor).Ejercicio, std::int16_t{ 2025 });
        QVERIFY(QTest::qWaitForWindowActive(&visor, atipicos::pruebas::paciencia));
        control(visor, "txtFechaF").setFocus();
        intro(); // nobody listens yet
        lanzador.set_AlBuscar(
            [&](const frmclsComprasAtipVisor::Busqueda& busqueda) { dichas.push_back(busqueda); });
        control(visor, "txtFechaF").setFocus();
        intro();
        QVERIFY((dichas
            == std::vector<frmclsComprasAtipVisor::Busqueda>{
                { dia("02/03/2025"), dia("29/10/2026"), 3, 106 } }));
    }
};

ATIPICOS_PRUEBA_VENTANAS(ReferenciasDeLanzadores_Test)
#include "ReferenciasDeLanzadores_test.moc"
