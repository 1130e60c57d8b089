#include "controls/Selector.hpp"

#include "context/trap.hpp"
#include "controls/ColorDeAviso.hpp"
#include "controls/Icono.hpp"
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

    constexpr int menos_cifras = 5; ///< boxes of short codes keep a width that a mouse finds

    QString no_existe() { return QStringLiteral("No existe"); }

    int cifras(std::int64_t maximo)
    {
        return std::clamp(static_cast<int>(QString::number(maximo).size()), menos_cifras, 10);
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
    m_codigo->setFixedWidth(fontMetrics().horizontalAdvance(QString(cifras(maximo), u'0')) + 14);
    m_codigo->installEventFilter(this);
    setFocusProxy(m_codigo);

    m_boton->setObjectName(QStringLiteral("cmdBuscar"));
    m_boton->setIcon(icono(QStringLiteral("buscar")));
    m_boton->setToolTip(QStringLiteral("Buscar por nombre (F2)"));
    m_boton->setAccessibleName(QStringLiteral("Buscar ") + que);
    m_boton->setFocusPolicy(Qt::ClickFocus); // F2 does the same from the box

    m_etiqueta->setObjectName(QStringLiteral("lblNombre"));
    m_etiqueta->setReadOnly(true);
    m_etiqueta->setFocusPolicy(Qt::ClickFocus);
    m_etiqueta->setFrame(false);
    m_etiqueta->setAccessibleName(QStringLiteral("Nombre ") + de(que));
    QPalette sin_fondo;
    sin_fondo.setResolveMask(0); // no role but this: everything else follows the theme
    sin_fondo.setColor(QPalette::Base, Qt::transparent);
    m_etiqueta->setPalette(sin_fondo);
    m_etiqueta->setMinimumWidth(ancho_de(no_existe()));

    auto* caja = new QHBoxLayout(this);
    caja->setContentsMargins(0, 0, 0, 0);
    caja->setSpacing(3);
    caja->addWidget(m_codigo);
    caja->addWidget(m_boton);
    caja->addWidget(m_etiqueta, 1);

    connect(m_boton, &QToolButton::clicked, this, [this] { abre_lista({}); });
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

void Selector::set_SinNombre()
{
    m_etiqueta->hide();
    m_codigo->setMinimumWidth(0);
    m_codigo->setMaximumWidth(QWIDGETSIZE_MAX);
    auto* dentro = new QHBoxLayout(m_codigo);
    dentro->setContentsMargins(0, 0, 1, 0);
    dentro->addStretch();
    dentro->addWidget(m_boton);
    m_boton->setAutoRaise(true);
    m_boton->setIconSize(QSize(12, 12));
    m_boton->setCursor(Qt::ArrowCursor);
    m_codigo->setTextMargins(0, 0, m_boton->sizeHint().width(), 0);
    connect(m_codigo, &QLineEdit::textChanged, this, &Selector::pide_ancho);
}

/// So that a long code is seen whole, wherever the form has put the box.
void Selector::pide_ancho()
{
    const auto margenes = m_codigo->textMargins();
    setMinimumWidth(m_codigo->text().isEmpty() ? 0
                                               : m_codigo->fontMetrics().horizontalAdvance(m_codigo->text())
                + margenes.left() + margenes.right() + 14);
}

void Selector::set_NombreAccesible(const QString& nombre) { m_codigo->setAccessibleName(nombre); }

void Selector::muestra(const QString& nombre, bool falta)
{
    m_nombre = falta ? QString() : nombre;
    m_escrito = nombre;
    m_falta = falta;
    escribe_nombre();
    m_etiqueta->setToolTip(nombre.toHtmlEscaped());
    m_codigo->setToolTip(falta ? nombre : QString());
    m_codigo->setAccessibleDescription(falta ? nombre : QString());
    emit Mirado(falta ? nombre : QString());
    pon_de_aviso(*m_codigo, falta);
}

/// Pixels that the label beside the code needs for a text.
int Selector::ancho_de(const QString& texto) const
{
    constexpr int margenes = 2 * 3; // that an edit box leaves without a frame, and the cursor
    return m_etiqueta->fontMetrics().horizontalAdvance(texto) + margenes;
}

/// That a code does not exist is said in two words where there is no room for more.
void Selector::escribe_nombre()
{
    const bool cabe = ancho_de(m_escrito) <= m_etiqueta->width();
    m_etiqueta->setText(m_falta && !cabe ? no_existe() : m_escrito);
    m_etiqueta->setCursorPosition(0);
}

void Selector::resizeEvent(QResizeEvent* evento)
{
    QWidget::resizeEvent(evento);
    layout()->activate(); // the label has its new width now
    escribe_nombre();
}

void Selector::changeEvent(QEvent* evento)
{
    if (evento->type() == QEvent::PaletteChange)
        pon_de_aviso(*m_codigo, m_falta);
    QWidget::changeEvent(evento);
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
            muestra(no_existe() + u' ' + m_que, true);
        }
    });
    return hallado;
}

/// The code of the row chosen; empty when none was, or the list could not be read.
QString Selector::elige_en_lista(const QString& buscado)
{
    std::vector<Ficha> fichas;
    if (!trap("Selector:abre_lista", [&] { fichas = m_fuente->todas(); }))
        return {};
    QStringList otros;
    for (const auto& otro : m_fuente->otros())
        otros << a_qt(otro.titulo);
    ListaSeleccion lista(QStringLiteral("Buscar ") + m_que, fichas, otros, this);
    lista.Busca(buscado);
    return lista.exec() == QDialog::Accepted ? lista.elegida() : QString();
}

void Selector::abre_lista(const QString& buscado)
{
    if (!m_fuente || !isEnabled())
        return;
    const bool pendiente = std::exchange(m_pendiente, false); // a window over the box does not leave it
    const QString elegida = elige_en_lista(buscado);
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
        || (entrada.reason() == Qt::ActiveWindowFocusReason && (m_puesto || m_falta));
}

/// A letter where a code would begin: whoever does not know the code types the name. Behind digits it is a
/// slip.
bool Selector::empieza_un_nombre(const QKeyEvent& tecla) const
{
    const bool con_otra = (tecla.modifiers() & ~Qt::ShiftModifier) != Qt::NoModifier;
    return !con_otra && tecla.text().size() == 1 && tecla.text().front().isLetter()
        && m_codigo->selectedText() == m_codigo->text();
}

bool Selector::eventFilter(QObject* objeto, QEvent* evento)
{
    if (evento->type() == QEvent::FocusOut)
        Completa();
    if (evento->type() == QEvent::FocusIn && entra_con_su_codigo(*static_cast<QFocusEvent*>(evento)))
        m_codigo->selectAll();
    if (evento->type() != QEvent::KeyPress || m_codigo->isReadOnly())
        return QWidget::eventFilter(objeto, evento);
    const auto& tecla = *static_cast<QKeyEvent*>(evento);
    switch (tecla.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!Buscar())
            m_codigo->selectAll(); // what is typed next is another code, not more of this one
        emit Intro();
        return true;
    case Qt::Key_F2:
        abre_lista({});
        return true;
    default:
        if (!empieza_un_nombre(tecla))
            return QWidget::eventFilter(objeto, evento);
        abre_lista(tecla.text());
        return true;
    }
}

std::int32_t SelectorNumerico::numero() const { return codigo().toInt(); }

std::int16_t SelectorNumerico::numero_corto() const { return codigo().toShort(); }

void SelectorNumerico::set_numero(std::int32_t numero)
{
    set_codigo(numero == 0 ? QString() : QString::number(numero));
}

} // namespace atipicos
