#include "controls/qvTextBox.hpp"

#include "controls/Texto.hpp"
#include "runtime/Formato.hpp"

#include <QApplication>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QToolTip>
#include <QValidator>

#include <algorithm>

namespace atipicos {

namespace {

    /// Without blanks and sign of euros; a point that cannot stand between thousands becomes the comma.
    QString como_se_teclea(const QString& texto)
    {
        static const QRegularExpression con_punto(QStringLiteral("^-?\\d+\\.(\\d{1,2}|\\d{4,})$"));
        QString numero = texto.trimmed();
        if (numero.endsWith(u'€'))
            numero = numero.chopped(1).trimmed();
        return con_punto.match(numero).hasMatch() ? numero.replace(u'.', u',') : numero;
    }

    /// Lets nothing but a number of so many decimals be typed or pasted.
    class ValidadorNumero final : public QValidator {
    public:
        ValidadorNumero(int decimales, QObject* parent)
            : QValidator(parent)
            , m_decimales(decimales)
        {
        }

        State validate(QString& texto, int& /*posicion*/) const override
        {
            texto = como_se_teclea(texto);
            if (texto.isEmpty() || texto == u'-' || texto == u',' || texto == QLatin1String("-,"))
                return Intermediate;
            const auto coma = texto.indexOf(u',');
            if (coma >= 0 && texto.size() - coma - 1 > m_decimales)
                return Invalid;
            if (m_decimales == 0 && coma >= 0)
                return Invalid;
            try {
                static_cast<void>(lee_pantalla(de_qt(texto)));
                return Acceptable;
            } catch (const Error&) {
                return Invalid;
            }
        }

    private:
        int m_decimales;
    };

    int decimales_necesarios(Currency valor)
    {
        auto resto = valor.crudo() % Currency::escala;
        int decimales = 4;
        while (decimales > 0 && resto % 10 == 0) {
            resto /= 10;
            --decimales;
        }
        return decimales;
    }

}

qvTextBox::qvTextBox(QWidget* parent)
    : QLineEdit(parent)
{
    setAlignment(Qt::AlignRight);
    setValidator(new ValidadorNumero(m_admitidos, this));
    connect(this, &QLineEdit::textEdited, this, &qvTextBox::tecleado);
    connect(this, &QLineEdit::inputRejected, this, &qvTextBox::rechazado);
}

void qvTextBox::set_Decimales(int mostrados, int admitidos)
{
    m_admitidos = std::clamp(admitidos, 0, 4);
    m_mostrados = std::clamp(mostrados, 0, m_admitidos);
    delete validator();
    setValidator(new ValidadorNumero(m_admitidos, this));
}

Currency qvTextBox::Valor() const
{
    try {
        return lee_pantalla(de_qt(text()));
    } catch (const Error&) { // "-", or nothing at all
        return {};
    }
}

void qvTextBox::set_Valor(Currency valor) { setText(texto_de(valor)); }

QString qvTextBox::texto_de(Currency valor) const
{
    return a_qt(
        texto_pantalla(valor, std::max(m_mostrados, std::min(decimales_necesarios(valor), m_admitidos))));
}

/// A pasted number may bear points between thousands, and no digit could be taken out of "1.234".
void qvTextBox::quita_puntos()
{
    const int cursor = cursorPosition();
    const auto puntos = text().left(cursor).count(u'.');
    setText(text().remove(u'.'));
    setCursorPosition(cursor - static_cast<int>(puntos));
}

void qvTextBox::tecleado()
{
    if (text().contains(u'.'))
        quita_puntos();
    const Currency valor = Valor();
    if (valor == m_ultimo)
        return;
    m_ultimo = valor;
    emit Change();
}

/// Nothing of what was not typed changes, not even its form.
bool qvTextBox::cambiado() const { return !isReadOnly() && !text().isEmpty() && text() != m_al_entrar; }

void qvTextBox::da_forma()
{
    if (cambiado())
        setText(texto_de(Valor()).remove(u'.'));
}

void qvTextBox::cambia_signo()
{
    const bool habia = text().startsWith(u'-');
    const int cursor = cursorPosition();
    setText(habia ? text().mid(1) : u'-' + text());
    setCursorPosition(std::max(cursor + (habia ? -1 : 1), 0));
    tecleado();
}

void qvTextBox::focusInEvent(QFocusEvent* evento)
{
    m_ultimo = Valor();
    m_mostrado = text();
    if (!isReadOnly())
        setText(text().remove(u'.'));
    m_al_entrar = text();
    QLineEdit::focusInEvent(evento);
    selectAll();
}

void qvTextBox::focusOutEvent(QFocusEvent* evento)
{
    if (cambiado())
        set_Valor(Valor());
    else if (text() == m_al_entrar)
        setText(m_mostrado);
    QLineEdit::focusOutEvent(evento);
}

void qvTextBox::keyPressEvent(QKeyEvent* tecla)
{
    if (tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter) {
        da_forma();
        if (!tecla->isAutoRepeat()) // holding it down does not accept line after line
            emit Intro();
        return;
    }
    if (!isReadOnly() && tecla->text() == QLatin1String("-")) {
        if (hasSelectedText() && selectedText() == text())
            setText({}); // a negative number instead of the one that was there
        cambia_signo();
        return;
    }
    if (tecla->key() != Qt::Key_Period || isReadOnly()) {
        QLineEdit::keyPressEvent(tecla);
        return;
    }
    QKeyEvent coma(QEvent::KeyPress, Qt::Key_Comma, Qt::NoModifier, QStringLiteral(","));
    QLineEdit::keyPressEvent(&coma);
}

void qvTextBox::rechazado()
{
    QToolTip::showText(mapToGlobal(rect().bottomLeft()),
        m_admitidos == 0
            ? QStringLiteral("Aquí se teclea un número entero.")
            : QStringLiteral("Aquí se teclea un número con coma y hasta %1 decimales.").arg(m_admitidos),
        this);
    QApplication::beep();
}

} // namespace atipicos
