#include "host/ventanas/AvanceDeTarea.hpp"

namespace atipicos::app {

AvanceDeTarea::AvanceDeTarea(const QString& que, std::size_t piezas, QWidget* ventana)
    : m_dialogo(que, QStringLiteral("Dejarlo"), 0, static_cast<int>(piezas), ventana)
{
    m_dialogo.setObjectName(QStringLiteral("dlgAvance"));
    m_dialogo.setWindowTitle(que);
    m_dialogo.setWindowModality(Qt::WindowModal);
    m_dialogo.setMinimumDuration(500);
    m_dialogo.setAutoReset(false); // what is asked for afterwards has windows of its own
    m_dialogo.setValue(0);
}

void AvanceDeTarea::paso()
{
    m_dialogo.setValue(m_dialogo.value() + 1);
    if (m_dialogo.wasCanceled())
        throw Dejada();
}

} // namespace atipicos::app
