#include "controls/qvArticulo.hpp"
#include "controls/qvCuenta.hpp"
#include "controls/qvTipoDocumento.hpp"
#include "controls/VSFlexGrid.hpp"
#include "tests/controls/CajaDeFicha.hpp"
#include "tests/support/Ventanas.hpp"

using namespace atipicos;
using namespace atipicos::pruebas;

class SelectoresDeFichas_Test : public QObject {
    Q_OBJECT
private slots:
    void warehouses_are_those_of_the_company()
    {
        const Banco banco;
        CajaDeAlmacen caja;
        caja.teclea_e_intro("5");
        QCOMPARE(caja.rotulo(), QStringLiteral("Depósito sin contabilidad"));
        int filas = 0;
        QVERIFY(caja.con_lista([&](ListaSeleccion& lista) {
            filas = lista.findChild<VSFlexGrid*>(QStringLiteral("vsLista"))->Rows() - 1;
            QTest::keyClick(lista.focusWidget(), Qt::Key_Escape);
        }));
        QCOMPARE(filas, 5);
    }

    void suppliers_are_those_of_the_company_that_keeps_them()
    {
        const Banco banco;
        modComun::set_EmpresaOrvalin(
            std::make_shared<orvalin::Empresa>(banco.bases().orvalin, std::int16_t{ 2 }, std::int32_t{ 1 }));
        CajaDeProveedor caja;
        caja.teclea_e_intro("101");
        QCOMPARE(caja.rotulo(), QStringLiteral("Aguas de Ucanca, S.A."));
        CajaDeAlmacen almacen;
        almacen.teclea_e_intro("1");
        QCOMPARE(almacen.rotulo(), QStringLiteral("Muelle de Arrecife"));
    }

    void an_article_is_picked_by_code_and_by_name()
    {
        const Banco banco;
        CajaDeFicha<qvArticulo> caja;
        caja.control->Prepara(modComun::EmpresaOrvalin(), modComun::ConexionOrvalin());
        caja.teclea_e_intro("1030");
        QCOMPARE(caja.rotulo(), QStringLiteral("Ron añejo 70 cl"));
        QVERIFY(caja.con_lista(tecleando("mejillon", Qt::Key_Return)));
        QCOMPARE(caja.control->Codigo(), 1007);
    }

    void a_document_type_is_picked_by_code_and_by_name()
    {
        const Banco banco;
        CajaDeFicha<qvTipoDocumento> caja;
        caja.control->Prepara(modComun::ConexionBexmor());
        caja.teclea_e_intro("3");
        QCOMPARE(caja.rotulo(), QStringLiteral("Pagaré"));
        QVERIFY(caja.con_lista(tecleando("transf", Qt::Key_Return)));
        QCOMPARE(caja.control->Codigo(), std::int16_t{ 2 });
    }

    void an_account_is_picked_by_code_and_by_name()
    {
        const Banco banco;
        CajaDeFicha<qvCuenta> caja;
        const auto contable = modComun::EmpresaBexmor();
        contable->Ejercicio = 2026;
        caja.control->Prepara(*contable, modComun::ConexionBexmor());
        caja.teclea_e_intro("75900010");
        QCOMPARE(caja.rotulo(), QStringLiteral("Ingresos atípicos, bebidas"));
        QCOMPARE(caja.control->Cuenta(), std::string("75900010"));
        QVERIFY(caja.con_lista(tecleando("maquinaria ATIPICOS", Qt::Key_Return)));
        QCOMPARE(caja.control->Cuenta(), std::string("75900011"));
        caja.control->set_Cuenta("");
        QVERIFY(caja.control->vacio());
    }
};

ATIPICOS_PRUEBA_VENTANAS(SelectoresDeFichas_Test)
#include "SelectoresDeFichas_test.moc"
