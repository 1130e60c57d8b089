#pragma once

#include "host/documento/Plantilla.hpp"
#include "platform/adodb/Connection.hpp"
#include "platform/qvoremp/ImpresionCargo.hpp"
#include "platform/report/Salida.hpp"

#include <memory>

namespace atipicos::orvalin {

/// Brings a document out on a device of this host: 0 does nothing, 1 prints, 2 shows it on the screen, 3
/// writes a PDF file where the person says and 4 hands one to his mail program. Raises an `Error` when there
/// is no such device, or it fails.
void saca(std::shared_ptr<const Report> documento, std::int16_t dispositivo, const std::string& impresora,
    SalidaReport& salida, Donde donde = Donde::aqui());

/// The charge document on those devices.
class ImpresionCargo final : public qvoremp::ImpresionCargo {
public:
    ImpresionCargo(std::shared_ptr<adodb::Connection> conexion, const qvoremp::Empresa& empresa,
        std::shared_ptr<SalidaReport> salida, std::shared_ptr<const Plantilla> plantilla);

    void Imprimir(Donde donde = Donde::aqui()) override;

private:
    std::shared_ptr<adodb::Connection> m_conexion;
    const qvoremp::Empresa& m_empresa;
    std::shared_ptr<SalidaReport> m_salida;
    std::shared_ptr<const Plantilla> m_plantilla;
};

} // namespace atipicos::orvalin
