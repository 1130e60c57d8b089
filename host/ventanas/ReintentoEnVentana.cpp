#include "host/ventanas/ReintentoEnVentana.hpp"

#include "controls/Anuncio.hpp"
#include "controls/Texto.hpp"
#include "host/terminal/Interrupcion.hpp"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace atipicos::app {

namespace {

    constexpr int letras_de_un_motivo = 60; ///< wide

    QLabel* agrega(QVBoxLayout& caja, const char* nombre)
    {
        auto* etiqueta = new QLabel(caja.parentWidget());
        etiqueta->setObjectName(QLatin1String(nombre));
        etiqueta->setWordWrap(true);
        etiqueta->setTextFormat(Qt::PlainText);
        etiqueta->setMinimumWidth(etiqueta->fontMetrics().averageCharWidth() * letras_de_un_motivo);
        caja.addWidget(etiqueta);
        return etiqueta;
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
    agrega(*caja, "lblPerdida")
        ->setText(QStringLiteral("Se ha perdido la conexión con el servidor de la base de datos. Se intenta "
                                 "reanudar durante %1 s como mucho; lo tecleado sigue en su ventana.")
                      .arg(std::chrono::duration_cast<std::chrono::seconds>(limite).count()));
    anuncia(*agrega(*caja, "lblDesde"));
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
    if (m_ventana.isNull())
        muestra(como.limite);
    const auto segundos = std::chrono::duration_cast<std::chrono::seconds>(como.desde).count();
    m_ventana->findChild<QLabel*>(QStringLiteral("lblDesde"))
        ->setText(QStringLiteral("Se intenta desde hace %1 s.").arg(segundos));
    m_ventana->findChild<QLabel*>(QStringLiteral("lblMotivo"))->setText(a_qt(como.motivo));
    QCoreApplication::processEvents();
    const bool sigue = !m_ventana.isNull() && m_ventana->isVisible() && Interrupcion::senal() == 0
        && como.desde < como.limite;
    if (!sigue)
        quita();
    return sigue;
}

void ReintentoEnVentana::reanudada() { quita(); }

void ReintentoEnVentana::quita() { delete m_ventana.data(); }

} // namespace atipicos::app
