// The manual as pages for a browser, from the same Markdown that the program shows:
//     manual_en_html FOLDER_OF_THE_MANUAL FOLDER_FOR_THE_PAGES
#include "host/ventanas/Manual.hpp"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>

#include <cstdio>
#include <utility>

using namespace atipicos::app;

namespace {

const auto estilo = QStringLiteral(
    "body{margin:0;display:flex;font:16px/1.5 sans-serif;color:#1c1f24;background:#fff}"
    "nav{flex:0 0 15rem;padding:1rem;background:#f3f4f6;min-height:100vh}nav a{display:block;margin:.3rem 0}"
    "main{max-width:52rem;padding:1rem 2rem;min-width:0}img{max-width:100%;border:1px solid #c9d3dd}"
    "a{color:#1f5fa8}table{border-collapse:collapse}td,th{border:1px solid #c9d3dd;padding:.3rem .6rem;"
    "text-align:left;vertical-align:top}pre{background:#f3f4f6;padding:.6rem;overflow:auto}"
    "@media(max-width:50rem){body{display:block}nav{min-height:0}}"
    "@media(prefers-color-scheme:dark){body{color:#e6e8eb;background:#1d1f23}nav,pre{background:#31353b}"
    "a{color:#8fbcf0}}");

/// Writes what the importer of Markdown has understood, with the names that links use.
class Escritor {
public:
    QString pagina(const QString& markdown)
    {
        m_html.clear();
        QTextDocument documento;
        documento.setMarkdown(markdown);
        marco(*documento.rootFrame());
        return m_html;
    }

private:
    void marco(const QTextFrame& marco)
    {
        for (auto uno = marco.begin(); !uno.atEnd(); ++uno)
            if (const auto* tabla = qobject_cast<QTextTable*>(uno.currentFrame())) {
                cierra();
                escribe_tabla(*tabla);
            } else if (uno.currentBlock().isValid()) {
                bloque(uno.currentBlock());
            }
        cierra();
    }

    void bloque(const QTextBlock& bloque)
    {
        const auto formato = bloque.blockFormat();
        if (bloque.text().isEmpty() && !formato.hasProperty(QTextFormat::BlockCodeFence))
            return;
        if (const auto* lista = bloque.textList()) {
            ajusta_listas(*lista);
            m_html += QStringLiteral("<li>") + trozos(bloque);
            return;
        }
        if (formato.hasProperty(QTextFormat::BlockCodeFence)) {
            if (!m_en_codigo)
                cierra();
            m_html += (m_en_codigo ? QStringLiteral("\n") : QStringLiteral("<pre>"))
                + bloque.text().toHtmlEscaped();
            m_en_codigo = true;
            return;
        }
        if (!m_listas.isEmpty() && formato.indent() > 0) { // goes on with the point of a list
            m_html += QStringLiteral("<p>") + trozos(bloque) + QStringLiteral("</p>");
            return;
        }
        cierra();
        const int nivel = formato.headingLevel();
        m_html += nivel > 0 ? QStringLiteral("<h%1 id=\"%2\">%3</h%1>\n")
                                  .arg(nivel)
                                  .arg(Manual::ancla_de(bloque.text()).toHtmlEscaped(), trozos(bloque))
                            : QStringLiteral("<p>%1</p>\n").arg(trozos(bloque));
    }

    /// Opens and closes lists until `lista` is the innermost one.
    void ajusta_listas(const QTextList& lista)
    {
        if (m_en_codigo)
            cierra();
        const int hondura = lista.format().indent();
        while (m_listas.size() > hondura)
            cierra_lista();
        if (m_listas.size() < hondura) {
            m_listas << (lista.format().style() == QTextListFormat::ListDecimal ? QStringLiteral("ol")
                                                                                : QStringLiteral("ul"));
            m_html += QStringLiteral("<%1>").arg(m_listas.back());
        } else {
            m_html += QStringLiteral("</li>\n");
        }
    }

    void cierra_lista() { m_html += QStringLiteral("</li></%1>\n").arg(m_listas.takeLast()); }

    void cierra()
    {
        while (!m_listas.isEmpty())
            cierra_lista();
        if (std::exchange(m_en_codigo, false))
            m_html += QStringLiteral("</pre>\n");
    }

    void escribe_tabla(const QTextTable& tabla)
    {
        m_html += QStringLiteral("<table>\n");
        for (int fila = 0; fila < tabla.rows(); ++fila) {
            const QString celda = fila == 0 ? QStringLiteral("th") : QStringLiteral("td");
            m_html += QStringLiteral("<tr>");
            for (int columna = 0; columna < tabla.columns(); ++columna) {
                QString dentro;
                const auto una = tabla.cellAt(fila, columna);
                for (auto bloque = una.begin(); !bloque.atEnd(); ++bloque)
                    dentro += trozos(bloque.currentBlock());
                m_html += QStringLiteral("<%1>%2</%1>").arg(celda, dentro);
            }
            m_html += QStringLiteral("</tr>\n");
        }
        m_html += QStringLiteral("</table>\n");
    }

    static QString trozos(const QTextBlock& bloque)
    {
        QString html;
        for (auto uno = bloque.begin(); !uno.atEnd(); ++uno)
            html += trozo(uno.fragment());
        return html;
    }

    static QString trozo(const QTextFragment& fragmento)
    {
        const auto formato = fragmento.charFormat();
        if (formato.isImageFormat()) {
            const auto imagen = formato.toImageFormat();
            return QStringLiteral("<img src=\"%1\" alt=\"%2\">")
                .arg(imagen.name().toHtmlEscaped(),
                    imagen.property(QTextFormat::ImageAltText).toString().toHtmlEscaped());
        }
        QString html = fragmento.text().toHtmlEscaped();
        html.replace(QChar::LineSeparator, QLatin1String("<br>"));
        if (formato.fontFixedPitch()
            || formato.fontFamilies().toStringList().contains(QStringLiteral("monospace")))
            html = QStringLiteral("<code>%1</code>").arg(html);
        if (formato.fontWeight() >= QFont::Bold && !formato.hasProperty(QTextFormat::FontSizeAdjustment))
            html = QStringLiteral("<strong>%1</strong>").arg(html);
        if (formato.isAnchor())
            html = QStringLiteral("<a href=\"%1\">%2</a>")
                       .arg(en_html(formato.anchorHref()).toHtmlEscaped(), html);
        return html;
    }

    static QString en_html(QString direccion)
    {
        static const QRegularExpression pagina(QStringLiteral(R"(\.md(?=#|$))"));
        return direccion.replace(pagina, QStringLiteral(".html"));
    }

    QString m_html;
    QStringList m_listas; ///< the tags of those that are open
    bool m_en_codigo = false;
};

/// Qt's remarks on the surroundings say nothing about the pages.
void calla(QtMsgType, const QMessageLogContext&, const QString&) { }

bool escribe(const QString& fichero, const QString& texto)
{
    QFile salida(fichero);
    const QByteArray bytes = texto.toUtf8();
    return salida.open(QIODevice::WriteOnly) && salida.write(bytes) == bytes.size();
}

QString con_marco(const Manual& manual, const Pagina& pagina, const QString& contenido)
{
    QString indice;
    for (const auto& una : manual.paginas())
        indice
            += QStringLiteral("<a href=\"%1.html\">%2</a>\n").arg(una.nombre, una.titulo().toHtmlEscaped());
    return QStringLiteral("<!DOCTYPE html>\n<html lang=\"es\">\n<head><meta charset=\"utf-8\">\n"
                          "<meta name=\"viewport\" content=\"width=device-width\">\n<title>%1</title>\n"
                          "<style>%2</style></head>\n<body>\n<nav>\n")
               .arg(pagina.titulo().toHtmlEscaped(), estilo)
        + indice + QStringLiteral("</nav>\n<main>\n") + contenido
        + QStringLiteral("</main>\n</body>\n</html>\n");
}

}

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fputs("Uso: manual_en_html MANUAL SALIDA\n", stderr);
        return 2;
    }
    qInstallMessageHandler(&calla);
    qputenv("QT_QPA_PLATFORM", "offscreen"); // fonts are asked for, and nothing is shown
    const QGuiApplication aplicacion(argc, argv);
    const QString lugar = QString::fromLocal8Bit(argv[1]);
    const QDir salida(QString::fromLocal8Bit(argv[2]));
    const Manual manual(lugar);
    bool bien = !manual.paginas().empty() && salida.mkpath(QStringLiteral("."));
    for (const auto& pagina : manual.paginas()) {
        QFile fichero(lugar + u'/' + pagina.nombre + QStringLiteral(".md"));
        bien = bien && fichero.open(QIODevice::ReadOnly)
            && escribe(salida.filePath(pagina.nombre + QStringLiteral(".html")),
                con_marco(manual, pagina, Escritor().pagina(QString::fromUtf8(fichero.readAll()))));
    }
    if (!bien)
        std::fputs("manual_en_html: no se han podido escribir las páginas.\n", stderr);
    return bien ? 0 : 1;
}
