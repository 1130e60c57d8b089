#pragma once

#include "engines/sql/Formas.hpp"
#include "engines/sql/Transacciones.hpp"
#include "engines/sqlite/Instruccion.hpp"

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace atipicos::sqlite {

/// A prepared statement in the hands of one user. Given back it is reset and without values, for the next.
class Prestada {
public:
    explicit Prestada(std::shared_ptr<Instruccion> instruccion) noexcept;
    Prestada(Prestada&&) noexcept = default;
    Prestada& operator=(Prestada&&) = delete;
    ~Prestada(); ///< gives it back

    /// What its errors name, `sql` as `catalogo` rewrites it, is another text than the prepared one. Both
    /// stay alive as long as the loan.
    void nombra(std::string_view sql, const sql::Catalogo& catalogo) noexcept;

    bool avanza(Donde donde); ///< to the next row; false at the end
    [[nodiscard]] Instruccion* operator->() const noexcept { return m_instruccion.get(); }
    [[nodiscard]] sqlite3_stmt* get() const noexcept { return m_instruccion->get(); }

private:
    std::shared_ptr<Instruccion> m_instruccion;
    std::string_view m_sql;
    const sql::Catalogo* m_catalogo = nullptr;
};

/// The prepared statements of a session: one for each shape that a side has run, and one for each text of the
/// engine's own. What is wanted while it is lent is prepared anew for that time.
class Preparadas {
public:
    Preparadas(sqlite3* base, bool con_formas); ///< without shapes all statements of the sides are texts

    /// A statement of a side, its values bound. It stays alive until the loan is given back. Raises the
    /// errors of the rewriting, and those of SQLite for the statement as a text when it cannot be prepared.
    [[nodiscard]] Prestada de_lado(
        sql::Lado lado, const std::string& sql, const sql::Catalogo& catalogo, Donde donde);
    [[nodiscard]] Prestada propia(std::string_view sql, Donde donde); ///< as it is

    void olvida_formas() noexcept; ///< when tables are no longer what they were

private:
    using Guardada = std::shared_ptr<Instruccion>; ///< null: not prepared yet
    using Formas = sql::Formas<Guardada>;

    [[nodiscard]] std::optional<Prestada> con_valores(
        Formas& formas, const std::string& sql, const sql::Catalogo& catalogo, Donde donde);
    [[nodiscard]] Prestada presta(Guardada& guardada, const std::string& sql, Donde donde);

    static constexpr std::size_t maximo_de_propias = 64;

    sqlite3* m_base;
    bool m_con_formas;
    std::array<Formas, 2> m_formas; ///< by side
    std::map<std::string, Guardada, std::less<>> m_propias;
};

} // namespace atipicos::sqlite
