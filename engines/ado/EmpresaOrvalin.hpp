#pragma once

#include "automation/Despacho.hpp"
#include "platform/qvoremp/ImpresionCargo.hpp"

#include <memory>

namespace atipicos::ado {

/// The management company object of the host.
class EmpresaOrvalin final : public qvoremp::Empresa {
public:
    explicit EmpresaOrvalin(automation::Despacho empresa);

    [[nodiscard]] std::int16_t Codigo(Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::string Nombre(Donde donde = Donde::aqui()) const override;
    [[nodiscard]] Variant Parametro(std::string_view clave, Donde donde = Donde::aqui()) const override;
    [[nodiscard]] Currency PorcentajeImpuesto(std::int16_t tipo, Donde donde = Donde::aqui()) const override;
    [[nodiscard]] int DecimalesImporte(Donde donde = Donde::aqui()) const override;
    [[nodiscard]] int DecimalesCosto(Donde donde = Donde::aqui()) const override;
    [[nodiscard]] int DecimalesPrecio(Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::int16_t AlmacenDefecto(Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::int32_t EnlaceContable(Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::int16_t EmpresaProveedores(Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::int32_t RaizProveedores(Donde donde = Donde::aqui()) const override;

    [[nodiscard]] const automation::Despacho& anfitrion() const noexcept { return m_empresa; }

private:
    automation::Despacho m_empresa;
};

/// Warehouses, suppliers and the printing of charges, asked of the host's company objects. Serves companies
/// of the class above; error 13 for others.
class BibliotecaOrvalin final : public qvoremp::Biblioteca {
public:
    [[nodiscard]] std::unique_ptr<qvoremp::Almacen> NuevoAlmacen(
        const qvoremp::Empresa& empresa, Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::unique_ptr<qvoremp::Proveedor> NuevoProveedor(
        const qvoremp::Empresa& empresa, Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::unique_ptr<qvoremp::ImpresionCargo> NuevaImpresionCargo(
        const qvoremp::Empresa& empresa, Donde donde = Donde::aqui()) const override;
};

} // namespace atipicos::ado
