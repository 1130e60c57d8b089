#pragma once

#include "engines/postgresql/Tablas.hpp"
#include "engines/sql/Catalogo.hpp"
#include "engines/sql/Nombres.hpp"
#include "engines/sql/Vista.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::postgresql {

/// Where the rows of a query come from, as the query itself says it with the names of the catalogue. What the
/// protocol has for it, the number of a table beside each column, not every server fills in: the rows of a
/// table that is spread over several nodes have none.
class Procedencia {
public:
    /// `consulta` as it is written for SQL Server. All of them must stay alive.
    Procedencia(const std::string& consulta, const sql::Catalogo& catalogo, const Tablas& tablas);
    Procedencia(const Procedencia&) = delete;
    Procedencia& operator=(const Procedencia&) = delete;
    ~Procedencia() = default;

    [[nodiscard]] const TablaConClave* tabla() const; ///< that is asked first; null: none that is known
    /// Whether a column of the answer, which calls it `nombre`, is a BIT column as it stands.
    [[nodiscard]] bool es_bit(std::size_t columna, std::string_view nombre) const;

private:
    /// A column that is asked for. Made of others, or of none, it has no name.
    struct Pedida {
        std::string_view de; ///< table, or its alias, if one is named
        std::string_view nombre;
    };

    void lee_columnas();
    [[nodiscard]] const TablaConClave* tabla_de(const sql::TablaNombrada& nombrada) const;
    [[nodiscard]] bool la_nombra(const sql::TablaNombrada& nombrada, std::string_view de) const;
    [[nodiscard]] int profundidad(std::size_t i) const;

    const sql::Catalogo& m_catalogo;
    const Tablas& m_tablas;
    std::vector<sql::Token> m_tokens;
    sql::Vista m_vista;
    std::vector<sql::TablaNombrada> m_nombradas;
    std::optional<std::vector<Pedida>> m_pedidas; ///< nothing: a "*" is among them
};

} // namespace atipicos::postgresql
