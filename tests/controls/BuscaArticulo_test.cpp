#include "controls/BuscaArticulo.hpp"
#include "tests/integracion/Banco.hpp"
#include "tests/support/Ventanas.hpp"

#include <QTest>

using atipicos::BuscaArticulo;
using atipicos::Error;
using atipicos::pruebas::Banco;
namespace modComun = atipicos::modComun;

namespace {

BuscaArticulo busca() { return { modComun::ConexionOrvalin(), modComun::EmpresaOrvalin() }; }

}

class BuscaArticulo_Test : public QObject {
    Q_OBJECT
private slots:
    void knows_the_account_of_an_article()
    {
        const Banco banco;
        QCOMPARE(busca().CtaAtipicos(1003).value_or("ninguna"), std::string("75900010"));
        QCOMPARE(busca().CtaAtipicos(1025).value_or("ninguna"), std::string("75900011"));
    }

    void an_article_without_one_is_told_from_one_that_does_not_exist()
    {
        const Banco banco;
        QCOMPARE(busca().CtaAtipicos(1001).value_or("ninguna"), std::string());
        for (const int codigo : { 7, 0, -1 })
            QVERIFY(!busca().CtaAtipicos(codigo).has_value());
    }

    void asks_for_the_articles_of_the_company()
    {
        const Banco banco;
        static_cast<void>(busca().CtaAtipicos(1003));
        QCOMPARE(banco.parte->dichas,
            std::vector<std::string>{ "gestion OPEN SELECT CtaIngresosAtipicos FROM Articulos WHERE "
                                      "Cod_Empresa =1 AND Codigo =1003" });
    }

    void raises_what_the_database_says()
    {
        const Banco banco;
        banco.parte->falla_en = 1;
        QVERIFY_EXCEPTION_THROWN(static_cast<void>(busca().CtaAtipicos(1003)), Error);
    }
};

ATIPICOS_PRUEBA_VENTANAS(BuscaArticulo_Test)
#include "BuscaArticulo_test.moc"
