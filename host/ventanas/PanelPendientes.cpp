#include "host/ventanas/PanelPendientes.hpp"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include <utility>

namespace atipicos::app {

PanelPendientes::PanelPendientes(Destinatario de, QWidget* parent)
    : QFrame(parent)
    , m_de(std::move(de))
{
    setObjectName(QStringLiteral("fraPendientes"));
    setFrameShape(QFrame::StyledPanel);
    auto* caja = new QGridLayout(this);
    caja->setColumnStretch(0, 1);
    m_lineas = { hace_linea(0, "SinAsiento", QStringLiteral("Sin asient&o…")),
        hace_linea(1, "Sueltos", QStringLiteral("Sin car&go…")),
        hace_linea(2, "Previsiones", QStringLiteral("&Previsiones…")) };
    connect(m_lineas[0].boton, &QPushButton::clicked, this, &PanelPendientes::ve_sin_asiento);
    connect(m_lineas[1].boton, &QPushButton::clicked, this,
        [this] { muestra(lista_de(m_pendientes.sueltos, m_de)); });
    connect(
        m_lineas[2].boton, &QPushButton::clicked, this, [this] { muestra(lista_de(m_pendientes.proximas)); });
}

PanelPendientes::Linea PanelPendientes::hace_linea(int fila, const char* nombre, const QString& boton)
{
    const Linea linea{ new QLabel(QStringLiteral("Se está mirando…"), this), new QPushButton(boton, this) };
    linea.texto->setObjectName(QStringLiteral("lbl") + QLatin1String(nombre));
    linea.texto->setWordWrap(true);
    linea.boton->setObjectName(QStringLiteral("cmd") + QLatin1String(nombre));
    linea.boton->setAutoDefault(true); // Enter presses it
    linea.boton->setEnabled(false);
    auto* caja = static_cast<QGridLayout*>(layout());
    caja->addWidget(linea.texto, fila, 0);
    caja->addWidget(linea.boton, fila, 1);
    return linea;
}

void PanelPendientes::pon_linea(const Linea& linea, const QString& texto, bool hay)
{
    linea.texto->setText(texto);
    QFont letra = font();
    letra.setBold(hay);
    linea.texto->setFont(letra);
    linea.boton->setEnabled(hay);
}

void PanelPendientes::Pon(Pendientes pendientes)
{
    m_pendientes = std::move(pendientes);
    pon_linea(m_lineas[0], resumen_de(m_pendientes.sin_asiento), !m_pendientes.sin_asiento.cargos.empty());
    pon_linea(m_lineas[1], resumen_de(m_pendientes.sueltos), !m_pendientes.sueltos.asientos.empty());
    pon_linea(m_lineas[2], resumen_de(m_pendientes.proximas), m_pendientes.proximas.cuantas > 0);
}

void PanelPendientes::muestra(ListaPendiente lista)
{
    if (frmPendiente(std::move(lista), window()).exec() == frmPendiente::Anular)
        emit Anular();
}

void PanelPendientes::ve_sin_asiento()
{
    const auto cargos = m_pendientes.sin_asiento.cargos; // the panel may be filled anew meanwhile
    frmPendiente dialogo(lista_de(m_pendientes.sin_asiento, m_de), window());
    if (dialogo.exec() == QDialog::Accepted && dialogo.Elegida() >= 0)
        emit Abrir(cargos.at(static_cast<std::size_t>(dialogo.Elegida())));
}

} // namespace atipicos::app
