#pragma once

#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::sql {

/// Orders names as databases tell them apart: without ASCII case.
struct MenorSinCaja {
    using is_transparent = void;
    [[nodiscard]] bool operator()(std::string_view a, std::string_view b) const noexcept;
};

/// A type of column in CREATE TABLE, as SQL Server calls it, and its name on another database.
struct TipoEscrito {
    std::string_view aqui;
    std::string_view alli;
    std::string_view tras = {}; ///< what follows it there, behind its length
};

/// What a database calls what SQL Server calls otherwise.
struct Dialecto {
    std::string_view isnull = "IFNULL"; ///< the function
    std::span<const TipoEscrito> tipos = {}; ///< those that it does not understand
    bool transact = false; ///< Transact-SQL: texts of more than ASCII are N'…', statements need no ";"
    bool fetch = false; ///< it understands `OFFSET n ROWS FETCH NEXT m ROWS ONLY`
};

/// What the rewriting must know of a database. Names compare without case.
class Catalogo {
public:
    static constexpr std::size_t sin_lugar = static_cast<std::size_t>(-1);

    explicit Catalogo(Dialecto dialecto = {}) noexcept
        : m_dialecto(dialecto)
    {
    }

    /// A column that holds dates, of a table as the database calls it. `lugar`: its place among the values of
    /// an INSERT without a list of columns (0-based).
    void agrega_fecha(std::string_view tabla, std::string_view columna, std::size_t lugar = sin_lugar);
    /// `nombre.dbo.T` is the table that is called `prefijo` and T: "dbo." where it has a schema of its own,
    /// "Bexmor_" where it stands among those of another product.
    void agrega_base(std::string_view nombre, std::string_view prefijo);
    void pon_propio(std::string_view prefijo) { m_propio = prefijo; } ///< the same for plain names
    void olvida_fechas() noexcept { m_fechas.clear(); }

    [[nodiscard]] const Dialecto& dialecto() const noexcept { return m_dialecto; }
    [[nodiscard]] bool es_fecha(std::string_view tabla, std::string_view columna) const;
    [[nodiscard]] std::vector<bool> fechas_por_lugar(std::string_view tabla) const; ///< up to the last date
    [[nodiscard]] const std::string* base(std::string_view nombre) const; ///< its prefix; null: not known
    [[nodiscard]] const std::string& propio() const noexcept { return m_propio; } ///< empty: none

private:
    template <class Valor> using Mapa = std::map<std::string, Valor, MenorSinCaja>;

    Dialecto m_dialecto;
    Mapa<Mapa<std::size_t>> m_fechas; ///< places by column, by table
    Mapa<std::string> m_bases;
    std::string m_propio;
};

} // namespace atipicos::sql
