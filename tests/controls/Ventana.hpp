#pragma once

#include "tests/support/Paciencia.hpp"
#include "tests/support/Teclas.hpp"

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QVBoxLayout>
#include <QWidget>

namespace atipicos::pruebas {

/// A window with the control under test, which has the focus, and a field after it to go on to.
template <class Control> struct Ventana : QWidget {
    Control* control = new Control(this);
    QLineEdit* otro = new QLineEdit(this);

    Ventana()
    {
        auto* caja = new QVBoxLayout(this);
        caja->addWidget(control);
        caja->addWidget(otro);
        show();
        control->setFocus();
        if (!QTest::qWaitForWindowActive(this, atipicos::pruebas::paciencia))
            qFatal("the window does not become active");
    }

    void teclea(const QString& texto) { pruebas::teclea(focusWidget(), texto); }
    void pulsa(Qt::Key tecla, Qt::KeyboardModifiers con = Qt::NoModifier)
    {
        QTest::keyClick(focusWidget(), tecla, con);
    }
    void pega(const QString& texto)
    {
        QGuiApplication::clipboard()->setText(texto);
        pulsa(Qt::Key_V, Qt::ControlModifier);
    }
    void entra() { control->setFocus(); }
    void sale() { otro->setFocus(); }
};

} // namespace atipicos::pruebas
