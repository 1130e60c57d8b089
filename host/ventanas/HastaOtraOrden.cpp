#include "host/ventanas/HastaOtraOrden.hpp"

#include <QCoreApplication>
#include <QEvent>
#include <QThread>

namespace atipicos::app {

void HastaOtraOrden::empieza()
{
    m_dura = true;
    m_nivel = QThread::currentThread()->loopLevel();
    QCoreApplication::instance()->installEventFilter(this);
}

void HastaOtraOrden::termina()
{
    m_dura = false;
    QCoreApplication::instance()->removeEventFilter(this);
}

bool HastaOtraOrden::eventFilter(QObject* objeto, QEvent* evento)
{
    // A key that is a shortcut comes as nothing but the question whether somebody wants it otherwise.
    const auto tipo = evento->type();
    const bool orden = tipo == QEvent::KeyPress || tipo == QEvent::ShortcutOverride
        || tipo == QEvent::MouseButtonPress || tipo == QEvent::MouseButtonDblClick;
    if (orden && evento->spontaneous() && QThread::currentThread()->loopLevel() <= m_nivel)
        termina();
    return QObject::eventFilter(objeto, evento);
}

} // namespace atipicos::app
