#pragma once

#include "platform/qvbxemp/Biblioteca.hpp"

namespace atipicos::bexmor {

class ServicioCuentas final : public qvbxemp::ServicioCuentas {
public:
    explicit ServicioCuentas(const qvbxemp::Empresa& empresa);

    /// The root, then the code at the right, zeros between them: `longitud` digits in all. Raises an error
    /// when there is no root, the code is negative or both do not fit.
    [[nodiscard]] std::string FormarCuenta(const std::string& raiz, std::int32_t codigo, int longitud,
        Donde donde = Donde::aqui()) const override;

    [[nodiscard]] bool ExisteCuenta(const std::string& cuenta, Donde donde = Donde::aqui()) const override;

    /// As it was when the company was loaded. Raises an error when the company has no such tax type.
    [[nodiscard]] qvbxemp::TipoImpuesto LeerTipoImpuesto(
        std::int16_t tipo, Donde donde = Donde::aqui()) const override;

private:
    const qvbxemp::Empresa& m_empresa;
};

} // namespace atipicos::bexmor
