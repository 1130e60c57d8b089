#pragma once

#include "engines/sql/Filas.hpp"
#include "engines/sqlite/Preparadas.hpp"

#include <optional>
#include <string>
#include <vector>

namespace atipicos::sqlite {

class Connection;

/// Rows of a query. Read-only ones are read as the database finds them, until the connection is asked to
/// write: the rest of them is then read and kept, so that it neither sees nor stands in the way of what is
/// written.
class Recordset final : public sql::Filas {
public:
    explicit Recordset(Connection& conexion);
    ~Recordset() override;

private:
    bool abre(const std::string& sql, bool bloquea, Donde donde) override;
    [[nodiscard]] std::vector<Columna> columnas() const override;
    bool avanza(Donde donde) override;
    [[nodiscard]] Variant lee(std::size_t columna, Donde donde) const override;
    void anexa(std::size_t columna, std::string& destino) const override;
    void cierra() noexcept override;

    [[nodiscard]] bool en_transaccion() const noexcept override;
    [[nodiscard]] Tabla tabla(Donde donde) override;
    std::int32_t escribe(const std::string& sql, const std::vector<Variant>& valores, Donde donde) override;

    Connection& m_conexion;
    std::optional<Prestada> m_instruccion;
    std::vector<Tipo> m_tipos; ///< of the columns
};

} // namespace atipicos::sqlite
