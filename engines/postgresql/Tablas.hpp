#pragma once

#include "engines/postgresql/Instruccion.hpp"
#include "engines/sql/Catalogo.hpp"

#include <array>
#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::postgresql {

/// A table that rows can be written back to.
struct TablaConClave {
    std::string nombre;
    std::string calificado; ///< with its schema, quoted
    std::vector<std::string> clave; ///< columns of its primary key
    std::set<std::string, sql::MenorSinCaja> bits; ///< its BIT columns
};

/// What has been read of the database's own catalogue.
class Tablas {
public:
    /// The query that asks for it: tables of the session's schema and of `dbo`.
    static const char* const consulta;

    /// Takes the answer. Date columns are told to the catalogues, by the names that the tables have for the
    /// session.
    void lee(const Respuesta& respuesta, std::span<sql::Catalogo> catalogos);

    /// As the session calls it, or with its schema before it; null: not known.
    [[nodiscard]] const TablaConClave* tabla(std::string_view nombre) const;
    /// Whether a column may be a BIT, by its name, of some table.
    [[nodiscard]] bool hay_bit(std::string_view columna) const { return m_bits.contains(columna); }
    /// Whether a query names such a column, perhaps under another name.
    [[nodiscard]] bool nombra_algun_bit(std::string_view texto) const;

private:
    std::map<Oid, TablaConClave> m_tablas;
    std::map<std::string, Oid, sql::MenorSinCaja> m_numeros; ///< by both names
    std::set<std::string, sql::MenorSinCaja> m_bits; ///< of all tables
};

} // namespace atipicos::postgresql
