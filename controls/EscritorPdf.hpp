#pragma once

#include "controls/LienzoQt.hpp"
#include "platform/report/Report.hpp"
#include "runtime/Error.hpp"

#include <QPainter>
#include <QPdfWriter>

#include <set>
#include <string>

namespace atipicos {

/// Writes reports, one after the other, into one PDF document with its fonts in it.
class EscritorPdf {
public:
    /// `destino` is open for writing and outlives this.
    EscritorPdf(QIODevice& destino, const std::string& titulo);
    EscritorPdf(const EscritorPdf&) = delete;
    EscritorPdf& operator=(const EscritorPdf&) = delete;
    ~EscritorPdf();

    /// All pages of the report, and what is attached to it, once. Raises an `Error` when `destino` cannot be
    /// written.
    void agrega(const Report& report, Donde donde = Donde::aqui());

    /// The end of the document. What `destino` still holds back is not yet written then.
    void termina(Donde donde = Donde::aqui());

private:
    QPdfWriter m_pdf;
    QPainter m_pintor;
    FuentesUsadas m_fuentes;
    std::set<std::string> m_adjuntos; ///< names of what is attached so far
};

/// The report as a file that gets its name only when it is complete. Raises an `Error` that names the file
/// when it cannot be written; what was there under that name stays then.
void guarda_pdf(const Report& report, const QString& fichero, Donde donde = Donde::aqui());

} // namespace atipicos
