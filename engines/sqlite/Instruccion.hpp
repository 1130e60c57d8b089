#pragma once

#include "engines/sql/Forma.hpp"
#include "platform/adodb/Connection.hpp"
#include "runtime/Variant.hpp"

#include <cstdint>
#include <memory>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::sqlite {

/// The error that SQLite has just reported on `base`, with the kind of thing it is and its own words;
/// what a person meets (locked, read-only, full disk) is said in Spanish first.
[[nodiscard]] adodb::ErrorBaseDatos error_de(sqlite3* base, const std::string& instruccion, Donde donde);

/// Does something of which errors are to say what it was: "que: descripción".
template <class Accion> void nombrando(const std::string& que, Donde donde, Accion accion)
{
    try {
        accion();
    } catch (const adodb::ErrorBaseDatos& error) {
        throw adodb::ErrorBaseDatos(
            error.categoria(), error.fuente(), que + ": " + error.descripcion(), error.instruccion(), donde);
    }
}

/// What a column holds, as its declared type says.
enum class Tipo : std::uint8_t { Segun, Moneda, Fecha, Bit }; ///< `Segun`: as each value is stored
[[nodiscard]] Tipo tipo_declarado(const char* declarado) noexcept; ///< null: an expression

/// One prepared statement.
class Instruccion {
public:
    /// `sql` is one statement, already rewritten; an empty one prepares nothing and has no rows.
    Instruccion(sqlite3* base, const std::string& sql, Donde donde);

    /// Goes to the next row; false at the end.
    bool avanza(Donde donde);

    void liga(int parametro, const Variant& valor, Donde donde); ///< 1-based
    /// The value of a literal that stays alive until it is no longer wanted; false: it is to be a date and is
    /// none.
    [[nodiscard]] bool liga(int parametro, const sql::Literal& literal, bool es_fecha, Donde donde);

    /// The types of its columns, once it has gone to a first row. Another user may have changed the table
    /// since they were asked for: SQLite then prepares the statement anew by itself.
    [[nodiscard]] const std::vector<Tipo>& tipos();

    [[nodiscard]] std::string_view texto() const noexcept; ///< as it was prepared
    void descansa() noexcept; ///< is done with its rows and its values, and free for another use
    [[nodiscard]] sqlite3_stmt* get() const noexcept { return m_instruccion.get(); }

    bool prestada = false; ///< in use

private:
    struct Cierra {
        void operator()(sqlite3_stmt* instruccion) const noexcept { sqlite3_finalize(instruccion); }
    };

    void comprueba(int resultado, Donde donde) const;

    sqlite3* m_base;
    std::unique_ptr<sqlite3_stmt, Cierra> m_instruccion;
    std::vector<Tipo> m_tipos;
    int m_de_vez = -1; ///< the preparation that they are of; -1: not asked yet
};

/// The value of a column in the current row.
[[nodiscard]] Variant valor_de(sqlite3_stmt* instruccion, int columna, Tipo tipo, Donde donde);

} // namespace atipicos::sqlite
