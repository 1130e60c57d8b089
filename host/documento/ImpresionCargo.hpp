#pragma once

#include "host/documento/Plantilla.hpp"
#include "platform/adodb/Connection.hpp"
#include "platform/qvoremp/ImpresionCargo.hpp"
#include "platform/report/Salida.hpp"

#include <memory>

namespace atipicos::orvalin {

/// The charge document on the devices of this host: 0 does nothing, 1 prints, 2 shows it on the screen and 3
/// writes a PDF file where the person says.
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
