#pragma once

#include "engines/postgresql/Instruccion.hpp"
#include "engines/sql/Catalogo.hpp"

#include <array>
#include <map>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace atipicos::postgresql {

/// A table that rows can be written back to.
struct TablaConClave {
    std::string nombre;
    std::string calificado; ///< with its schema, quoted
    std::vector<std::string> clave; ///< columns of its primary key
};

/// What has been read of the database's own catalogue.
class Tablas {
public:
    /// The query that asks for it: tables of the session's schema and of `dbo`.
    static const char* const consulta;

    /// Takes the answer. Date columns are told to the catalogues, by the names that the tables have for the
    /// session.
    void lee(const Respuesta& respuesta, std::span<sql::Catalogo> catalogos);

    [[nodiscard]] Tipo tipo_de_columna(const PGresult* respuesta, int columna) const;
    [[nodiscard]] const TablaConClave* tabla(Oid numero) const; ///< null: not known

private:
    std::map<Oid, TablaConClave> m_tablas;
    std::set<std::pair<Oid, int>> m_bits; ///< BIT columns, by table and number
};

} // namespace atipicos::postgresql
