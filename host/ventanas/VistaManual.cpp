#include "host/ventanas/VistaManual.hpp"

#include "host/ventanas/Manual.hpp"

#include <QAbstractTextDocumentLayout>
#include <QEvent>
#include <QResizeEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextTable>

#include <algorithm>

namespace atipicos::app {

namespace {

    constexpr int ancho_de_imagen = 660; ///< no picture is wider, in points of the screen's scale
    constexpr double margen = 16;
    constexpr double aire = 5; ///< inside the cells of a table

    /// The same text with one letter for each of its own, so that places in it are places in the text.
    QString plano_de(const QString& texto)
    {
        QString plano;
        for (const QChar caracter : texto) {
            const QString una = sin_acentos(QString(caracter));
            plano += una.isEmpty() ? QChar(u' ') : una.front();
        }
        return plano;
    }

}

VistaManual::VistaManual(QWidget* parent)
    : QTextBrowser(parent)
{
    setObjectName(QStringLiteral("vistaManual"));
    setAccessibleName(QStringLiteral("Página del manual"));
    setOpenExternalLinks(false);
    connect(this, &QTextBrowser::sourceChanged, this, [this] {
        viste();
        pon_marcas();
    });
}

void VistaManual::abre(const QString& direccion)
{
    setSource(QUrl(QStringLiteral("qrc:/manual/") + direccion));
}

void VistaManual::doSetSource(const QUrl& url, QTextDocument::ResourceType tipo)
{
    QTextBrowser::doSetSource(url, tipo);
    viste();
    if (!url.fragment().isEmpty())
        va_al_apartado(url.fragment(QUrl::FullyDecoded));
}

QVariant VistaManual::loadResource(int tipo, const QUrl& url)
{
    return tipo == QTextDocument::ImageResource ? imagen(url.fileName())
                                                : QTextBrowser::loadResource(tipo, url);
}

/// As wide as there is room for it, and sharp on every screen.
QImage VistaManual::imagen(const QString& nombre) const
{
    QImage leida(QStringLiteral(":/manual/imagenes/") + nombre);
    const double escala = std::max(1.0, devicePixelRatioF());
    const int sitio = std::clamp(viewport()->width() - static_cast<int>(2 * margen), 100, ancho_de_imagen);
    const int ancho = std::min(leida.width(), static_cast<int>(sitio * escala));
    if (!leida.isNull() && ancho < leida.width())
        leida = leida.scaledToWidth(ancho, Qt::SmoothTransformation);
    leida.setDevicePixelRatio(escala);
    return leida;
}

void VistaManual::resizeEvent(QResizeEvent* evento)
{
    if (evento->oldSize().width() != evento->size().width())
        for (auto bloque = document()->begin(); bloque.isValid(); bloque = bloque.next())
            for (auto trozo = bloque.begin(); !trozo.atEnd(); ++trozo)
                if (const auto formato = trozo.fragment().charFormat(); formato.isImageFormat()) {
                    const QUrl url = document()->baseUrl().resolved(QUrl(formato.toImageFormat().name()));
                    document()->addResource(QTextDocument::ImageResource, url, imagen(url.fileName()));
                    document()->markContentsDirty(trozo.fragment().position(), trozo.fragment().length());
                }
    QTextBrowser::resizeEvent(evento);
}

/// What Markdown leaves to whoever shows it: room around the text and in the tables.
void VistaManual::viste()
{
    document()->setDocumentMargin(margen);
    for (auto* marco : document()->rootFrame()->childFrames())
        if (auto* tabla = qobject_cast<QTextTable*>(marco)) {
            auto formato = tabla->format();
            formato.setBorderCollapse(true);
            formato.setCellPadding(aire);
            formato.setCellSpacing(0);
            formato.setBottomMargin(margen / 2);
            formato.setBorderBrush(palette().color(QPalette::PlaceholderText));
            tabla->setFormat(formato);
        }
}

void VistaManual::va_al_apartado(const QString& ancla)
{
    for (auto bloque = document()->begin(); bloque.isValid(); bloque = bloque.next())
        if (bloque.blockFormat().headingLevel() > 0 && Manual::ancla_de(bloque.text()) == ancla) {
            setTextCursor(QTextCursor(bloque));
            const auto alto = document()->documentLayout()->blockBoundingRect(bloque).top();
            verticalScrollBar()->setValue(static_cast<int>(alto - margen / 2));
            return;
        }
}

void VistaManual::marca(const QStringList& palabras)
{
    m_palabras = palabras;
    pon_marcas();
}

void VistaManual::pon_marcas()
{
    QList<QTextEdit::ExtraSelection> marcas;
    for (auto bloque = document()->begin(); bloque.isValid(); bloque = bloque.next()) {
        const QString plano = plano_de(bloque.text());
        for (const auto& palabra : m_palabras) {
            const QString buscada = sin_acentos(palabra);
            for (auto lugar = plano.indexOf(buscada); !buscada.isEmpty() && lugar >= 0;
                 lugar = plano.indexOf(buscada, lugar + buscada.size())) {
                QTextEdit::ExtraSelection una;
                una.cursor = QTextCursor(bloque);
                una.cursor.setPosition(bloque.position() + static_cast<int>(lugar));
                una.cursor.setPosition(
                    una.cursor.position() + static_cast<int>(buscada.size()), QTextCursor::KeepAnchor);
                una.format.setBackground(palette().color(QPalette::Highlight));
                una.format.setForeground(palette().color(QPalette::HighlightedText));
                marcas << una;
            }
        }
    }
    std::sort(marcas.begin(), marcas.end(), [](const auto& una, const auto& otra) {
        return una.cursor.selectionStart() < otra.cursor.selectionStart();
    });
    setExtraSelections(marcas);
}

bool VistaManual::va_a_marca(int paso)
{
    const auto marcas = extraSelections();
    if (marcas.isEmpty())
        return false;
    const int aqui = textCursor().selectionStart();
    const auto detras = [&](const QTextEdit::ExtraSelection& una) {
        const int comienzo = una.cursor.selectionStart();
        return paso > 0 ? comienzo > aqui || (comienzo == aqui && !textCursor().hasSelection())
                        : comienzo < aqui;
    };
    auto elegida = paso > 0 ? marcas.front() : marcas.back();
    if (paso > 0) {
        if (const auto una = std::find_if(marcas.begin(), marcas.end(), detras); una != marcas.end())
            elegida = *una;
    } else if (const auto una = std::find_if(marcas.rbegin(), marcas.rend(), detras); una != marcas.rend()) {
        elegida = *una;
    }
    setTextCursor(elegida.cursor);
    ensureCursorVisible();
    return true;
}

void VistaManual::changeEvent(QEvent* evento)
{
    QTextBrowser::changeEvent(evento);
    if (evento->type() != QEvent::PaletteChange || source().isEmpty())
        return;
    const int alto = verticalScrollBar()->value();
    reload(); // links have the colour that they had when they were read
    viste();
    pon_marcas();
    verticalScrollBar()->setValue(alto);
}

} // namespace atipicos::app
