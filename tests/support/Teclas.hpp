#pragma once

#include <QKeyEvent>
#include <QTest>
#include <QWidget>

namespace atipicos::pruebas {

/// Types a text as a Spanish keyboard does; `QTest::keyClicks` knows the keys of an English one alone.
inline void teclea(QWidget* donde, const QString& texto)
{
    for (const QChar caracter : texto) {
        if (caracter.unicode() < 128) {
            QTest::keyClick(donde, caracter.toLatin1());
            continue;
        }
        for (const auto tipo : { QEvent::KeyPress, QEvent::KeyRelease }) {
            QKeyEvent tecla(tipo, Qt::Key_unknown, Qt::NoModifier, QString(caracter));
            QCoreApplication::sendEvent(donde, &tecla);
        }
    }
}

} // namespace atipicos::pruebas
