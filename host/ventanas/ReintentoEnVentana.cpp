#include "host/ventanas/ReintentoEnVentana.hpp"

#include "controls/Texto.hpp"
#include "host/ventanas/EsperaEnVentana.hpp"

#include <memory>
#include <utility>

namespace atipicos::app {

namespace {

    QString en_segundos(const QString& frase, std::chrono::milliseconds tiempo)
    {
        return frase.arg(std::chrono::duration_cast<std::chrono::seconds>(tiempo).count());
    }

}

ReintentoEnVentana::ReintentoEnVentana()
    : m_aviso({ "frmReintento", "Conexión perdida", "&Dejar de intentarlo" })
{
}

bool ReintentoEnVentana::sigue(const sql::Reintento& como)
{
    if (m_dejado.dura())
        return false;
    m_aviso.muestra(en_segundos(QStringLiteral("Se ha perdido la conexión con el servidor de la base de "
                                               "datos. Se intenta reanudar durante "
                                               "%1 s como mucho; lo tecleado sigue en su ventana."),
                        como.limite),
        en_segundos(QStringLiteral("Se intenta desde hace %1 s."), como.desde),
        como.motivo.empty() ? QString() : QStringLiteral("Motivo: ") + a_qt(como.motivo));
    const bool sigue = m_aviso.atiende() && como.desde < como.limite;
    if (!sigue) {
        m_aviso.quita();
        m_dejado.empieza();
    }
    return sigue;
}

void ReintentoEnVentana::reanudada()
{
    m_aviso.quita();
    m_dejado.termina();
}

void espera_en_ventana(bases::OpcionesBases& opciones)
{
    const auto reintento = std::make_shared<ReintentoEnVentana>();
    const auto espera = std::make_shared<EsperaEnVentana>(opciones.espera);
    opciones.sigue_esperando = [espera](std::chrono::milliseconds callado) { return espera->sigue(callado); };
    opciones.sigue_intentando = [reintento](const sql::Reintento& como) { return reintento->sigue(como); };
    opciones.avisa_linea = [reintento, avisa = std::move(opciones.avisa_linea)](sql::Linea que) {
        if (que == sql::Linea::reanudada)
            reintento->reanudada();
        if (avisa)
            avisa(que);
    };
}

} // namespace atipicos::app
