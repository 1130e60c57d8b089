#pragma once

#include "browser/DetalleAtipico.hpp"
#include "platform/adodb/Connection.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace atipicos::app {

/// A reference of a claims file that has become a charge.
struct Importada {
    std::int16_t vez = 0; ///< how often it has been recorded
    ClaveAtipico clave; ///< the last time
};

/// Which references of one claims file, known by its digest, have become which charges of a company.
class Importaciones {
public:
    Importaciones(std::shared_ptr<adodb::Connection> conexion, std::int16_t empresa, std::string huella);

    [[nodiscard]] bool hay_alguna() const; ///< of the file

    /// Nothing when the reference has not been recorded.
    [[nodiscard]] std::optional<Importada> busca(const std::string& referencia) const;

    /// Remembers the charge on `conexion`, inside the transaction that saves it. Raises an error that says so
    /// when another process has recorded the reference since it was looked up.
    void anota(adodb::Connection& conexion, const std::string& referencia, std::int16_t vez,
        const ClaveAtipico& clave) const;

private:
    [[nodiscard]] std::unique_ptr<adodb::Recordset> consulta(
        const std::string& que, const std::string& condicion = {}) const;

    std::shared_ptr<adodb::Connection> m_conexion;
    std::int16_t m_empresa;
    std::string m_huella;
};

} // namespace atipicos::app
