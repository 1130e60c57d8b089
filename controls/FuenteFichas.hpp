#pragma once

#include "platform/adodb/Connection.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace atipicos {

struct Ficha {
    std::string Codigo;
    std::string Nombre;
    std::vector<std::string> otros = {}; ///< of the columns that tell two of one name apart

    friend bool operator==(const Ficha&, const Ficha&) = default;
};

/// Codes and names of one table of the host, for the pickers. Each call asks the database; nothing is kept.
class FuenteFichas {
public:
    struct Otro {
        std::string columna;
        std::string titulo; ///< of the column in the list
    };
    struct Tabla {
        std::string nombre;
        std::string codigo = "Codigo"; ///< column of the code
        std::string filtro; ///< condition of the rows that count; empty: all
        bool texto = false; ///< the code is a text and goes between quotes
        std::vector<Otro> otros = {}; ///< shown beside the name, where the table has them
    };

    FuenteFichas(std::shared_ptr<adodb::Connection> conexion, Tabla tabla);

    /// The name that goes with `codigo` (digits); nothing when there is none.
    [[nodiscard]] std::optional<std::string> nombre(
        const std::string& codigo, Donde donde = Donde::aqui()) const;

    /// In order of name. A table that lacks the columns of `otros` gives code and name.
    [[nodiscard]] std::vector<Ficha> todas(Donde donde = Donde::aqui()) const;
    [[nodiscard]] const std::vector<Otro>& otros() const noexcept { return m_tabla.otros; }

private:
    [[nodiscard]] std::unique_ptr<adodb::Recordset> consulta(const std::string& sql, Donde donde) const;
    [[nodiscard]] std::unique_ptr<adodb::Recordset> consulta_todas(Donde donde) const;

    std::shared_ptr<adodb::Connection> m_conexion;
    Tabla m_tabla;
};

} // namespace atipicos
