#pragma once

#include "host/panel/Ambito.hpp"

#include <QObject>
#include <QThread>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>

namespace atipicos::app {

/// A thread that reads a company on a connection of its own, opened when it is first needed, so that no
/// window waits for the database. What is asked for is done in order; a later request can make those before
/// it give up. Destroyed, it gives up whatever it is at, in the middle of a statement too, and is waited for.
class HiloLector final : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HiloLector)
public:
    HiloLector(bases::Lugar lugar, std::int16_t empresa, std::int16_t empresa_proveedores,
        QObject* parent = nullptr);
    ~HiloLector() override;

    /// Runs in the thread. `sigue` is false from the next request on; what it tells the windows goes
    /// through `al_mostrar`.
    using Tarea = std::function<void(const Ambito& ambito, const Sigue& sigue)>;

    void Haz(Tarea tarea); ///< and whatever was asked for before gives up
    void Para(); ///< gives up, and lets go of the connection

    /// Called in the thread: has `que` done in the thread of the windows, unless the request is no longer
    /// the last one or this is gone by then.
    void al_mostrar(const Sigue& sigue, std::function<void()> que);

signals:
    void Fallo(const QString& motivo); ///< the connection is tried anew by the next request

private:
    void corre(const Tarea& tarea, int numero);

    bases::Lugar m_lugar;
    Ambito m_ambito; ///< of the thread
    bool m_abierto = false; ///< of the thread
    std::atomic<int> m_ultima = 0;
    std::atomic<bool> m_acaba = false;
    QThread m_hilo;
    QObject* m_obrero; ///< lives in the thread
};

} // namespace atipicos::app
