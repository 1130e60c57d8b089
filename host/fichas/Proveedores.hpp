#pragma once

#include "host/fichas/Escritura.hpp"

#include <optional>
#include <vector>

namespace atipicos::app {

/// What is known of a supplier, beside its accounts.
struct FichaDeProveedor {
    std::int32_t codigo = 0;
    std::string nombre = {};
    std::string nif = {};
    std::string domicilio = {};
    std::string codigo_postal = {};
    std::string poblacion = {};
    std::int16_t forma_pago = 0; ///< 0: the terms of the company
    std::int16_t dia_pago_1 = 0; ///< day of the month; 0: none
    std::int16_t dia_pago_2 = 0;

    friend bool operator==(const FichaDeProveedor&, const FichaDeProveedor&) = default;
};

/// Terms of payment, as accounting has them.
struct FormaDePago {
    std::int16_t codigo = 0;
    std::string nombre;

    friend bool operator==(const FormaDePago&, const FormaDePago&) = default;
};

[[nodiscard]] std::vector<FormaDePago> formas_de_pago(adodb::Connection& bexmor); ///< in order of code

/// The suppliers of a company. What they refuse is an `Error` that says why, and then nothing has changed.
class Proveedores {
public:
    explicit Proveedores(AmbitoDeFichas ambito);

    [[nodiscard]] std::vector<FichaDeProveedor> todos() const; ///< in order of code
    [[nodiscard]] std::optional<FichaDeProveedor> lee(std::int32_t codigo) const;
    [[nodiscard]] std::int32_t libre() const; ///< a code that nobody has

    /// Adds it, or changes the one of that code, with its accounts in accounting. True: it was added.
    bool guarda(const FichaDeProveedor& ficha) const;
    /// Refused when there is none, or a charge names it.
    void elimina(std::int32_t codigo) const;

private:
    [[nodiscard]] std::vector<FichaDeProveedor> lee_donde(const std::string& condicion) const;
    void comprueba(const FichaDeProveedor& ficha) const;
    [[nodiscard]] std::string clave(std::int32_t codigo) const;

    AmbitoDeFichas m_ambito;
};

} // namespace atipicos::app
