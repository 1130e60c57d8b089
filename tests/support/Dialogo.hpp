#pragma once

#include "tests/support/Paciencia.hpp"
#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <functional>
#include <utility>

namespace atipicos::pruebas {

/// Runs `que` inside the next dialog that opens (with a name, the next one of that name), once. Destroyed
/// before one has opened, it fails the test.
class AlAbrirse {
public:
    explicit AlAbrirse(std::function<void(QWidget&)> que, const char* nombre = "")
        : m_que(std::move(que))
        , m_nombre(QLatin1String(nombre))
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
            || QApplication::focusWidget() == nullptr
            || (!m_nombre.isEmpty() && dialogo->objectName() != m_nombre))
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
    QString m_nombre;
    QTimer m_reloj;
    QPointer<QWidget> m_antes = QApplication::activeModalWidget();
};

/// Does `abre`, which opens a modal `Dialogo`, and `mientras` with the dialog once it is on screen.
/// True when there was such a dialog and `mientras` has ended it; one left open is closed.
template <class Dialogo>
[[nodiscard]] bool con_dialogo(
    const std::function<void()>& abre, const std::function<void(Dialogo&)>& mientras)
{
    bool terminado = false;
    const AlAbrirse al_abrirse([&](QWidget& abierto) {
        const QPointer<QWidget> ventana(&abierto);
        if (auto* dialogo = qobject_cast<Dialogo*>(&abierto))
            mientras(*dialogo);
        const auto cerrado = [&] { return ventana.isNull() || !ventana->isVisible(); };
        static_cast<void>(QTest::qWaitFor(
            [&] { return cerrado() || QTest::currentTestFailed(); }, atipicos::pruebas::paciencia));
        terminado = cerrado();
        if (!terminado)
            ventana->close();
    });
    abre();
    return terminado;
}

/// Whether `hace` opens no modal dialog; one that it opens is closed.
[[nodiscard]] inline bool sin_dialogo(const std::function<void()>& hace)
{
    bool abierto = false;
    QTimer reloj;
    QObject::connect(&reloj, &QTimer::timeout, &reloj, [&abierto] {
        if (auto* dialogo = QApplication::activeModalWidget()) {
            abierto = true;
            dialogo->close();
        }
    });
    reloj.start(1);
    hace();
    return !abierto;
}

} // namespace atipicos::pruebas
