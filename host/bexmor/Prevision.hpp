#pragma once

#include "platform/qvbxemp/Biblioteca.hpp"

namespace atipicos::bexmor {

/// A payment forecast, numbered within its entry as it is stored: 1, 2, 3, …
class Prevision final : public qvbxemp::Prevision {
public:
    explicit Prevision(const qvbxemp::Empresa& empresa);

    /// Raises an error when the amount has more than two decimals, or the entry or the account does not
    /// exist.
    void Guardar(Donde donde = Donde::aqui()) override;

private:
    const qvbxemp::Empresa& m_empresa;
};

} // namespace atipicos::bexmor
