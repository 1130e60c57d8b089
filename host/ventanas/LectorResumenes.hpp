#pragma once

#include "host/bases/Lugar.hpp"
#include "host/resumen/InstruccionResumen.hpp"
#include "host/resumen/ResumenCargos.hpp"

#include <QObject>

#include <atomic>
#include <memory>
#include <optional>

class QThread;

namespace atipicos::app {

/// A summary, and its months.
struct ResumenLeido {
    ResumenCargos resumen;
    ResumenCargos meses;
};

/// Reads summaries beside the window that asks for them, over a connection of its own, so that a million of
/// charges make nobody wait. One at a time: of what is asked for meanwhile only the last is read.
class LectorResumenes final : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LectorResumenes)
public:
    LectorResumenes(bases::Lugar lugar, AmbitoResumen ambito, QObject* parent = nullptr);
    ~LectorResumenes() override; ///< what is being read is given up

    void pide(const PeticionResumen& peticion);
    [[nodiscard]] bool leyendo() const noexcept { return m_hilo != nullptr; }

signals:
    void Leido(const atipicos::app::ResumenLeido& leido); ///< what was asked for last
    void Fallido(const QString& motivo);

private:
    void empieza(const PeticionResumen& peticion);
    void termina();

    struct Respuesta {
        std::optional<ResumenLeido> leido;
        QString motivo; ///< where there is none
    };

    bases::Lugar m_lugar;
    AmbitoResumen m_ambito;
    QThread* m_hilo = nullptr;
    std::atomic<bool> m_acaba = false;
    std::shared_ptr<Respuesta> m_respuesta; ///< the thread's until it has ended
    std::optional<PeticionResumen> m_siguiente;
};

} // namespace atipicos::app
