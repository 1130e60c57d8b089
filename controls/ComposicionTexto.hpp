#pragma once

#include <QPlainTextDocumentLayout>

namespace atipicos {

/// The lines of a text box. Where a word is longer than any that is written, lines end anywhere: to end them
/// between words, Qt goes through the rest of the word once for each of its lines.
class ComposicionTexto final : public QPlainTextDocumentLayout {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ComposicionTexto)
public:
    explicit ComposicionTexto(QTextDocument* texto);

protected:
    void documentChanged(int desde, int quitados, int puestos) override;
};

} // namespace atipicos
