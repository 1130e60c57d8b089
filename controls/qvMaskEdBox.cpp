#include "controls/qvMaskEdBox.hpp"

#include "context/modComun.hpp"
#include "controls/ColorDeAviso.hpp"
#include "controls/Texto.hpp"
#include "runtime/FechaTecleada.hpp"

#include <QCalendarWidget>
#include <QKeyEvent>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace atipicos {

namespace {

    QDate a_qt(Date fecha) { return { fecha.anio(), fecha.mes(), fecha.dia() }; }

    /// Of the component's clock or, before it has one, of the machine's.
    Date hoy()
    {
        try {
            return modComun::reloj().hoy();
        } catch (const Error&) {
            const QDate dia = QDate::currentDate();
            return Date::de_dia(dia.year(), dia.month(), dia.day()).value_or(Date{});
        }
    }

    QString mascara() { return QStringLiteral("99/99/9999;_"); }

}

qvMaskEdBox::qvMaskEdBox(QWidget* parent)
    : QLineEdit(parent)
{
    setInputMask(mascara());
    setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00/00/0000")) + 24);
    connect(this, &QLineEdit::textEdited, this, &qvMaskEdBox::rellena_partes);
    connect(this, &QLineEdit::textChanged, this, [this] { marca({}); });
}

std::optional<Date> qvMaskEdBox::Fecha() const { return Date::de_texto(de_qt(text())); }

void qvMaskEdBox::set_Fecha(Date fecha)
{
    if (fecha.tiene_dia())
        setText(atipicos::a_qt(fecha.texto()));
    else
        Limpiar();
}

/// Behind the last place of the mask no digit would be taken.
void qvMaskEdBox::Limpiar()
{
    setText({});
    setCursorPosition(0);
}

QString qvMaskEdBox::Falta() const
{
    if (Fecha())
        return {};
    if (vacia())
        return QStringLiteral("Falta la fecha.");
    return hasAcceptableInput()
        ? QStringLiteral("No existe el día %1.").arg(text())
        : QStringLiteral("La fecha está a medias: se teclean el día, el mes y las cuatro cifras del año.");
}

bool qvMaskEdBox::vacia() const
{
    const QString tecleado = text();
    return std::none_of(tecleado.begin(), tecleado.end(), [](QChar c) { return c.isDigit(); });
}

void qvMaskEdBox::mueve(int dias)
{
    const auto fecha = Fecha();
    if (!fecha) {
        set_Fecha(hoy());
        return;
    }
    try {
        set_Fecha(fecha->mas_dias(dias));
    } catch (const Error&) { // the calendar ends here
    }
}

/// "1/" is the first: pads the part in which the cursor stands and goes to the next one.
bool qvMaskEdBox::termina_parte()
{
    const int cursor = cursorPosition();
    if (cursor != 1 && cursor != 4)
        return false;
    QString texto = displayText();
    const QChar cifra = texto.at(cursor - 1);
    if (!cifra.isDigit() || texto.at(cursor) != u'_')
        return false;
    texto[cursor - 1] = u'0';
    texto[cursor] = cifra;
    setText(texto);
    setCursorPosition(cursor + 2);
    return true;
}

/// "1_/2_/2026", pasted or typed with the arrows: pads day and month once the year is complete.
void qvMaskEdBox::rellena_partes()
{
    if (cursorPosition() < displayText().size())
        return; // still being corrected
    const auto partes = text().split(u'/');
    if (partes.size() != 3 || partes[0].isEmpty() || partes[1].isEmpty() || partes[2].size() != 4)
        return;
    const QString texto
        = partes[0].rightJustified(2, u'0') + u'/' + partes[1].rightJustified(2, u'0') + u'/' + partes[2];
    if (texto != text())
        setText(texto);
}

void qvMaskEdBox::abre_calendario()
{
    auto* marco = new QFrame(this, Qt::Popup);
    marco->setAttribute(Qt::WA_DeleteOnClose);
    auto* calendario = new QCalendarWidget(marco);
    calendario->setObjectName(QStringLiteral("calendario"));
    calendario->setLocale(QLocale(QLocale::Spanish, QLocale::Spain));
    calendario->setFirstDayOfWeek(Qt::Monday);
    calendario->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendario->setSelectedDate(a_qt(Fecha().value_or(hoy())));
    auto* caja = new QVBoxLayout(marco);
    caja->setContentsMargins(1, 1, 1, 1);
    caja->addWidget(calendario);
    const auto elige = [this, marco](QDate dia) {
        if (const auto fecha = Date::de_dia(dia.year(), dia.month(), dia.day()))
            set_Fecha(*fecha);
        marco->close();
    };
    connect(calendario, &QCalendarWidget::activated, this, elige);
    connect(calendario, &QCalendarWidget::clicked, this, elige);
    marco->move(mapToGlobal(QPoint(0, height())));
    marco->show();
    calendario->setFocus();
}

void qvMaskEdBox::set_Partida(Date partida) { m_partida = partida; }

Date qvMaskEdBox::partida() const { return m_partida.tiene_dia() ? m_partida : hoy(); }

void qvMaskEdBox::Completa()
{
    const QString tecleado = text();
    if (std::exchange(m_contando, false)) {
        setInputMask(mascara());
        const auto contada = completa_fecha(de_qt(tecleado), m_antes.value_or(partida()));
        set_Fecha(contada ? *contada : m_antes.value_or(Date{}));
    } else if (const auto completa = completa_fecha(de_qt(tecleado), partida()); completa && !Fecha()) {
        set_Fecha(*completa);
    }
}

void qvMaskEdBox::empieza_a_contar(QChar signo)
{
    Completa();
    m_antes = Fecha();
    m_contando = true;
    setInputMask({});
    setText(signo);
}

/// While days are being counted: true when the key was one for it. Any other key ends the counting first.
bool qvMaskEdBox::cuenta(const QKeyEvent& tecla)
{
    constexpr int cifras = 4;
    const bool es_cifra = tecla.key() >= Qt::Key_0 && tecla.key() <= Qt::Key_9;
    if (es_cifra && text().size() <= cifras) {
        insert(tecla.text());
        return true;
    }
    if (tecla.key() == Qt::Key_Backspace && text().size() > 1) {
        backspace();
        return true;
    }
    if (tecla.key() == Qt::Key_Escape || tecla.key() == Qt::Key_Backspace)
        setText({}); // back to what was there
    const bool era_suya = es_cifra || tecla.key() == Qt::Key_Escape || tecla.key() == Qt::Key_Backspace;
    if (!es_cifra && tecla.key() != Qt::Key_Shift)
        Completa();
    return era_suya;
}

/// Today, or the beginning of a count: true when the key was for it.
bool qvMaskEdBox::atajo(const QKeyEvent& tecla)
{
    if (tecla.modifiers().testFlag(Qt::ControlModifier) || tecla.modifiers().testFlag(Qt::AltModifier))
        return false;
    const bool de_nuevo = vacia() || selectedText() == displayText();
    if (tecla.key() == Qt::Key_H) {
        set_Fecha(hoy());
        return true;
    }
    if (tecla.key() == Qt::Key_Plus || (tecla.key() == Qt::Key_Minus && de_nuevo)) {
        empieza_a_contar(tecla.key() == Qt::Key_Plus ? u'+' : u'-');
        return true;
    }
    if (vacia()) // wherever the mouse has put the cursor
        setCursorPosition(0);
    return false;
}

void qvMaskEdBox::comprueba() { marca(vacia() ? QString() : Falta()); }

void qvMaskEdBox::marca(const QString& falta)
{
    if (falta == m_falta)
        return;
    m_falta = falta;
    setAccessibleDescription(falta);
    pon_de_aviso(*this, !falta.isEmpty());
    emit Comprobada(falta);
}

void qvMaskEdBox::changeEvent(QEvent* evento)
{
    if (evento->type() == QEvent::PaletteChange)
        pon_de_aviso(*this, !m_falta.isEmpty());
    QLineEdit::changeEvent(evento);
}

void qvMaskEdBox::focusInEvent(QFocusEvent* evento)
{
    QLineEdit::focusInEvent(evento);
    selectAll();
}

void qvMaskEdBox::focusOutEvent(QFocusEvent* evento)
{
    // A window or a menu over the box does not leave it.
    if (evento->reason() != Qt::ActiveWindowFocusReason && evento->reason() != Qt::PopupFocusReason) {
        Completa();
        comprueba();
    }
    QLineEdit::focusOutEvent(evento);
}

void qvMaskEdBox::keyPressEvent(QKeyEvent* tecla)
{
    if (tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter) {
        if (tecla->isAutoRepeat())
            return;
        Completa();
        comprueba();
        emit Intro();
        return;
    }
    if (isReadOnly()) {
        QLineEdit::keyPressEvent(tecla);
        return;
    }
    if ((m_contando && cuenta(*tecla)) || (!m_contando && atajo(*tecla)))
        return;
    switch (tecla->key()) {
    case Qt::Key_Up:
        mueve(1);
        return;
    case Qt::Key_Down:
        if (tecla->modifiers().testFlag(Qt::AltModifier))
            abre_calendario();
        else
            mueve(-1);
        return;
    case Qt::Key_Slash:
    case Qt::Key_Minus:
    case Qt::Key_Period:
        if (termina_parte())
            return;
        break;
    default:
        break;
    }
    QLineEdit::keyPressEvent(tecla);
}

} // namespace atipicos
