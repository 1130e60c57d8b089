#include "controls/Selector.hpp"

#include "context/trap.hpp"
#include "controls/ListaSeleccion.hpp"
#include "controls/Texto.hpp"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QToolButton>

#include <utility>

namespace atipicos {

Selector::Selector(const QString& que, QWidget* parent)
    : QWidget(parent)
    , m_que(que)
    , m_codigo(new QLineEdit(this))
    , m_boton(new QToolButton(this))
    , m_etiqueta(new QLineEdit(this))
{
    static const QRegularExpression cifras(QStringLiteral("[0-9]{0,12}"));
    m_codigo->setObjectName(QStringLiteral("txtCodigo"));
    m_codigo->setValidator(new QRegularExpressionValidator(cifras, m_codigo));
    m_codigo->setAlignment(Qt::AlignRight);
    m_codigo->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000000000")) + 14);
    m_codigo->installEventFilter(this);
    setFocusProxy(m_codigo);

    m_boton->setObjectName(QStringLiteral("cmdBuscar"));
    m_boton->setText(QStringLiteral("…"));
    m_boton->setToolTip(QStringLiteral("Buscar por nombre (F2)"));
    m_boton->setAccessibleName(QStringLiteral("Buscar ") + que);
    m_boton->setFocusPolicy(Qt::ClickFocus); // F2 does the same from the box

    m_etiqueta->setObjectName(QStringLiteral("lblNombre"));
    m_etiqueta->setReadOnly(true);
    m_etiqueta->setFocusPolicy(Qt::ClickFocus);
    m_etiqueta->setFrame(false);
    m_etiqueta->setAccessibleName(QStringLiteral("Nombre de ") + que);
    m_etiqueta->setStyleSheet(QStringLiteral("background: transparent"));

    auto* caja = new QHBoxLayout(this);
    caja->setContentsMargins(0, 0, 0, 0);
    caja->setSpacing(3);
    caja->addWidget(m_codigo);
    caja->addWidget(m_boton);
    caja->addWidget(m_etiqueta, 1);

    connect(m_boton, &QToolButton::clicked, this, &Selector::abre_lista);
    connect(m_codigo, &QLineEdit::textEdited, this, [this] {
        m_pendiente = true;
        m_elegido = false;
        muestra({}, false);
    });
}

void Selector::set_Fuente(std::shared_ptr<const FuenteFichas> fuente) { m_fuente = std::move(fuente); }

QString Selector::codigo() const { return m_codigo->text(); }

void Selector::set_codigo(const QString& codigo)
{
    m_codigo->setText(codigo);
    m_pendiente = false;
    m_elegido = !codigo.isEmpty();
    muestra({}, false);
}

bool Selector::vacio() const { return m_codigo->text().isEmpty(); }

QString Selector::Nombre() const { return m_nombre; }

void Selector::set_NombreVisible(bool visible)
{
    m_etiqueta->setVisible(visible);
    setSizePolicy(visible ? QSizePolicy::Preferred : QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Selector::set_NombreAccesible(const QString& nombre) { m_codigo->setAccessibleName(nombre); }

void Selector::muestra(const QString& nombre, bool falta)
{
    m_nombre = falta ? QString() : nombre;
    m_etiqueta->setText(nombre);
    m_etiqueta->setCursorPosition(0);
    m_etiqueta->setToolTip(nombre.toHtmlEscaped());
    m_codigo->setToolTip(falta ? nombre : QString());
    m_codigo->setAccessibleDescription(falta ? nombre : QString());
    m_codigo->setStyleSheet(falta ? QStringLiteral("color: #c01c28") : QString());
}

bool Selector::Buscar()
{
    m_pendiente = false;
    if (vacio() || !m_fuente) {
        muestra({}, false);
        return false;
    }
    bool hallado = false;
    trap("Selector:Buscar", [&] {
        const auto nombre = m_fuente->nombre(de_qt(codigo()));
        hallado = nombre.has_value();
        if (hallado) {
            m_elegido = true;
            muestra(a_qt(*nombre), false);
        } else {
            muestra(QStringLiteral("No existe ") + m_que, true);
        }
    });
    return hallado;
}

QString Selector::titulo_lista() const { return QStringLiteral("Buscar ") + m_que; }

void Selector::abre_lista()
{
    if (!m_fuente || !isEnabled())
        return;
    std::vector<Ficha> fichas;
    if (!trap("Selector:abre_lista", [&] { fichas = m_fuente->todas(); }))
        return;
    ListaSeleccion lista(titulo_lista(), fichas, this);
    const bool aceptada = lista.exec() == QDialog::Accepted;
    m_codigo->setFocus();
    if (!aceptada || lista.elegida().isEmpty())
        return;
    set_codigo(lista.elegida());
    Buscar();
    emit Intro();
}

bool Selector::eventFilter(QObject* objeto, QEvent* evento)
{
    if (evento->type() == QEvent::FocusOut && m_pendiente)
        Buscar();
    if (evento->type() != QEvent::KeyPress)
        return QWidget::eventFilter(objeto, evento);
    switch (static_cast<QKeyEvent*>(evento)->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Buscar();
        emit Intro();
        return true;
    case Qt::Key_F2:
        abre_lista();
        return true;
    default:
        return QWidget::eventFilter(objeto, evento);
    }
}

std::int32_t SelectorNumerico::numero() const { return codigo().toInt(); }

std::int16_t SelectorNumerico::numero_corto() const { return codigo().toShort(); }

void SelectorNumerico::set_numero(std::int32_t numero)
{
    set_codigo(numero == 0 ? QString() : QString::number(numero));
}

} // namespace atipicos
