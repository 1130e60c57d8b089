// The charge browser prints.
#include "printing/frmImpresora.hpp"
#include "tests/browser/ConTresCargos.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

using namespace atipicos;
using pruebas::ConTresListados;
using pruebas::EscenaVisor;

namespace {

/// A management library that writes down what it is asked to print.
class Imprenta final : public qvoremp::Biblioteca {
public:
    std::shared_ptr<QStringList> impresos = std::make_shared<QStringList>();

    std::unique_ptr<qvoremp::Almacen> NuevoAlmacen(const qvoremp::Empresa&, Donde) const override
    {
        struct Almacen final : qvoremp::Almacen {
            bool Cargar(Donde) override { return true; }
        };
        return std::make_unique<Almacen>();
    }
    std::unique_ptr<qvoremp::Proveedor> NuevoProveedor(const qvoremp::Empresa&, Donde) const override
    {
        struct Proveedor final : qvoremp::Proveedor {
            bool Cargar(Donde) override { return true; }
        };
        return std::make_unique<Proveedor>();
    }
    std::unique_ptr<qvoremp::ImpresionCargo> NuevaImpresionCargo(
        const qvoremp::Empresa&, Donde) const override
    {
        struct Impresion final : qvoremp::ImpresionCargo {
            std::shared_ptr<QStringList> impresos;
            void Imprimir(Donde donde) override
            {
                if (Codigo == "ATASCO")
                    throw Error(1, "Prueba", "Sin papel", donde);
                *impresos << QStringLiteral("%1 %2 %3 %4")
                                 .arg(QString::fromStdString(Codigo))
                                 .arg(Ejercicio)
                                 .arg(almacen->Codigo)
                                 .arg(proveedor->Codigo);
            }
        };
        auto impresion = std::make_unique<Impresion>();
        impresion->impresos = impresos;
        return impresion;
    }
};

/// Presses a button of the dialog of devices that `accion` opens.
bool con_dispositivos(const std::function<void()>& accion, const char* boton)
{
    return pruebas::con_dialogo<frmImpresora>(
        accion, [boton](frmImpresora& dialogo) { pruebas::clic(dialogo, boton); });
}

}

class frmCompras_Atipicos_Visor_Imprimir_Test : public QObject {
    Q_OBJECT
private slots:
    void the_button_and_f9_print_the_chosen_charge_on_both_devices()
    {
        ConTresListados visor;
        const auto imprenta = std::make_shared<Imprenta>();
        modComun::set_BibliotecaOrvalin(imprenta);
        visor.lista().set_Row(3);
        QVERIFY(con_dispositivos([&] { visor.clic("cmdImprimir"); }, "cmdAceptar"));
        visor.activa();
        visor.lista().set_Row(1);
        QVERIFY(con_dispositivos([&] { visor.pulsa(Qt::Key_F9); }, "cmdAceptar"));
        QCOMPARE(imprenta->impresos->join(u'|'),
            QStringLiteral(
                "AT260001 2026 2 104|AT260001 2026 2 104|AT260002 2026 1 104|AT260002 2026 1 104"));
        QVERIFY(visor.banco.titulos().empty());
    }

    void cancelling_the_devices_prints_nothing()
    {
        ConTresListados visor;
        const auto imprenta = std::make_shared<Imprenta>();
        modComun::set_BibliotecaOrvalin(imprenta);
        QVERIFY(con_dispositivos([&] { visor.clic("cmdImprimir"); }, "cmdCancelar"));
        QVERIFY(imprenta->impresos->isEmpty());
    }

    void f9_in_an_empty_list_does_nothing()
    {
        EscenaVisor visor;
        visor.abre();
        visor.pulsa(Qt::Key_F9);
        QVERIFY(QApplication::activeModalWidget() == nullptr);
        QVERIFY(visor.banco.titulos().empty());
    }

    void what_the_printing_raises_is_told()
    {
        EscenaVisor visor;
        modComun::set_BibliotecaOrvalin(std::make_shared<Imprenta>());
        visor.graba("ATASCO", "21/11/2026");
        visor.abre_y_busca();
        QVERIFY(con_dispositivos([&] { visor.clic("cmdImprimir"); }, "cmdAceptar"));
        QCOMPARE(
            visor.banco.titulos(), std::vector<std::string>{ "frmCompras_Atipicos_Visor:cmdImprimir_Click" });
        QVERIFY(visor.banco.avisos->dichos[0].texto.ends_with("] Sin papel"));
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmCompras_Atipicos_Visor_Imprimir_Test)
#include "frmCompras_Atipicos_Visor_Imprimir_test.moc"
