#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <functional>

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
        for (QWidget* ventana : QApplication::topLevelWidgets())
            if (ventana->isVisible())
                ventana->activateWindow();
    if (!QTest::qWaitFor([] { return QApplication::focusWidget() != nullptr; }))
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
    if (!QTest::qWaitFor([&] { return !hundido(); }))
        qFatal("a button stays down");
}

inline void intro(int veces = 1)
{
    for (int i = 0; i < veces; ++i)
        pulsa(Qt::Key_Return);
}

inline void teclea(const char* texto) // one character at a time: keyClicks takes Latin-1 alone
{
    for (const QChar caracter : QString::fromUtf8(texto)) {
        QKeyEvent baja(QEvent::KeyPress, 0, Qt::NoModifier, QString(caracter));
        QApplication::sendEvent(&enfocado(), &baja);
    }
}

inline void clic(QWidget& ventana, const char* nombre)
{
    QTest::mouseClick(&control<QAbstractButton>(ventana, nombre), Qt::LeftButton);
}

/// Runs `que` inside the next dialog that opens, once. Destroyed before one has opened, it fails the test.
class AlAbrirse {
public:
    explicit AlAbrirse(std::function<void(QWidget&)> que)
        : m_que(std::move(que))
    {
        m_reloj.setInterval(1);
        QObject::connect(&m_reloj, &QTimer::timeout, &m_reloj, [this] { mira(); });
        m_reloj.start();
    }
    AlAbrirse(const AlAbrirse&) = delete;
    AlAbrirse& operator=(const AlAbrirse&) = delete;
    ~AlAbrirse()
    {
        if (m_que)
            QTest::qFail("no dialog has opened", __FILE__, __LINE__);
    }

private:
    void mira()
    {
        QWidget* dialogo = QApplication::activeModalWidget();
        if (dialogo == nullptr || dialogo == m_antes || QApplication::activeWindow() != dialogo
            || QApplication::focusWidget() == nullptr)
            return;
        m_reloj.stop();
        const auto que = std::exchange(m_que, nullptr);
        const QPointer<QWidget> abierto = dialogo;
        que(*dialogo);
        // A check that fails leaves `que` before it has closed the dialog.
        if (auto* colgado = qobject_cast<QDialog*>(abierto.data()); colgado && QTest::currentTestFailed())
            colgado->done(QDialog::Rejected);
    }

    std::function<void(QWidget&)> m_que;
    QTimer m_reloj;
    QPointer<QWidget> m_antes = QApplication::activeModalWidget();
};

} // namespace atipicos::pruebas
