#include "host/ventanas/LectorResumenes.hpp"

#include "controls/Texto.hpp"
#include "host/bases/Bases.hpp"
#include "host/resumen/LecturaResumen.hpp"

#include <QThread>

#include <utility>

namespace atipicos::app {

namespace {

    ResumenLeido lee(const bases::Lugar& lugar, const AmbitoResumen& ambito, const PeticionResumen& peticion,
        const sql::SigueTrabajando& sigue)
    {
        const auto bases = bases::abre_bases(lugar, { .solo_lectura = true, .sigue = sigue });
        auto por_meses = peticion;
        por_meses.por = VistaResumen::mes;
        auto resumen = lee_resumen(*bases.orvalin, ambito, peticion);
        auto meses
            = peticion.por == VistaResumen::mes ? resumen : lee_resumen(*bases.orvalin, ambito, por_meses);
        return { std::move(resumen), std::move(meses) };
    }

}

LectorResumenes::LectorResumenes(bases::Lugar lugar, AmbitoResumen ambito, QObject* parent)
    : QObject(parent)
    , m_lugar(std::move(lugar))
    , m_ambito(ambito)
{
}

LectorResumenes::~LectorResumenes()
{
    if (m_hilo == nullptr)
        return;
    m_hilo->disconnect(this);
    m_acaba = true;
    m_hilo->wait();
    delete m_hilo;
}

void LectorResumenes::pide(const PeticionResumen& peticion)
{
    if (m_hilo != nullptr)
        m_siguiente = peticion;
    else
        empieza(peticion);
}

void LectorResumenes::empieza(const PeticionResumen& peticion)
{
    m_respuesta = std::make_shared<Respuesta>();
    m_hilo = QThread::create([this, respuesta = m_respuesta, lugar = m_lugar, ambito = m_ambito, peticion] {
        try {
            respuesta->leido = lee(lugar, ambito, peticion, [this] { return !m_acaba; });
        } catch (const std::exception& error) {
            respuesta->motivo = a_qt(error.what());
        }
    });
    connect(m_hilo, &QThread::finished, this, &LectorResumenes::termina);
    m_hilo->start();
}

void LectorResumenes::termina()
{
    m_hilo->wait();
    m_hilo->deleteLater();
    m_hilo = nullptr;
    const auto respuesta = std::exchange(m_respuesta, nullptr);
    if (const auto siguiente = std::exchange(m_siguiente, std::nullopt))
        empieza(*siguiente);
    else if (respuesta->leido)
        emit Leido(*respuesta->leido);
    else
        emit Fallido(respuesta->motivo);
}

} // namespace atipicos::app
