#pragma once

#include "platform/qvbxemp/Biblioteca.hpp"

#include <memory>

/// The accounting company library over the tables of an accounting database.
namespace atipicos::bexmor {

/// The objects that it makes store themselves on `conexion`; those made for a company must not outlive it,
/// and no company outlives the library.
class Biblioteca final : public qvbxemp::Biblioteca {
public:
    explicit Biblioteca(std::shared_ptr<adodb::Connection> conexion);

    /// A company of which only `Conexion` is set.
    [[nodiscard]] std::unique_ptr<qvbxemp::Empresa> NuevaEmpresa(Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::unique_ptr<qvbxemp::Asiento> NuevoAsiento(
        const qvbxemp::Empresa& empresa, Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::unique_ptr<qvbxemp::Apunte> NuevoApunte(
        const qvbxemp::Empresa& empresa, Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::unique_ptr<qvbxemp::RegistroImpuesto> NuevoRegistroImpuesto(
        const qvbxemp::Empresa& empresa, Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::unique_ptr<qvbxemp::Prevision> NuevaPrevision(
        const qvbxemp::Empresa& empresa, Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::unique_ptr<qvbxemp::ServicioCuentas> NuevoServicioCuentas(
        const qvbxemp::Empresa& empresa, Donde donde = Donde::aqui()) const override;

private:
    std::shared_ptr<adodb::Connection> m_conexion;
};

} // namespace atipicos::bexmor
