#pragma once

#include <QObject>

namespace atipicos::app {

/// From a moment inside something that the person has the program do, until the next thing: a key or a mouse
/// button pressed where that was pressed, and not in a box that it has opened meanwhile. What the program
/// sends itself is no order of the person.
class HastaOtraOrden final : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HastaOtraOrden)
public:
    HastaOtraOrden() = default;

    void empieza(); ///< now
    void termina();
    [[nodiscard]] bool dura() const noexcept { return m_dura; }

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    bool m_dura = false;
    int m_nivel = 0; ///< of event loops inside each other when it began
};

} // namespace atipicos::app
