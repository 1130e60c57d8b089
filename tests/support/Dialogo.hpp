#pragma once

#include <QApplication>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <functional>

namespace atipicos::pruebas {

/// Does `abre`, which opens a modal `Dialogo`, and `mientras` with the dialog once it is on screen.
/// True when there was such a dialog and `mientras` has ended it; one left open is closed.
template <class Dialogo>
[[nodiscard]] bool con_dialogo(
    const std::function<void()>& abre, const std::function<void(Dialogo&)>& mientras)
{
    bool terminado = false;
    QTimer::singleShot(0, qApp, [&] {
        const QPointer<QWidget> abierto(QApplication::activeModalWidget());
        if (abierto.isNull())
            return;
        if (auto* dialogo = qobject_cast<Dialogo*>(abierto.data());
            dialogo != nullptr && QTest::qWaitForWindowActive(dialogo))
            mientras(*dialogo);
        terminado = QTest::qWaitFor([&] { return abierto.isNull() || !abierto->isVisible(); }, 1000);
        if (!terminado)
            abierto->close();
    });
    abre();
    return terminado;
}

} // namespace atipicos::pruebas
