#pragma once

#include "engines/odbc/Instruccion.hpp"
#include "engines/sql/Filas.hpp"

#include <string>
#include <vector>

namespace atipicos::odbc {

class Connection;

/// Rows of a query, all of them read at once.
class Recordset final : public sql::Filas {
public:
    explicit Recordset(Connection& conexion);
    ~Recordset() override;

private:
    bool abre(const std::string& sql, bool bloquea, Donde donde) override;
    [[nodiscard]] std::vector<Columna> columnas() const override;
    bool avanza(Donde donde) override;
    [[nodiscard]] Variant lee(std::size_t columna, Donde donde) const override;
    void cierra() noexcept override;

    [[nodiscard]] bool en_transaccion() const noexcept override;
    [[nodiscard]] Tabla tabla(Donde donde) override;
    std::int32_t escribe(const std::string& sql, const std::vector<Variant>& valores, Donde donde) override;

    Connection& m_conexion;
    std::string m_reescrita;
    Respuesta m_respuesta;
    std::size_t m_actual = 0; ///< the row stood on
};

} // namespace atipicos::odbc
