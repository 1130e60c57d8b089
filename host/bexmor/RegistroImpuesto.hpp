#pragma once

#include "platform/qvbxemp/Biblioteca.hpp"

namespace atipicos::bexmor {

/// A record of the tax register, dated with the company's `FechaTrabajo`. It hangs on the line of the entry
/// that bears the tax, and there is one a line.
class RegistroImpuesto final : public qvbxemp::RegistroImpuesto {
public:
    explicit RegistroImpuesto(const qvbxemp::Empresa& empresa);

    /// Raises an error when base or tax has more than two decimals, or the line does not exist.
    void Guardar(Donde donde = Donde::aqui()) override;

private:
    void inserta(Donde donde) const;

    const qvbxemp::Empresa& m_empresa;
};

} // namespace atipicos::bexmor
