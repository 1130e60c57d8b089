#include "controls/ComposicionTexto.hpp"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextOption>

namespace atipicos {

namespace {

    constexpr int palabra_corta = 1000; // characters; laid out in a fraction of a millisecond

    bool tiene_palabra_larga(const QString& parrafo)
    {
        int seguidos = 0;
        for (const QChar caracter : parrafo) {
            seguidos = caracter.isSpace() ? 0 : seguidos + 1;
            if (seguidos > palabra_corta)
                return true;
        }
        return false;
    }

    QTextOption::WrapMode donde_partir(const QTextDocument& texto)
    {
        for (auto parrafo = texto.begin(); parrafo.isValid(); parrafo = parrafo.next())
            if (parrafo.length() > palabra_corta && tiene_palabra_larga(parrafo.text()))
                return QTextOption::WrapAnywhere;
        return QTextOption::WrapAtWordBoundaryOrAnywhere;
    }

}

ComposicionTexto::ComposicionTexto(QTextDocument* texto)
    : QPlainTextDocumentLayout(texto)
{
}

/// Called before anything of the change is laid out.
void ComposicionTexto::documentChanged(int desde, int quitados, int puestos)
{
    auto opcion = document()->defaultTextOption();
    if (const auto modo = donde_partir(*document()); opcion.wrapMode() != modo) {
        opcion.setWrapMode(modo);
        document()->setDefaultTextOption(opcion); // comes back here, for all of the text
    }
    QPlainTextDocumentLayout::documentChanged(desde, quitados, puestos);
}

} // namespace atipicos
