#pragma once

#include "platform/qvbxemp/Biblioteca.hpp"

namespace atipicos::bexmor {

/// A line of an entry. It is refused when it belongs to no entry, when its account is not in the plan of the
/// company and year, or when debit or credit has more than two decimals or exceeds ±999.999.999.999,99.
class Apunte final : public qvbxemp::Apunte {
public:
    explicit Apunte(const qvbxemp::Empresa& empresa);

    /// What the database itself refuses, or any failure of it, gives false too.
    [[nodiscard]] bool Guardar(Donde donde = Donde::aqui()) override;
    [[nodiscard]] const Error& error() const noexcept override { return m_error; }

private:
    void comprueba(Donde donde) const;
    void inserta(Donde donde) const;

    const qvbxemp::Empresa& m_empresa;
    Error m_error{ 0, "", "", Donde() };
};

} // namespace atipicos::bexmor
