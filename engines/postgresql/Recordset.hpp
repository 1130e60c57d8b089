#pragma once

#include "engines/postgresql/Instruccion.hpp"
#include "engines/sql/Filas.hpp"

#include <string>
#include <vector>

namespace atipicos::postgresql {

class Connection;

/// Rows of a query: the whole answer of the server, held as it came and read value by value.
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
    [[nodiscard]] std::string marcador(std::size_t numero) const override;
    std::int32_t escribe(const std::string& sql, const std::vector<Variant>& valores, Donde donde) override;

    [[nodiscard]] std::string_view texto(std::size_t columna) const;

    Connection& m_conexion;
    Respuesta m_respuesta;
    std::vector<Tipo> m_tipos; ///< of the columns
    int m_actual = 0; ///< the row stood on
};

} // namespace atipicos::postgresql
