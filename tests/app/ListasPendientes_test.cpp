// What the lists of things that need attention say, and the lines that lead to them.
#include "host/ventanas/ListasPendientes.hpp"

#include "tests/support/Contexto.hpp"
#include "tests/support/Ventanas.hpp"

#include <QTest>

using namespace atipicos;
using namespace atipicos::app;
using namespace atipicos::pruebas;

namespace {

const Destinatario de_la_empresa_3{ bases::Lugar(std::filesystem::path("/srv/mi empresa")), 3 };

CargoResumido cargo(const char* codigo)
{
    CargoResumido uno;
    uno.ejercicio = 2025;
    uno.almacen = 4;
    uno.codigo = codigo;
    uno.proveedor = 106;
    uno.nombre_proveedor = "Quesería Majorera";
    uno.fecha = dia("05/03/2025");
    uno.base = moneda("1443.23");
    uno.impuesto = moneda("101.03");
    return uno;
}

AsientoSinCargo suelto(std::int32_t numero)
{
    return { { 2, 2026, numero }, dia("20/10/2026"), "AT260016", "40000101", moneda("1092.45") };
}

QString titulos(const ListaPendiente& lista)
{
    QStringList todos;
    for (const auto& columna : lista.columnas)
        todos << columna.titulo + (columna.a_la_derecha ? QStringLiteral(">") : QString());
    return todos.join(u'|');
}

QString fila(const ListaPendiente& lista, std::size_t cual) { return lista.filas.at(cual).join(u'|'); }

}

class ListasPendientes_Test : public QObject {
    Q_OBJECT
private slots:
    void a_charge_without_entry_is_told_with_its_own_command()
    {
        SinAsiento sin;
        QCOMPARE(resumen_de(sin), QStringLiteral("Todos los cargos que lo necesitan tienen asiento"));
        sin.cargos = { cargo("AT250007") };
        QCOMPARE(resumen_de(sin), QStringLiteral("Un cargo sin asiento"));
        sin.cargos.push_back(cargo("AT250008"));
        QCOMPARE(resumen_de(sin), QStringLiteral("2 cargos sin asiento"));
        sin.hay_mas = true;
        QCOMPARE(resumen_de(sin), QStringLiteral("Más de 100 cargos sin asiento"));
        const auto lista = lista_de(sin, de_la_empresa_3);
        QCOMPARE(lista.titulo, QStringLiteral("Cargos sin asiento"));
        QCOMPARE(titulos(lista), QStringLiteral("Código|Almacén>|Fecha|Proveedor|Total>"));
        QCOMPARE(fila(lista, 1), QStringLiteral("AT250008|4|05/03/2025|Quesería Majorera|1.544,26"));
        QCOMPARE(lista.ordenes.at(1),
            QStringLiteral("atipicos contabilizar AT250008 --ejercicio 2025 --almacen 4 "
                           "--datos '/srv/mi empresa' --empresa 3"));
        QVERIFY(lista.se_abren);
        QVERIFY(!lista.se_anulan);
    }

    void an_entry_without_charge_is_told_by_what_it_says_of_itself()
    {
        AsientosSueltos sueltos;
        QCOMPARE(resumen_de(sueltos), QStringLiteral("Ningún asiento de un cargo borrado está sin anular"));
        sueltos.hay_mas = true;
        QCOMPARE(resumen_de(sueltos), QStringLiteral("Hay muchos asientos que no son de ningún cargo"));
        sueltos.asientos = { suelto(30), suelto(34) };
        QCOMPARE(resumen_de(sueltos), QStringLiteral("Al menos 2 asientos sin cargo, por anular"));
        sueltos.hay_mas = false;
        sueltos.asientos.pop_back();
        QCOMPARE(resumen_de(sueltos), QStringLiteral("Un asiento sin cargo, por anular"));
        const auto lista = lista_de(sueltos, de_la_empresa_3);
        QCOMPARE(titulos(lista), QStringLiteral("Asiento|Fecha|Documento|Cuenta|Total>"));
        QCOMPARE(fila(lista, 0), QStringLiteral("2/2026/30|20/10/2026|AT260016|40000101|1.092,45"));
        QCOMPARE(lista.ordenes,
            QStringList{ QStringLiteral("atipicos regularizar --datos '/srv/mi empresa' --empresa 3") });
        const Destinatario de_aqui{ bases::Lugar(std::filesystem::path("datos")), 1 };
        QCOMPARE(lista_de(sueltos, de_aqui).ordenes.front(),
            QStringLiteral("atipicos regularizar %1 --empresa 1")
                .arg(QString::fromStdString(
                    bases::Lugar(std::filesystem::current_path() / "datos").opcion())));
        QVERIFY(lista.se_anulan);
        QVERIFY(!lista.se_abren);
    }

    void forecasts_that_fall_due_are_told_with_their_sum_and_have_no_command()
    {
        Proximas proximas{ dia("22/11/2026"), dia("22/12/2026"), 0, {}, {} };
        QCOMPARE(resumen_de(proximas), QStringLiteral("Ninguna previsión vence en 30 días"));
        proximas.cuantas = 1;
        proximas.importe = moneda("1386.57");
        QCOMPARE(resumen_de(proximas), QStringLiteral("Una previsión vence en 30 días, por 1.386,57"));
        proximas.primeras = { { dia("25/11/2026"), moneda("86.57"), "44000103", "Ñandú", { 2, 2026, 5 } } };
        auto lista = lista_de(proximas);
        QCOMPARE(lista.explicacion,
            QStringLiteral(
                "Vencen del 22/11/2026 al 22/12/2026, y suman 1.386,57. Se atienden en Contabilidad."));
        QCOMPARE(titulos(lista), QStringLiteral("Vencimiento|Importe>|Cuenta|Nombre|Asiento"));
        QCOMPARE(fila(lista, 0), QStringLiteral("25/11/2026|86,57|44000103|Ñandú|2/2026/5"));
        QVERIFY(lista.ordenes.isEmpty());
        proximas.primeras.push_back(proximas.primeras.front());
        proximas.cuantas = 1'234;
        QCOMPARE(resumen_de(proximas), QStringLiteral("1.234 previsiones vencen en 30 días, por 1.386,57"));
        lista = lista_de(proximas);
        QVERIFY(lista.explicacion.endsWith(QStringLiteral(" Son 1.234; aquí están las 2 primeras.")));
    }
};

ATIPICOS_PRUEBA_VENTANAS(ListasPendientes_Test)
#include "ListasPendientes_test.moc"
