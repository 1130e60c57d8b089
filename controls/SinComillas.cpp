#include "controls/SinComillas.hpp"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QValidator>

namespace atipicos {

namespace {

    constexpr QChar comilla = u'\'';
    constexpr QChar acento = u'´';

    /// Takes every text, after having changed it.
    class SinComillas final : public QValidator {
    public:
        using QValidator::QValidator;

        State validate(QString& texto, int& /*posicion*/) const override
        {
            texto.replace(comilla, acento);
            return Acceptable;
        }
    };

    /// One step of undoing with the change that brought them.
    void cambia(QTextDocument& documento)
    {
        auto hallada = documento.find(QString(comilla));
        if (hallada.isNull())
            return;
        QTextCursor cambios(&documento);
        cambios.joinPreviousEditBlock();
        for (; !hallada.isNull(); hallada = documento.find(QString(comilla), hallada)) {
            cambios.setPosition(hallada.selectionStart());
            cambios.setPosition(hallada.selectionEnd(), QTextCursor::KeepAnchor);
            cambios.insertText(QString(acento));
        }
        cambios.endEditBlock();
    }

}

QString sin_comillas(QString texto) { return texto.replace(comilla, acento); }

void pon_sin_comillas(QLineEdit& caja) { caja.setValidator(new SinComillas(&caja)); }

void pon_sin_comillas(QPlainTextEdit& caja)
{
    QObject::connect(&caja, &QPlainTextEdit::textChanged, &caja, [&caja] { cambia(*caja.document()); });
}

} // namespace atipicos
