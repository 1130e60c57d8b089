#include "host/ventanas/AvisoDeEspera.hpp"

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

namespace atipicos::app {

namespace {

    constexpr int letras_de_un_motivo = 60; ///< wide

    /// What waits for the server leaves the windows without an answer for as long again: a screen reader asks
    /// them many times.
    constexpr std::chrono::milliseconds momento_de_la_persona{ 200 };

    QLabel* agrega_etiqueta(QVBoxLayout& caja, const char* nombre)
    {
        auto* etiqueta = new QLabel(caja.parentWidget());
        etiqueta->setObjectName(QLatin1String(nombre));
        etiqueta->setWordWrap(true);
        etiqueta->setTextFormat(Qt::PlainText);
        etiqueta->setFixedWidth(etiqueta->fontMetrics().averageCharWidth() * letras_de_un_motivo);
        caja.addWidget(etiqueta);
        return etiqueta;
    }

    void escribe_en(QDialog& ventana, const char* nombre, const QString& texto)
    {
        auto* etiqueta = ventana.findChild<QLabel*>(QLatin1String(nombre));
        etiqueta->setText(texto);
        etiqueta->setVisible(!texto.isEmpty());
    }

}

void AvisoDeEspera::abre()
{
    auto* ventana = new QDialog(QApplication::activeWindow());
    m_ventana = ventana;
    ventana->setObjectName(QLatin1String(m_textos.nombre));
    ventana->setWindowTitle(a_qt(m_textos.titulo));
    ventana->setWindowModality(Qt::ApplicationModal);
    auto* caja = new QVBoxLayout(ventana);
    caja->setSizeConstraint(QLayout::SetFixedSize);
    anuncia(*agrega_etiqueta(*caja, "lblPerdida"));
    agrega_etiqueta(*caja, "lblDesde");
    agrega_etiqueta(*caja, "lblMotivo");
    auto* botones = new QDialogButtonBox(ventana);
    auto* dejar = botones->addButton(a_qt(m_textos.boton), QDialogButtonBox::RejectRole);
    dejar->setObjectName(QStringLiteral("cmdDejar"));
    // Whoever is keying in does not end it by the next Enter or blank: Alt+D, Escape or the mouse do.
    dejar->setAutoDefault(false);
    dejar->setFocusPolicy(Qt::NoFocus);
    caja->addWidget(botones);
    QObject::connect(botones, &QDialogButtonBox::rejected, ventana, &QDialog::reject);
}

void AvisoDeEspera::muestra(const QString& que, const QString& desde, const QString& motivo)
{
    const bool nueva = !abierto();
    if (nueva)
        abre();
    escribe_en(*m_ventana, "lblPerdida", que);
    escribe_en(*m_ventana, "lblDesde", desde);
    escribe_en(*m_ventana, "lblMotivo", motivo);
    if (nueva)
        m_ventana->show();
}

bool AvisoDeEspera::atiende() const
{
    QEventLoop un_momento;
    QTimer::singleShot(momento_de_la_persona, &un_momento, &QEventLoop::quit);
    un_momento.exec();
    return abierto() && m_ventana->isVisible() && Interrupcion::senal() == 0;
}

void AvisoDeEspera::quita() { delete m_ventana.data(); }

} // namespace atipicos::app
