#pragma once

#include "automation/Despacho.hpp"
#include "platform/qvbxemp/Biblioteca.hpp"

#include <memory>

namespace atipicos::ado {

/// The accounting library, asked of a company object of the host: `NuevaEmpresa`, and, of each company, the
/// objects that are bound to it. Serves companies that it made; error 13 for others.
class BibliotecaBexmor final : public qvbxemp::Biblioteca,
                               public std::enable_shared_from_this<BibliotecaBexmor> {
public:
    explicit BibliotecaBexmor(automation::Despacho empresa);

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
    automation::Despacho m_empresa;
};

/// An accounting company object of the host. Its fields reach the object when it is loaded, and when
/// something is made for it.
class EmpresaBexmor final : public qvbxemp::Empresa {
public:
    EmpresaBexmor(automation::Despacho empresa, std::shared_ptr<const BibliotecaBexmor> biblioteca);

    [[nodiscard]] bool Cargar(Donde donde = Donde::aqui()) override;
    [[nodiscard]] Variant Parametro(std::string_view clave, Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::string CuentaBancoPago(Donde donde = Donde::aqui()) const override;
    [[nodiscard]] int LongitudCuenta(Donde donde = Donde::aqui()) const override;
    [[nodiscard]] const qvbxemp::Biblioteca& biblioteca() const noexcept override { return *m_biblioteca; }

    /// A new object of the host, bound to the company as its fields say it is.
    [[nodiscard]] automation::Despacho nuevo(const char* miembro) const;

private:
    automation::Despacho m_empresa;
    std::shared_ptr<const BibliotecaBexmor> m_biblioteca;
};

} // namespace atipicos::ado
