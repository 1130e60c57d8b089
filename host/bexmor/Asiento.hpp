#pragma once

#include "platform/qvbxemp/Biblioteca.hpp"

namespace atipicos::bexmor {

/// An entry of the company's year. Its number comes from a counter that stays locked until the transaction
/// ends, so that numbers are unique, and consecutive where no transaction was undone.
class Asiento final : public qvbxemp::Asiento {
public:
    explicit Asiento(const qvbxemp::Empresa& empresa);

    /// Raises an error, with nothing stored, when the company has not opened its `Ejercicio` or `Fecha` is
    /// no day of it.
    void Crear(Donde donde = Donde::aqui()) override;

    [[nodiscard]] std::int32_t SiguienteLinea(Donde donde = Donde::aqui()) override;

    /// Debits less credits of the lines stored so far: 0 when the entry balances.
    [[nodiscard]] Currency Descuadre(Donde donde = Donde::aqui()) const;

private:
    void comprueba_ejercicio(Donde donde) const;
    [[nodiscard]] std::int32_t toma_numero(Donde donde) const;
    [[nodiscard]] std::int32_t abre_contador(Donde donde) const;

    const qvbxemp::Empresa& m_empresa;
    std::int32_t m_linea = 0;
};

} // namespace atipicos::bexmor
