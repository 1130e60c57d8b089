#include "tests/controls/CajaDeFicha.hpp"
#include "tests/support/Ventanas.hpp"

using namespace atipicos;
using namespace atipicos::pruebas;

class SelectorSinConexion_Test : public QObject {
    Q_OBJECT
private slots:
    void a_lost_connection_is_told_once_at_enter()
    {
        const Banco banco;
        CajaDeProveedor caja;
        pierde_la_conexion(banco);
        caja.teclea_e_intro("103");
        caja.sale();
        QCOMPARE(banco.avisos->dichos.size(), std::size_t{ 1 });
        const auto& aviso = banco.avisos->dichos[0];
        QCOMPARE(aviso.titulo, std::string("Selector:Buscar"));
        QVERIFY(aviso.texto.ends_with("] fallo provocado"));
        QCOMPARE(pruebas::linea_nombrada(aviso.texto, "controls/Selector.cpp"),
            std::string("const auto nombre = m_fuente->nombre(de_qt(codigo()));"));
        QVERIFY(aviso.icono == Icono::critico);
        QCOMPARE(caja.rotulo(), QString());
        QVERIFY(!caja.control->Elegido());
    }

    void a_lost_connection_is_told_once_on_leaving()
    {
        const Banco banco;
        CajaDeProveedor caja;
        pierde_la_conexion(banco);
        caja.teclea(QStringLiteral("103"));
        caja.sale();
        caja.entra();
        caja.sale();
        QCOMPARE(banco.titulos(), std::vector<std::string>{ "Selector:Buscar" });
    }

    void a_lost_connection_is_told_once_instead_of_the_list()
    {
        const Banco banco;
        CajaDeProveedor caja;
        pierde_la_conexion(banco);
        caja.teclea(QStringLiteral("103"));
        caja.pulsa(Qt::Key_F2);
        QCOMPARE(banco.titulos(), std::vector<std::string>{ "Selector:abre_lista" });
        QVERIFY(QApplication::activeModalWidget() == nullptr);
        QCOMPARE(caja.focusWidget(), &caja.codigo());
    }
};

ATIPICOS_PRUEBA_VENTANAS(SelectorSinConexion_Test)
#include "SelectorSinConexion_test.moc"
