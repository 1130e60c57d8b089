#include "editor/frmCompras_Atipicos_Pista.hpp"

#include "controls/qvAviso.hpp"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace atipicos {

frmCompras_Atipicos_Pista::frmCompras_Atipicos_Pista(QWidget* parent)
    : QWidget(parent)
    , m_cambiando(new QLabel(this))
    , m_dejar(new QToolButton(this))
    , m_aviso(new qvAviso(this))
    , m_pista(new QLabel(this))
{
    m_cambiando->setObjectName(QStringLiteral("lblCambiando"));
    QFont negrita = m_cambiando->font();
    negrita.setBold(true);
    m_cambiando->setFont(negrita);

    m_dejar->setObjectName(QStringLiteral("cmdDejarCambio"));
    m_dejar->setText(QStringLiteral("Dejar el cambio"));
    m_dejar->setToolTip(QStringLiteral("La línea queda como está en la lista (Esc en sus campos)"));
    m_dejar->setFocusPolicy(Qt::NoFocus); // Escape does the same by key

    m_aviso->setObjectName(QStringLiteral("lblAvisoArticulo"));
    m_pista->setObjectName(QStringLiteral("lblPista"));
    m_pista->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    auto* caja = new QHBoxLayout(this);
    caja->setContentsMargins(0, 0, 0, 0);
    caja->addWidget(m_cambiando);
    caja->addWidget(m_dejar);
    caja->addWidget(m_aviso, 1);
    caja->addWidget(m_pista);
    setMinimumHeight(m_dejar->sizeHint().height()); // nothing below it moves when the button comes and goes
    connect(m_dejar, &QToolButton::clicked, this, &frmCompras_Atipicos_Pista::Dejar);
    set_Linea(0);
}

void frmCompras_Atipicos_Pista::set_Linea(std::int32_t linea)
{
    const bool cambiando = linea > 0;
    m_cambiando->setText(cambiando ? QStringLiteral("Cambiando la línea %1").arg(linea) : QString());
    m_cambiando->setVisible(cambiando);
    m_dejar->setVisible(cambiando);
    m_pista->setText(cambiando ? QStringLiteral("Intro en Importe guarda el cambio (F8 lleva allí)")
                               : QStringLiteral("Intro en Importe añade la línea (F8 lleva allí)"));
}

void frmCompras_Atipicos_Pista::set_Aviso(const QString& aviso) { m_aviso->set_Aviso(aviso); }

} // namespace atipicos
