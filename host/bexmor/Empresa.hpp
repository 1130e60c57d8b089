#pragma once

#include "platform/qvbxemp/Biblioteca.hpp"

#include <map>
#include <optional>
#include <string>

namespace atipicos::bexmor {

/// A company of the table `Empresas`. Its tax types are read with it, its parameters when the first one is
/// asked for; both are kept until it is loaded again.
class Empresa final : public qvbxemp::Empresa {
public:
    explicit Empresa(const qvbxemp::Biblioteca& biblioteca);

    [[nodiscard]] bool Cargar(Donde donde = Donde::aqui()) override;

    /// Empty when the company has no such parameter.
    [[nodiscard]] Variant Parametro(std::string_view clave, Donde donde = Donde::aqui()) const override;

    [[nodiscard]] std::string CuentaBancoPago(
        Donde donde = Donde::aqui()) const override; ///< "" if not loaded
    [[nodiscard]] int LongitudCuenta(Donde donde = Donde::aqui()) const override; ///< 0 while not loaded
    [[nodiscard]] const qvbxemp::Biblioteca& biblioteca() const noexcept override { return m_biblioteca; }

    /// A tax type as it was when the company was loaded. Null when it had none of that code, or when `Codigo`
    /// has changed since.
    [[nodiscard]] const qvbxemp::TipoImpuesto* tipo_impuesto(std::int16_t tipo) const;

private:
    using Parametros = std::map<std::string, std::string, std::less<>>;

    [[nodiscard]] Parametros lee_parametros(Donde donde) const;

    const qvbxemp::Biblioteca& m_biblioteca;
    std::string m_cuenta_banco_pago;
    int m_longitud_cuenta = 0;
    std::int16_t m_cargada = 0; ///< the code that `m_tipos` belong to
    std::map<std::int16_t, qvbxemp::TipoImpuesto> m_tipos;
    mutable std::optional<Parametros> m_parametros;
};

} // namespace atipicos::bexmor
