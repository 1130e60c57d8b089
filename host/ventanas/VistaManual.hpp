#pragma once

#include <QImage>
#include <QStringList>
#include <QTextBrowser>

namespace atipicos::app {

/// Shows a page of the manual, in the colours of the moment, with what was searched for marked in it.
class VistaManual final : public QTextBrowser {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(VistaManual)
public:
    explicit VistaManual(QWidget* parent = nullptr);

    /// `direccion`: "editor.md" or "editor.md#teclas"; what it names is at the top then.
    void abre(const QString& direccion);

    /// Marks these words wherever they stand, whatever their accents; none: nothing is marked.
    void marca(const QStringList& palabras);

    /// Goes to the next (1) or the previous (-1) mark, round the page; false when there is none.
    bool va_a_marca(int paso);

protected:
    void changeEvent(QEvent* evento) override;
    void doSetSource(const QUrl& url, QTextDocument::ResourceType tipo) override;
    QVariant loadResource(int tipo, const QUrl& url) override;
    void resizeEvent(QResizeEvent* evento) override;

private:
    [[nodiscard]] QImage imagen(const QString& nombre) const;
    void viste();
    void va_al_apartado(const QString& ancla);
    void pon_marcas();

    QStringList m_palabras;
};

} // namespace atipicos::app
