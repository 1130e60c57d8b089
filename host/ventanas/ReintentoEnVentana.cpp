#include "host/ventanas/ReintentoEnVentana.hpp"

#include "controls/Anuncio.hpp"
#include "controls/Texto.hpp"
#include "host/terminal/Interrupcion.hpp"

#include <QApplication>
#include <QDialogButtonBox>
#include <QEventLoop>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <memory>
#include <utility>

namespace atipicos::app {

namespace {

    constexpr int letras_de_un_motivo = 60; ///< wide

    /// As long as an attempt may leave the windows without an answer: a screen reader asks them many times.
    constexpr std::chrono::milliseconds momento_de_la_persona{ 200 };

    QLabel* agrega(QVBoxLayout& caja, const char* nombre)
    {
        auto* etiqueta = new QLabel(caja.parentWidget());
        etiqueta->setObjectName(QLatin1String(nombre));
        etiqueta->setWordWrap(true);
        etiqueta->setTextFormat(Qt::PlainText);
        etiqueta->setFixedWidth(etiqueta->fontMetrics().averageCharWidth() * letras_de_un_motivo);
        caja.addWidget(etiqueta);
        return etiqueta;
    }

    /// The window grows with what is written into it.
    void escribe_entero(QLabel& etiqueta, const QString& texto)
    {
        etiqueta.setText(texto);
        etiqueta.setVisible(!texto.isEmpty());
        etiqueta.setFixedHeight(etiqueta.heightForWidth(etiqueta.minimumWidth()));
    }

}

ReintentoEnVentana::~ReintentoEnVentana() { quita(); }

void ReintentoEnVentana::muestra(std::chrono::milliseconds limite)
{
    auto* ventana = new QDialog(QApplication::activeWindow());
    m_ventana = ventana;
    ventana->setObjectName(QStringLiteral("frmReintento"));
    ventana->setWindowTitle(QStringLiteral("Conexión perdida"));
    ventana->setWindowModality(Qt::ApplicationModal);
    auto* caja = new QVBoxLayout(ventana);
    caja->setSizeConstraint(QLayout::SetFixedSize);
    auto* perdida = agrega(*caja, "lblPerdida");
    anuncia(*perdida);
    escribe_entero(*perdida,
        QStringLiteral("Se ha perdido la conexión con el servidor de la base de datos. Se intenta "
                       "reanudar durante %1 s como mucho; lo tecleado sigue en su ventana.")
            .arg(std::chrono::duration_cast<std::chrono::seconds>(limite).count()));
    agrega(*caja, "lblDesde");
    agrega(*caja, "lblMotivo");
    auto* botones = new QDialogButtonBox(ventana);
    auto* dejar = botones->addButton(QStringLiteral("&Dejar de intentarlo"), QDialogButtonBox::RejectRole);
    dejar->setObjectName(QStringLiteral("cmdDejar"));
    // Whoever is keying in does not end it by the next Enter or blank: Alt+D, Escape or the mouse do.
    dejar->setAutoDefault(false);
    dejar->setFocusPolicy(Qt::NoFocus);
    caja->addWidget(botones);
    QObject::connect(botones, &QDialogButtonBox::rejected, ventana, &QDialog::reject);
    ventana->show();
}

bool ReintentoEnVentana::sigue(const sql::Reintento& como)
{
    if (m_dejado.dura())
        return false;
    if (m_ventana.isNull())
        muestra(como.limite);
    const auto segundos = std::chrono::duration_cast<std::chrono::seconds>(como.desde).count();
    escribe_entero(*m_ventana->findChild<QLabel*>(QStringLiteral("lblDesde")),
        QStringLiteral("Se intenta desde hace %1 s.").arg(segundos));
    escribe_entero(*m_ventana->findChild<QLabel*>(QStringLiteral("lblMotivo")),
        como.motivo.empty() ? QString() : QStringLiteral("Motivo: ") + a_qt(como.motivo));
    espera_a_la_persona();
    const bool sigue = !m_ventana.isNull() && m_ventana->isVisible() && Interrupcion::senal() == 0
        && como.desde < como.limite;
    if (!sigue) {
        quita();
        m_dejado.empieza();
    }
    return sigue;
}

void ReintentoEnVentana::espera_a_la_persona() const
{
    QEventLoop un_momento;
    QTimer::singleShot(momento_de_la_persona, &un_momento, &QEventLoop::quit);
    QObject::connect(m_ventana.data(), &QDialog::finished, &un_momento, &QEventLoop::quit);
    un_momento.exec();
}

void ReintentoEnVentana::reanudada()
{
    quita();
    m_dejado.termina();
}

void ReintentoEnVentana::quita() { delete m_ventana.data(); }

void reintenta_en_ventana(bases::OpcionesBases& opciones)
{
    const auto reintento = std::make_shared<ReintentoEnVentana>();
    opciones.sigue_intentando = [reintento](const sql::Reintento& como) { return reintento->sigue(como); };
    opciones.avisa_linea = [reintento, avisa = std::move(opciones.avisa_linea)](sql::Linea que) {
        if (que == sql::Linea::reanudada)
            reintento->reanudada();
        if (avisa)
            avisa(que);
    };
}

} // namespace atipicos::app
