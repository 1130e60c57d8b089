#include "tests/app/EscenaBorrador.hpp"
#include "tests/support/Ventanas.hpp"

using namespace atipicos;
using namespace atipicos::pruebas;

class PanelBorradores_Test : public QObject {
    Q_OBJECT
private slots:
    void what_is_offered_is_read_whole_however_narrow_the_window()
    {
        EscenaBorrador escena;
        escena.teclea_cargo();
        escena.editor().close();
        escena.ventana->activateWindow();
        QTRY_VERIFY(escena.ofrece());
        auto& lista = escena.lista();
        QTRY_COMPARE(lista.count(), 1);
        int antes = 0;
        for (const int letras : { 90, 30, 18 }) { // wide: one line, two, four
            lista.setFixedWidth(letras * lista.fontMetrics().averageCharWidth());
            const auto necesita = [&] {
                return lista.fontMetrics()
                    .boundingRect(QRect(0, 0, lista.viewport()->width() - 2, 999), Qt::TextWordWrap,
                        lista.item(0)->text())
                    .height();
            };
            QTRY_VERIFY(lista.viewport()->height() > antes && lista.viewport()->height() >= necesita());
            QTRY_VERIFY(lista.viewport()->rect().contains(lista.visualItemRect(lista.item(0))));
            antes = lista.viewport()->height();
        }
    }
};

ATIPICOS_PRUEBA_VENTANAS(PanelBorradores_Test)
#include "PanelBorradores_test.moc"
