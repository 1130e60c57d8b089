#include "controls/Anuncio.hpp"

#include "controls/VSFlexGrid.hpp"
#include "tests/support/Ventanas.hpp"

#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QTest>
#include <QVBoxLayout>

using namespace atipicos;

namespace {

QAccessibleInterface& interfaz(QObject& objeto) { return *QAccessible::queryAccessibleInterface(&objeto); }

}

class Anuncio_Test : public QObject {
    Q_OBJECT
private slots:
    void an_amount_is_read_behind_its_name_as_often_as_it_changes()
    {
        QLabel total(QStringLiteral("0,00"));
        QCOMPARE(interfaz(total).text(QAccessible::Name), QStringLiteral("0,00")); // before it is announced
        anuncia(total, QStringLiteral("Total"));
        QCOMPARE(interfaz(total).text(QAccessible::Name), QStringLiteral("Total: 0,00"));
        QCOMPARE(interfaz(total).role(), QAccessible::StaticText);
        total.setText(QStringLiteral("107,34"));
        QCOMPARE(interfaz(total).text(QAccessible::Name), QStringLiteral("Total: 107,34"));
    }

    void a_notice_is_read_as_it_stands()
    {
        QLabel estado;
        anuncia(estado);
        QCOMPARE(interfaz(estado).role(), QAccessible::Notification);
        estado.setText(QStringLiteral("No hay atípicos"));
        QCOMPARE(interfaz(estado).text(QAccessible::Name), QStringLiteral("No hay atípicos"));
        QCOMPARE(interfaz(estado).text(QAccessible::Description), QString());
    }

    void other_labels_stay_what_they_are()
    {
        QLabel otra(QStringLiteral("Fecha:"));
        QCOMPARE(interfaz(otra).role(), QAccessible::StaticText);
        QCOMPARE(interfaz(otra).text(QAccessible::Name), QStringLiteral("Fecha:"));
    }

    void a_list_without_a_label_gets_one_that_nobody_sees()
    {
        QWidget ventana;
        auto* caja = new QVBoxLayout(&ventana);
        auto* lista = new QComboBox(&ventana);
        lista->setAccessibleName(QStringLiteral("Dispositivo de la segunda impresión"));
        caja->addWidget(lista);
        etiqueta_para_leer(*lista);
        ventana.show();
        const auto relaciones = interfaz(*lista).relations(QAccessible::Label);
        QCOMPARE(relaciones.size(), 1);
        QCOMPARE(relaciones.front().first->text(QAccessible::Name),
            QStringLiteral("Dispositivo de la segunda impresión"));
        QVERIFY(!ventana.findChild<QLabel*>()->isVisible());
    }

    void rows_are_read_with_headings_of_another_name_where_they_have_one()
    {
        VSFlexGrid rejilla;
        rejilla.set_Cols(3);
        rejilla.set_TextMatrix(0, 0, QStringLiteral("Artículo"));
        rejilla.set_TextMatrix(0, 1, QStringLiteral("Artículo"));
        rejilla.set_ColNombre(1, QStringLiteral("Descripción"));
        rejilla.set_ColNombre(2, QStringLiteral("Cuenta"));
        rejilla.set_ColHidden(2, true);
        rejilla.AddItem(QStringLiteral("1003\tVino\t759"));
        auto* tabla = interfaz(rejilla).tableInterface();
        QVERIFY(tabla != nullptr);
        QStringList leidas;
        for (int columna = 0; columna < 3; ++columna) {
            auto* celda = tabla->cellAt(0, columna);
            leidas << celda->tableCellInterface()->columnHeaderCells().front()->text(QAccessible::Name)
                   << celda->text(QAccessible::Name);
        }
        QCOMPARE(leidas.join(u' '), QStringLiteral("Artículo 1003 Descripción Vino Cuenta 759"));
        QCOMPARE(rejilla.TextMatrix(0, 1), QStringLiteral("Artículo"));
    }
};

ATIPICOS_PRUEBA_VENTANAS(Anuncio_Test)
#include "Anuncio_test.moc"
