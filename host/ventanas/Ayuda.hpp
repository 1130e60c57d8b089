#pragma once

#include <QObject>

#include <memory>

class QWidget;

namespace atipicos::app {

class frmManual;

/// Has F1 open the manual, in whatever window it is pressed, at what is told of that window or of the part of
/// it that has the focus. The windows know nothing of it: they are told apart by their names. One that is new
/// needs a line in the table of `Ayuda.cpp` or, where it is the host's own, a property `pagina_del_manual`
/// with its place, such as "visor.md#detalles".
class Ayuda final : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Ayuda)
public:
    Ayuda(); ///< needs the application; there is one of it
    ~Ayuda() override;

    /// Opens the manual at a place, for menus; does nothing while there is no `Ayuda`.
    static void abre(const QString& direccion = QStringLiteral("indice.md"));

    /// The place that is about `donde` or else about what it stands in; the index for what is not known.
    [[nodiscard]] static QString direccion_de(const QWidget* donde);

    /// Everything that has a place of its own: names of windows and of their parts, or classes of those that
    /// have none.
    [[nodiscard]] static QStringList conocidas();

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void muestra(const QString& direccion);
    [[nodiscard]] static QString direccion_ahora(const QWidget& con_foco);

    std::unique_ptr<frmManual> m_manual; ///< made when it is first asked for
};

} // namespace atipicos::app
