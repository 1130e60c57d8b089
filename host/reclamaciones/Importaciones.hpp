#pragma once

#include "charges/ClaveCargo.hpp"
#include "platform/adodb/Connection.hpp"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace atipicos {
struct CargoTecleado;
}

namespace atipicos::app {

/// A reference that has become a charge.
struct Importada {
    std::int16_t vez = 0; ///< 1, and one more each time it is recorded again on purpose
    ClaveCargo clave;
    std::string huella; ///< of the file in which it came
    std::string contenido; ///< of the claim; empty: an earlier program knew the file alone
};

/// What is told apart of a claim with a known reference.
struct Reclamada {
    std::string contenido; ///< see `contenido_de`
    const CargoTecleado& tecleado;
};

/// Which claims of a company have become which charges, as they are found with one file.
class Importaciones {
public:
    /// `huella` is the digest of the file.
    Importaciones(std::shared_ptr<adodb::Connection> conexion, std::int16_t empresa, std::string huella);

    /// Each time that the reference has been recorded, in order; empty: never.
    [[nodiscard]] std::vector<Importada> busca(const std::string& referencia) const;

    /// The same of many of them, in one query; those that never were are left out.
    [[nodiscard]] std::map<std::string, std::vector<Importada>> busca(
        const std::vector<std::string>& referencias) const;

    /// The last of those times at which the very same claim was recorded; null: it always said something
    /// else. Of a time whose content is not known the file decides, or else the charge as it is stored; a
    /// charge that is gone counts as the same.
    [[nodiscard]] const Importada* la_misma(
        const std::vector<Importada>& veces, const Reclamada& reclamada) const;

    /// Remembers the charge on `conexion`, inside the transaction that saves it. Raises an error that says so
    /// when another process has recorded the reference since it was looked up.
    void anota(adodb::Connection& conexion, const std::string& referencia, const std::string& contenido,
        std::int16_t vez, const ClaveCargo& clave) const;

private:
    std::shared_ptr<adodb::Connection> m_conexion;
    std::int16_t m_empresa;
    std::string m_huella;
};

} // namespace atipicos::app
