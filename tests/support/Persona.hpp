#pragma once

#include "tests/support/Dialogo.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Teclas.hpp"

#include <QAbstractButton>
#include <QApplication>
#include <QPointer>
#include <QTest>

#include <algorithm>

/// Drives windows as a person does: keys go to whatever has the focus, clicks to controls found by name.
namespace atipicos::pruebas {

/// The control of that name; ends the test program, naming it, when the window has none.
template <class T = QWidget> T& control(QWidget& ventana, const char* nombre)
{
    auto* hallado = ventana.findChild<T*>(QLatin1String(nombre));
    if (hallado == nullptr)
        qFatal("%s has no control %s", qPrintable(ventana.objectName()), nombre);
    return *hallado;
}

/// The control that has the focus.
inline QWidget& enfocado()
{
    // Without a window manager nobody goes back to the window behind a dialog that has closed.
    if (QApplication::activeWindow() == nullptr)
        for (const bool con_propietaria : { false, true }) // a window stands before the one that owns it
            for (QWidget* ventana : QApplication::topLevelWidgets())
                if (ventana->isVisible() && (ventana->parentWidget() != nullptr) == con_propietaria)
                    ventana->activateWindow();
    if (!QTest::qWaitFor([] { return QApplication::focusWidget() != nullptr; }, atipicos::pruebas::paciencia))
        qFatal("no control has the focus");
    return *QApplication::focusWidget();
}

/// The name of the control that has the focus; of a picker, the picker's.
inline QString foco()
{
    const QWidget& control = enfocado();
    return control.objectName() == QLatin1String("txtCodigo") ? control.parentWidget()->objectName()
                                                              : control.objectName();
}

inline void pulsa(Qt::Key tecla, Qt::KeyboardModifiers con = Qt::NoModifier)
{
    QTest::keyClick(&enfocado(), tecla, con);
}

/// Alt and the underlined letter; a button pressed that way clicks a moment later.
inline void atajo(Qt::Key letra)
{
    const QPointer<QWidget> ventana = enfocado().window();
    pulsa(letra, Qt::AltModifier);
    const auto hundido = [&] {
        const auto botones
            = ventana.isNull() ? QList<QAbstractButton*>() : ventana->findChildren<QAbstractButton*>();
        return std::any_of(botones.begin(), botones.end(), [](auto* boton) { return boton->isDown(); });
    };
    if (!QTest::qWaitFor([&] { return !hundido(); }, atipicos::pruebas::paciencia))
        qFatal("a button stays down");
}

inline void intro(int veces = 1)
{
    for (int i = 0; i < veces; ++i)
        pulsa(Qt::Key_Return);
}

inline void teclea(const char* texto) { teclea(&enfocado(), QString::fromUtf8(texto)); }

inline void clic(QWidget& ventana, const char* nombre)
{
    QTest::mouseClick(&control<QAbstractButton>(ventana, nombre), Qt::LeftButton);
}

} // namespace atipicos::pruebas
