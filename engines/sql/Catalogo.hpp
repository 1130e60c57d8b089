#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::sql {

/// Orders names as databases tell them apart: without ASCII case.
struct MenorSinCaja {
    using is_transparent = void;
    [[nodiscard]] bool operator()(std::string_view a, std::string_view b) const noexcept;
};

/// What the rewriting must know of a database. Names compare without case.
class Catalogo {
public:
    static constexpr std::size_t sin_lugar = static_cast<std::size_t>(-1);

    /// A column that holds dates. `lugar`: its place among the values of an INSERT without a list of columns
    /// (0-based).
    void agrega_fecha(std::string_view tabla, std::string_view columna, std::size_t lugar = sin_lugar);
    void agrega_base(std::string_view nombre, std::string_view esquema); ///< `nombre.dbo.T` is `esquema.T`
    void olvida_fechas() noexcept { m_fechas.clear(); }

    [[nodiscard]] bool es_fecha(std::string_view tabla, std::string_view columna) const;
    [[nodiscard]] std::vector<bool> fechas_por_lugar(std::string_view tabla) const; ///< up to the last date
    [[nodiscard]] const std::string* esquema(std::string_view base) const; ///< null: not known

private:
    template <class Valor> using Mapa = std::map<std::string, Valor, MenorSinCaja>;

    Mapa<Mapa<std::size_t>> m_fechas; ///< places by column, by table
    Mapa<std::string> m_bases;
};

} // namespace atipicos::sql
