#include "controls/qvMaskEdBox.hpp"

#include "controls/Texto.hpp"

#include <QCalendarWidget>
#include <QKeyEvent>
#include <QVBoxLayout>

#include <algorithm>

namespace atipicos {

namespace {

    QDate a_qt(Date fecha) { return { fecha.anio(), fecha.mes(), fecha.dia() }; }

    Date hoy()
    {
        const QDate dia = QDate::currentDate();
        return Date::de_dia(dia.year(), dia.month(), dia.day()).value_or(Date{});
    }

}

qvMaskEdBox::qvMaskEdBox(QWidget* parent)
    : QLineEdit(parent)
{
    setInputMask(QStringLiteral("99/99/9999;_"));
    setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00/00/0000")) + 24);
    connect(this, &QLineEdit::textEdited, this, &qvMaskEdBox::rellena_partes);
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

void qvMaskEdBox::focusInEvent(QFocusEvent* evento)
{
    QLineEdit::focusInEvent(evento);
    selectAll();
}

void qvMaskEdBox::keyPressEvent(QKeyEvent* tecla)
{
    if (tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter) {
        if (!tecla->isAutoRepeat())
            emit Intro();
        return;
    }
    if (isReadOnly()) {
        QLineEdit::keyPressEvent(tecla);
        return;
    }
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
