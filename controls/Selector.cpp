#include "controls/Selector.hpp"

#include "context/trap.hpp"
#include "controls/ListaSeleccion.hpp"
#include "controls/Texto.hpp"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>
#include <QValidator>

#include <algorithm>
#include <utility>

namespace atipicos {

namespace {

    /// "el almacén" as "del almacén".
    QString de(const QString& que)
    {
        return que.startsWith(QLatin1String("el ")) ? u'd' + que : QStringLiteral("de ") + que;
    }

    /// Lets nothing but a code of digits, up to the highest one, be typed or pasted.
    class ValidadorCodigo final : public QValidator {
    public:
        ValidadorCodigo(std::int64_t maximo, QObject* parent)
            : QValidator(parent)
            , m_maximo(maximo)
        {
        }

        State validate(QString& texto, int& /*posicion*/) const override
        {
            texto = texto.trimmed();
            const bool cifras
                = std::all_of(texto.begin(), texto.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
            return cifras && texto.size() <= 12 && texto.toLongLong() <= m_maximo ? Acceptable : Invalid;
        }

    private:
        std::int64_t m_maximo;
    };

}

Selector::Selector(const QString& que, std::int64_t maximo, QWidget* parent)
    : QWidget(parent)
    , m_que(que)
    , m_codigo(new QLineEdit(this))
    , m_boton(new QToolButton(this))
    , m_etiqueta(new QLineEdit(this))
{
    m_codigo->setObjectName(QStringLiteral("txtCodigo"));
    m_codigo->setValidator(new ValidadorCodigo(maximo, m_codigo));
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
    m_etiqueta->setAccessibleName(QStringLiteral("Nombre ") + de(que));
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
        m_puesto = false;
        m_elegido = false;
        muestra({}, false);
    });
}

void Selector::Completa()
{
    if (m_pendiente)
        Buscar();
}

void Selector::set_Fuente(std::shared_ptr<const FuenteFichas> fuente) { m_fuente = std::move(fuente); }

QString Selector::codigo() const { return m_codigo->text(); }

void Selector::set_codigo(const QString& codigo)
{
    m_codigo->setText(codigo);
    m_pendiente = false;
    m_puesto = true;
    m_elegido = !codigo.isEmpty();
    muestra({}, false);
    if (m_codigo->hasFocus())
        m_codigo->selectAll();
}

bool Selector::vacio() const { return m_codigo->text().isEmpty(); }

QString Selector::Nombre() const { return m_nombre; }

void Selector::set_SoloLectura(bool solo_lectura)
{
    m_codigo->setReadOnly(solo_lectura);
    m_boton->setVisible(!solo_lectura);
}

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
    emit Mirado(falta ? nombre : QString());
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

/// The code of the row chosen; empty when none was, or the list could not be read.
QString Selector::elige_en_lista()
{
    std::vector<Ficha> fichas;
    if (!trap("Selector:abre_lista", [&] { fichas = m_fuente->todas(); }))
        return {};
    QStringList otros;
    for (const auto& otro : m_fuente->otros())
        otros << a_qt(otro.titulo);
    ListaSeleccion lista(QStringLiteral("Buscar ") + m_que, fichas, otros, this);
    return lista.exec() == QDialog::Accepted ? lista.elegida() : QString();
}

void Selector::abre_lista()
{
    if (!m_fuente || !isEnabled())
        return;
    const bool pendiente = std::exchange(m_pendiente, false); // a window over the box does not leave it
    const QString elegida = elige_en_lista();
    m_codigo->setFocus();
    m_pendiente = pendiente;
    if (elegida.isEmpty())
        return;
    set_codigo(elegida);
    Buscar();
    emit Intro();
}

/// Given the focus by the program the box would have the cursor at its end, and a code typed then be hung on.
/// In a window that is not yet the active one, as behind a box that is closing, the focus comes with the
/// window.
bool Selector::entra_con_su_codigo(const QFocusEvent& entrada) const
{
    return entrada.reason() == Qt::OtherFocusReason
        || (entrada.reason() == Qt::ActiveWindowFocusReason && m_puesto);
}

bool Selector::eventFilter(QObject* objeto, QEvent* evento)
{
    if (evento->type() == QEvent::FocusOut)
        Completa();
    if (evento->type() == QEvent::FocusIn && entra_con_su_codigo(*static_cast<QFocusEvent*>(evento)))
        m_codigo->selectAll();
    if (evento->type() != QEvent::KeyPress || m_codigo->isReadOnly())
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
