#include "host/ventanas/frmFicha.hpp"

#include "controls/Anuncio.hpp"
#include "controls/Avance.hpp"
#include "controls/ColorDeAviso.hpp"
#include "controls/Icono.hpp"
#include "controls/Texto.hpp"
#include "host/ventanas/MemoriaDeVentanas.hpp"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

namespace atipicos::app {

namespace {

    QWidget* hace_campo(const CampoDeFicha& campo, const QString& valor, QWidget* ventana)
    {
        if (!campo.elegibles.empty()) {
            auto* combo = new QComboBox(ventana);
            for (const auto& [numero, texto] : campo.elegibles)
                combo->addItem(texto, numero);
            combo->setCurrentIndex(std::max(combo->findData(valor.toInt()), 0));
            return combo;
        }
        auto* caja = new QLineEdit(valor, ventana);
        caja->setMaxLength(campo.maximo);
        caja->setPlaceholderText(campo.pista);
        if (campo.numero)
            caja->setValidator(new QIntValidator(0, 999'999'999, caja));
        return caja;
    }

    QString valor_de(const QWidget* campo)
    {
        if (const auto* combo = qobject_cast<const QComboBox*>(campo))
            return combo->currentData().toString();
        return static_cast<const QLineEdit*>(campo)->text();
    }

}

frmFicha::frmFicha(OrigenDeFichas& origen, int codigo, QWidget* parent)
    : Formulario(parent)
    , m_origen(origen)
    , m_falta(new QLabel(this))
    , m_nueva(codigo == 0)
{
    setObjectName(QStringLiteral("frmFicha"));
    setProperty(MemoriaDeVentanas::contenido, origen.uno());
    setWindowTitle(m_nueva ? QStringLiteral("Nuevo ") + origen.uno()
                           : QStringLiteral("Modificar el %1 %2").arg(origen.uno()).arg(codigo));
    auto* caja = new QFormLayout(this);
    hace_campos(*caja, m_nueva ? origen.nueva() : origen.valores(codigo), m_nueva);
    m_falta->setObjectName(QStringLiteral("lblFalta"));
    m_falta->setWordWrap(true);
    anuncia(*m_falta);
    caja->addRow(m_falta);
    hace_botones(*caja);
    pon_iconos(*this);
    resize(fontMetrics().averageCharWidth() * 76, sizeHint().height());
    m_campos.at(1)->setFocus();
}

void frmFicha::hace_campos(QFormLayout& caja, const QStringList& valores, bool nueva)
{
    const auto campos = m_origen.campos();
    for (std::size_t i = 0; i < campos.size(); ++i) {
        m_campos.push_back(hace_campo(campos[i], valores.value(static_cast<int>(i)), this));
        m_campos.back()->setObjectName(QLatin1String(campos[i].nombre));
        caja.addRow(campos[i].titulo, m_campos.back());
    }
    m_campos.front()->setEnabled(nueva);
}

void frmFicha::hace_botones(QFormLayout& caja)
{
    auto* botones = new QHBoxLayout;
    botones->addStretch(1);
    auto* aceptar = new QPushButton(QStringLiteral("&Aceptar"), this);
    auto* cancelar = new QPushButton(QStringLiteral("&Cancelar"), this);
    aceptar->setObjectName(QStringLiteral("cmdAceptar"));
    cancelar->setObjectName(QStringLiteral("cmdCancelar"));
    for (auto* boton : { aceptar, cancelar }) {
        boton->setAutoDefault(false); // Enter moves on
        botones->addWidget(boton);
    }
    caja.addRow(botones);
    connect(aceptar, &QPushButton::clicked, this, &frmFicha::acepta);
    connect(cancelar, &QPushButton::clicked, this, &QDialog::reject);
}

int frmFicha::Codigo() const { return valor_de(m_campos.front()).toInt(); }

void frmFicha::acepta()
{
    QString motivo;
    try {
        if (m_nueva && Codigo() > 0 && !m_origen.valores(Codigo()).value(1).isEmpty())
            motivo = QStringLiteral("Ya hay un %1 con el código %2.").arg(m_origen.uno()).arg(Codigo());
        else {
            QStringList valores;
            for (const auto* campo : m_campos)
                valores << valor_de(campo);
            m_origen.guarda(valores);
            accept();
            return;
        }
    } catch (const Error& error) {
        motivo = a_qt(error.descripcion());
    }
    m_falta->setText(motivo);
    pon_de_aviso(*m_falta, true);
    resize(width(), std::max(height(), layout()->totalHeightForWidth(width())));
}

/// Enter moves on, as everywhere.
void frmFicha::keyPressEvent(QKeyEvent* tecla)
{
    const bool intro = tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter;
    QWidget* campo = focusWidget();
    if (intro && std::find(m_campos.begin(), m_campos.end(), campo) != m_campos.end())
        pasa_al_siguiente(*campo);
    else
        Formulario::keyPressEvent(tecla);
}

} // namespace atipicos::app
