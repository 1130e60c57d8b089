#pragma once

#include "engines/postgresql/Enlace.hpp"
#include "engines/postgresql/FilasRecogidas.hpp"
#include "engines/postgresql/Instruccion.hpp"
#include "engines/sql/Filas.hpp"

#include <exception>
#include <optional>
#include <string>
#include <vector>

namespace atipicos::postgresql {

class Connection;

/// Rows of a query: the whole answer of the server, held as it came and read value by value, or row by row as
/// the server sends them. Of the latter those that are still to come are taken into memory before anything
/// else is asked on the same session.
class Recordset final : public sql::Filas, private Lectura {
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

    void recoge() override;
    void lee_tipos();
    bool avanza_por_la_linea(Donde donde);
    [[nodiscard]] bool es_nulo(std::size_t columna) const;
    [[nodiscard]] std::string_view texto(std::size_t columna) const;

    Connection& m_conexion;
    Respuesta m_respuesta; ///< all rows, or the one that came last
    std::optional<FilasRecogidas> m_recogidas; ///< of the rows behind that one
    std::exception_ptr m_fallo; ///< behind the last of them
    bool m_en_recogidas = false; ///< the row stood on is one of them
    bool m_por_filas = false;
    std::vector<Tipo> m_tipos; ///< of the columns
    int m_actual = 0; ///< the row stood on
};

} // namespace atipicos::postgresql
