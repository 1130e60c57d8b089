#include "controls/qvTextoLargo.hpp"

#include "controls/Avance.hpp"
#include "controls/ComposicionTexto.hpp"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QTextDocument>

namespace atipicos {

namespace {

    /// Character by character: a "ß" stays one character.
    QString en_mayusculas(const QString& texto)
    {
        QString mayusculas;
        for (const QChar caracter : texto)
            mayusculas += caracter.toUpper();
        return mayusculas;
    }

}

qvTextoLargo::qvTextoLargo(QWidget* parent)
    : QPlainTextEdit(parent)
{
    auto* texto = new QTextDocument(this);
    texto->setDefaultFont(font());
    texto->setDocumentLayout(new ComposicionTexto(texto));
    setDocument(texto);
    setTabChangesFocus(true);
}

QString qvTextoLargo::Texto() const
{
    QString texto = toPlainText();
    if (texto == m_mostrado)
        return m_puesto;
    return m_puesto.contains(QLatin1String("\r\n")) ? texto.replace(u'\n', QLatin1String("\r\n")) : texto;
}

void qvTextoLargo::set_Texto(const QString& texto)
{
    setPlainText(texto);
    m_puesto = texto;
    m_mostrado = toPlainText();
}

void qvTextoLargo::set_IntroAvanza(bool avanza) { m_intro_avanza = avanza; }

void qvTextoLargo::set_Mayusculas(bool mayusculas) { m_mayusculas = mayusculas; }

void qvTextoLargo::keyPressEvent(QKeyEvent* tecla)
{
    if (m_intro_avanza && (tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter)) {
        if (tecla->modifiers().testFlag(Qt::ControlModifier))
            insertPlainText(QStringLiteral("\n"));
        else
            pasa_al_siguiente(*this);
        return;
    }
    const QString mayusculas = en_mayusculas(tecla->text());
    if (!m_mayusculas || mayusculas == tecla->text()) {
        QPlainTextEdit::keyPressEvent(tecla);
        return;
    }
    QKeyEvent otra(tecla->type(), tecla->key(), tecla->modifiers(), mayusculas, tecla->isAutoRepeat());
    QPlainTextEdit::keyPressEvent(&otra);
}

/// Composed characters (an accent and its letter) arrive here and not as keys.
void qvTextoLargo::inputMethodEvent(QInputMethodEvent* evento)
{
    if (m_mayusculas && !evento->commitString().isEmpty())
        evento->setCommitString(
            en_mayusculas(evento->commitString()), evento->replacementStart(), evento->replacementLength());
    QPlainTextEdit::inputMethodEvent(evento);
}

} // namespace atipicos
