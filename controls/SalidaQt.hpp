#pragma once

#include "controls/LienzoQt.hpp"
#include "platform/report/Salida.hpp"

#include <functional>

namespace atipicos {

/// Reports on the printers of the system, on the screen, as PDF files and by mail.
class SalidaQt final : public SalidaReport {
public:
    using Visor = std::function<void(std::shared_ptr<const Report>)>;

    explicit SalidaQt(Visor visor); ///< what shows a report to the person

    [[nodiscard]] const Medidor& medidor() const override { return m_medidor; }
    void imprime(const Report& report, const std::string& impresora, Donde donde = Donde::aqui()) override;
    void muestra(std::shared_ptr<const Report> report, Donde donde = Donde::aqui()) override;
    void guarda(const Report& report, Donde donde = Donde::aqui()) override;
    void envia(const Report& report, Donde donde = Donde::aqui()) override;

private:
    Visor m_visor;
    MedidorQt m_medidor;
};

/// Asks where, over whatever window the person is in, and writes the report there; nothing when the person
/// gives up.
void pregunta_y_guarda_pdf(const Report& report, Donde donde = Donde::aqui());

} // namespace atipicos
