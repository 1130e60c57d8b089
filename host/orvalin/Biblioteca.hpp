#pragma once

#include "host/documento/Plantilla.hpp"
#include "platform/adodb/Connection.hpp"
#include "platform/qvoremp/ImpresionCargo.hpp"
#include "platform/report/Salida.hpp"

#include <memory>

namespace atipicos::orvalin {

/// The objects of the management library over the tables of its database.
class Biblioteca final : public qvoremp::Biblioteca {
public:
    /// Without a `salida`, charges cannot be printed: `NuevaImpresionCargo` raises error 91.
    Biblioteca(std::shared_ptr<adodb::Connection> conexion, std::shared_ptr<SalidaReport> salida,
        Plantilla plantilla = Plantilla::de_serie());

    [[nodiscard]] std::unique_ptr<qvoremp::Almacen> NuevoAlmacen(
        const qvoremp::Empresa& empresa, Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::unique_ptr<qvoremp::Proveedor> NuevoProveedor(
        const qvoremp::Empresa& empresa, Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::unique_ptr<qvoremp::ImpresionCargo> NuevaImpresionCargo(
        const qvoremp::Empresa& empresa, Donde donde = Donde::aqui()) const override;

private:
    std::shared_ptr<adodb::Connection> m_conexion;
    std::shared_ptr<SalidaReport> m_salida;
    std::shared_ptr<const Plantilla> m_plantilla;
};

} // namespace atipicos::orvalin
