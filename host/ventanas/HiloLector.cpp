#include "host/ventanas/HiloLector.hpp"

#include "controls/Texto.hpp"
#include "runtime/Error.hpp"

#include <QMetaObject>

#include <exception>
#include <utility>

namespace atipicos::app {

HiloLector::HiloLector(
    bases::Lugar lugar, std::int16_t empresa, std::int16_t empresa_proveedores, QObject* parent)
    : QObject(parent)
    , m_lugar(std::move(lugar))
    , m_ambito({ {}, empresa, empresa_proveedores })
    , m_obrero(new QObject)
{
    m_obrero->moveToThread(&m_hilo);
    connect(&m_hilo, &QThread::finished, m_obrero, &QObject::deleteLater);
    m_hilo.start(QThread::LowPriority); // whoever keys a charge in goes first
}

HiloLector::~HiloLector()
{
    ++m_ultima;
    m_acaba = true;
    m_hilo.quit();
    m_hilo.wait();
}

void HiloLector::Haz(Tarea tarea)
{
    const int numero = ++m_ultima;
    QMetaObject::invokeMethod(m_obrero, [this, tarea = std::move(tarea), numero] { corre(tarea, numero); });
}

void HiloLector::Para()
{
    ++m_ultima;
    QMetaObject::invokeMethod(m_obrero, [this] {
        m_ambito.bases = {};
        m_abierto = false;
    });
}

void HiloLector::al_mostrar(const Sigue& sigue, std::function<void()> que)
{
    QMetaObject::invokeMethod(this, [sigue, que = std::move(que)] {
        if (sigue())
            que();
    });
}

void HiloLector::corre(const Tarea& tarea, int numero)
{
    const Sigue sigue = [this, numero] { return m_ultima == numero; };
    if (!sigue())
        return;
    QString motivo;
    try {
        if (!m_abierto)
            m_ambito.bases
                = bases::abre_bases(m_lugar, { .solo_lectura = true, .sigue = [this] { return !m_acaba; } });
        m_abierto = true;
        tarea(m_ambito, sigue);
        return;
    } catch (const Error& error) {
        motivo = a_qt(error.descripcion());
    } catch (const std::exception& error) {
        motivo = a_qt(error.what());
    }
    m_ambito.bases = {};
    m_abierto = false;
    al_mostrar(sigue, [this, motivo] { emit Fallo(motivo); });
}

} // namespace atipicos::app
