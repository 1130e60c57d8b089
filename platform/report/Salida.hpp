#pragma once

#include "platform/report/Report.hpp"
#include "runtime/Error.hpp"

#include <memory>
#include <string>

namespace atipicos {

/// Where reports go. Every operation raises an `Error` that says what could not be done, and then nothing
/// of the report is left behind: no half file, no half job of a printer.
class SalidaReport {
public:
    SalidaReport() = default;
    SalidaReport(const SalidaReport&) = delete;
    SalidaReport& operator=(const SalidaReport&) = delete;
    virtual ~SalidaReport() = default;

    /// The measures of what paints the pages.
    [[nodiscard]] virtual const Medidor& medidor() const = 0;

    /// Prints on the printer of that name; empty: the system's default one.
    virtual void imprime(const Report& report, const std::string& impresora, Donde donde = Donde::aqui()) = 0;

    /// Shows it to the person, who may still be looking at it when this returns.
    virtual void muestra(std::shared_ptr<const Report> report, Donde donde = Donde::aqui()) = 0;

    /// Writes a PDF file where the person says; nothing when the person gives up.
    virtual void guarda(const Report& report, Donde donde = Donde::aqui()) = 0;

    /// Hands it as a PDF file, with its subject, to the person's own mail program, which does the rest.
    virtual void envia(const Report& report, Donde donde = Donde::aqui()) = 0;
};

} // namespace atipicos
