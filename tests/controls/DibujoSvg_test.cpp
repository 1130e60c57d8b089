#include "controls/DibujoSvg.hpp"

#include "controls/Icono.hpp"
#include "tests/support/Ventanas.hpp"

#include <QBuffer>
#include <QDir>
#include <QPainter>
#include <QTest>

using atipicos::DibujoSvg;

namespace {

/// The drawing on a square of 32 by 32, with green for the colour of texts.
QImage pinta(const char* dentro)
{
    QByteArray texto = QByteArrayLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 16 16\" "
                                         "fill=\"none\" stroke=\"currentColor\" stroke-width=\"2\">")
        + dentro + QByteArrayLiteral("</svg>");
    QBuffer fichero(&texto);
    if (!fichero.open(QIODevice::ReadOnly))
        qFatal("no buffer");
    QImage imagen(32, 32, QImage::Format_ARGB32_Premultiplied);
    imagen.fill(Qt::white);
    QPainter pintor(&imagen);
    DibujoSvg::lee(fichero).pinta(pintor, QRectF(0, 0, 32, 32), Qt::green);
    return imagen;
}

QColor en(const QImage& imagen, int x, int y) { return imagen.pixelColor(2 * x, 2 * y); }

}

class DibujoSvg_Test : public QObject {
    Q_OBJECT
private slots:
    void lines_go_where_each_letter_says()
    {
        const auto imagen = pinta("<path d=\"M 2 3 H 13 V 9 L 7 14 Z\"/>");
        for (const auto& [x, y] : { std::pair{ 2, 3 }, { 8, 3 }, { 13, 6 }, { 10, 12 }, { 7, 14 }, { 4, 8 } })
            QVERIFY2(
                en(imagen, x, y) != QColor(Qt::white), qPrintable(QStringLiteral("%1 %2").arg(x).arg(y)));
        QCOMPARE(en(imagen, 9, 7), QColor(Qt::white)); // inside, and not filled
        QCOMPARE(en(imagen, 3, 12), QColor(Qt::white));
    }

    void curves_and_circles()
    {
        const auto curva = pinta("<path d=\"M 1 8 C 1 1 15 1 15 8\"/>");
        QVERIFY(en(curva, 8, 3) != QColor(Qt::white) || en(curva, 8, 2) != QColor(Qt::white));
        QCOMPARE(en(curva, 8, 8), QColor(Qt::white));
        const auto circulo = pinta("<circle cx=\"8\" cy=\"7\" r=\"5\"/>");
        QCOMPARE(en(circulo, 8, 2), QColor(Qt::green));
        QCOMPARE(en(circulo, 8, 7), QColor(Qt::white));
    }

    void colours_of_its_own_stay_and_the_others_are_those_of_texts()
    {
        const auto imagen = pinta("<circle cx=\"8\" cy=\"8\" r=\"6\" fill=\"#0000ff\" "
                                  "stroke=\"#ff0000\"/><path d=\"M 1 15 H 15\"/>");
        QCOMPARE(en(imagen, 8, 8), QColor(Qt::blue));
        QCOMPARE(en(imagen, 2, 8), QColor(Qt::red));
        QCOMPARE(en(imagen, 8, 15), QColor(Qt::green));
    }

    void what_is_no_drawing_is_no_icon()
    {
        QBuffer nada;
        QVERIFY(nada.open(QIODevice::ReadOnly));
        QVERIFY(DibujoSvg::lee(nada).vacio());
        QVERIFY(atipicos::icono(QStringLiteral("no-hay")).isNull());
    }

    void each_file_of_the_program_is_a_drawing_inside_its_square()
    {
        QVERIFY(!atipicos::icono(QStringLiteral("aceptar")).isNull()); // they are there now
        const auto ficheros = QDir(QStringLiteral(":/atipicos/iconos")).entryList();
        QVERIFY(ficheros.size() >= 20);
        for (const auto& fichero : ficheros) {
            const QImage dibujo = atipicos::icono(fichero.chopped(4))
                                      .pixmap(160, 160)
                                      .toImage()
                                      .convertToFormat(QImage::Format_ARGB32);
            int pintados = 0;
            int en_el_borde = 0;
            for (int y = 0; y < 160; ++y)
                for (int x = 0; x < 160; ++x)
                    if (dibujo.pixelColor(x, y).alpha() > 128) {
                        ++pintados;
                        en_el_borde += static_cast<int>(x == 0 || y == 0 || x == 159 || y == 159);
                    }
            QVERIFY2(pintados > 500, qPrintable(fichero));
            QVERIFY2(en_el_borde == 0, qPrintable(fichero + QStringLiteral(" is cut")));
        }
    }
};

ATIPICOS_PRUEBA_VENTANAS(DibujoSvg_Test)
#include "DibujoSvg_test.moc"
