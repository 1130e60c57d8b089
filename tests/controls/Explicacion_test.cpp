#include "controls/Explicacion.hpp"

#include "runtime/Error.hpp"
#include "tests/support/Ventanas.hpp"

#include <QTest>

using namespace atipicos;

namespace {

QString de_error(std::int32_t numero)
{
    return explicacion_de(
        QStringLiteral("[104] ") + QString::fromStdString(Error::de_ejecucion(numero).descripcion()));
}

}

class Explicacion_Test : public QObject {
    Q_OBJECT
private slots:
    void the_errors_of_the_language_are_explained()
    {
        QCOMPARE(de_error(numero_error::desbordamiento),
            QStringLiteral("Un número es demasiado grande. Revise los que acaba de teclear."));
        QVERIFY(de_error(numero_error::tipos_no_coinciden).contains(QStringLiteral("una fecha o un número")));
        QVERIFY(de_error(numero_error::nulo_no_valido).contains(QStringLiteral("vacío")));
        QVERIFY(de_error(numero_error::objeto_no_establecido).contains(QStringLiteral("la conexión")));
        QVERIFY(!explicacion_de(QStringLiteral("Error inesperado. Repita la operación\rDesbordamiento"))
                     .isEmpty());
        for (const auto* texto :
            { "[7] near \"Orotava\": syntax error",
                "[7] La base de datos no ha podido hacer lo que se le pedía (near \"Orotava\": syntax "
                "error).",
                "La base de datos no ha podido hacer lo que se le pedía (syntax error at or near \"Orotava\" "
                "[SQLSTATE 42601])." })
            QVERIFY2(
                explicacion_de(QString::fromUtf8(texto)).startsWith(QStringLiteral("La base de datos no ha")),
                texto);
    }

    void what_speaks_for_itself_is_left_alone()
    {
        for (const auto* texto : { "Debe especificar el Proveedor", " Se esperaba Fecha ", "",
                 "[12] No existe empresa Contable en el Cargo", "Desbordamiento de la lista de cargos" })
            QCOMPARE(explicacion_de(QString::fromUtf8(texto)), QString());
    }
};

ATIPICOS_PRUEBA_VENTANAS(Explicacion_Test)
#include "Explicacion_test.moc"
