#include "controls/ImpresoraQt.hpp"

#include "controls/LienzoQt.hpp"
#include "controls/Texto.hpp"

#include <QPainter>
#include <QPrinter>

#include <algorithm>

namespace atipicos {

namespace {

    [[noreturn]] void falla(const std::string& motivo, Donde donde)
    {
        throw Error(1000, "QVORComprasAtip:ImpresoraQt", motivo, donde);
    }

    void pinta_paginas(
        const Report& report, QPrinter& impresora, std::size_t desde, std::size_t hasta, Donde donde)
    {
        const auto fallo = "No se ha podido imprimir en «" + de_qt(impresora.printerName()) + "».";
        FuentesUsadas fuentes;
        QPainter pintor;
        if (!pintor.begin(&impresora))
            falla(fallo, donde);
        for (auto pagina = desde; pagina < hasta; ++pagina) {
            if (pagina > desde && !impresora.newPage()) {
                impresora.abort();
                falla(fallo, donde);
            }
            pinta_pagina(report, pagina, pintor, impresora.resolution(), fuentes);
        }
        if (!pintor.end() || impresora.printerState() == QPrinter::Error)
            falla(fallo, donde);
    }

}

QPrinterInfo busca_impresora(const std::string& nombre, Donde donde)
{
    const auto info
        = nombre.empty() ? QPrinterInfo::defaultPrinter() : QPrinterInfo::printerInfo(a_qt(nombre));
    if (info.isNull())
        falla(nombre.empty() ? "No hay ninguna impresora en este sistema."
                             : "La impresora «" + nombre + "» no está en este sistema.",
            donde);
    return info;
}

void imprime_report(const Report& report, QPrinter& impresora, Donde donde)
{
    const auto [ancho, alto] = report.tamano();
    impresora.setFullPage(true);
    impresora.setPageSize(QPageSize(
        QSizeF(ancho / 100.0, alto / 100.0), QPageSize::Millimeter, {}, QPageSize::FuzzyOrientationMatch));
    impresora.setDocName(a_qt(report.titulo()));
    const auto primera = static_cast<std::size_t>(std::max(impresora.fromPage(), 1)) - 1;
    const auto ultima
        = impresora.toPage() == 0 ? report.paginas() : static_cast<std::size_t>(impresora.toPage());
    pinta_paginas(report, impresora, primera, std::min(ultima, report.paginas()), donde);
}

} // namespace atipicos
