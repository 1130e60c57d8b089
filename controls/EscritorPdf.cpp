#include "controls/EscritorPdf.hpp"

#include "controls/Texto.hpp"

#include <QDateTime>
#include <QSaveFile>

namespace atipicos {

namespace {

    constexpr int resolucion = 1200;
    const QString programa = QStringLiteral("QVORComprasAtip");

    /// What the catalogue of the document says of it, beside what Qt writes by itself: its language.
    QByteArray metadatos(const QString& titulo)
    {
        return QStringLiteral(
            "<?xpacket begin='\uFEFF' id='W5M0MpCehiHzreSzNTczkc9d'?>\n"
            "<x:xmpmeta xmlns:x='adobe:ns:meta/'>"
            "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
            "<rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/'"
            " xmlns:xmp='http://ns.adobe.com/xap/1.0/'>"
            "<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>%1</rdf:li></rdf:Alt></dc:title>"
            "<dc:language><rdf:Bag><rdf:li>es-ES</rdf:li></rdf:Bag></dc:language>"
            "<xmp:CreatorTool>%2</xmp:CreatorTool><xmp:CreateDate>%3</xmp:CreateDate>"
            "</rdf:Description></rdf:RDF></x:xmpmeta>\n<?xpacket end='w'?>")
            .arg(titulo.toHtmlEscaped(), programa,
                QDateTime::currentDateTime()
                    .toOffsetFromUtc(QDateTime::currentDateTime().offsetFromUtc())
                    .toString(Qt::ISODate))
            .toUtf8();
    }

    QPageSize papel(const Tamano& tamano)
    {
        return QPageSize(QSizeF(tamano.ancho / 100.0, tamano.alto / 100.0), QPageSize::Millimeter, {},
            QPageSize::FuzzyOrientationMatch);
    }

    QString motivo(QFileDevice::FileError error)
    {
        switch (error) {
        case QFileDevice::PermissionsError:
            return QStringLiteral("no hay permiso");
        case QFileDevice::ResourceError:
            return QStringLiteral("no queda sitio en el disco");
        case QFileDevice::OpenError:
            return QStringLiteral("no se puede abrir");
        default:
            return QStringLiteral("falló la escritura");
        }
    }

    [[noreturn]] void no_se_puede(const QString& que, Donde donde)
    {
        throw Error(1000, "QVORComprasAtip:EscritorPdf", de_qt(que), donde);
    }

}

EscritorPdf::EscritorPdf(QIODevice& destino, const std::string& titulo)
    : m_pdf(&destino)
{
    m_pdf.setPdfVersion(QPagedPaintDevice::PdfVersion_1_6); // the first of Qt's that has attachments
    m_pdf.setTitle(a_qt(titulo));
    m_pdf.setCreator(programa);
    m_pdf.setDocumentXmpMetadata(metadatos(a_qt(titulo)));
    m_pdf.setResolution(resolucion);
}

EscritorPdf::~EscritorPdf() = default;

void EscritorPdf::agrega(const Report& report, Donde donde)
{
    // Qt makes room for the list of attachments when it begins the document, if there is one by then.
    for (const auto& uno : report.adjuntos())
        if (m_adjuntos.insert(uno.nombre).second)
            m_pdf.addFileAttachment(
                a_qt(uno.nombre), QByteArray::fromStdString(uno.contenido), a_qt(uno.tipo));
    for (std::size_t pagina = 0; pagina < report.paginas(); ++pagina) {
        m_pdf.setPageSize(papel(report.tamano()));
        m_pdf.setPageMargins({});
        if (!(m_pintor.isActive() ? m_pdf.newPage() : m_pintor.begin(&m_pdf)))
            no_se_puede(QStringLiteral("No se puede escribir el documento PDF."), donde);
        pinta_pagina(report, pagina, m_pintor, resolucion, m_fuentes);
    }
}

void EscritorPdf::termina(Donde donde)
{
    if (m_pintor.isActive() && !m_pintor.end())
        no_se_puede(QStringLiteral("No se puede escribir el documento PDF."), donde);
}

void guarda_pdf(const Report& report, const QString& fichero, Donde donde)
{
    QSaveFile destino(fichero);
    const auto falla = [&] {
        no_se_puede(
            QStringLiteral("No se puede escribir «%1»: %2.").arg(fichero, motivo(destino.error())), donde);
    };
    if (!destino.open(QIODevice::WriteOnly))
        falla();
    EscritorPdf pdf(destino, report.titulo());
    pdf.agrega(report, donde);
    pdf.termina(donde);
    if (!destino.commit())
        falla();
}

} // namespace atipicos
