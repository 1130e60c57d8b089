#pragma once

#include "browser/CargoListado.hpp"
#include "platform/adodb/Connection.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

/// The columns of the list of charges, each said once: the grid, the files, the terminal, the totals and the
/// reading of the query go through this table. Another column is another line of it.
namespace atipicos {

/// What a column holds; how it is read, aligned, put in order, shown and exported follows from it.
enum class TipoColumna : std::uint8_t {
    texto,
    numero,
    numero_o_nada, ///< shown as nothing when it is not above 0
    fecha,
    importe,
    porcentaje,
};

/// A column without a member: the place of its value in `CargoListado::otros`, counted from 0.
struct OtroDato {
    std::size_t lugar = 0;
};

struct ColumnaLista {
    /// Where a charge keeps the value; what it points to agrees with `tipo`.
    using Dato = std::variant<std::string CargoListado::*, std::int32_t CargoListado::*, Date CargoListado::*,
        Currency CargoListado::*, OtroDato>;

    const char* campo; ///< of the query
    TipoColumna tipo;
    Dato dato;
    const char* titulo; ///< over the grid, where equal neighbours show as one
    const char* nombre; ///< heading where each column stands alone: files and the terminal
    const char* clave; ///< in JSON
    int twips; ///< width in the grid
    int porcentaje = 0; ///< of what the grid gains in width
    bool se_suma = false; ///< the list ends with its total
};

using ColumnasLista = std::span<const ColumnaLista>;

/// The thirteen columns, in their order.
[[nodiscard]] ColumnasLista columnas_lista() noexcept;

/// The value of a column, empty where it was not read. `T` is what its type holds: `std::string`,
/// `std::int32_t`, `Date` or `Currency`.
template <class T> [[nodiscard]] const T& dato(const CargoListado& cargo, const ColumnaLista& columna)
{
    if (const auto* otro = std::get_if<OtroDato>(&columna.dato)) {
        static const T sin_leer{};
        return otro->lugar < cargo.otros.size() ? std::get<T>(cargo.otros[otro->lugar]) : sin_leer;
    }
    return cargo.*std::get<T CargoListado::*>(columna.dato);
}

/// Whether the column has a text rather than a number or a day.
[[nodiscard]] constexpr bool es_texto(const ColumnaLista& columna) noexcept
{
    return columna.tipo == TipoColumna::texto;
}

/// Appends what a person is shown of the column; a tab inside a text becomes a blank.
void anexa_celda(std::string& destino, const CargoListado& cargo, const ColumnaLista& columna);

/// Appends the cells of all columns, separated by tabs.
void anexa_fila(std::string& destino, const CargoListado& cargo, ColumnasLista columnas = columnas_lista());

/// The cells as the list shows them.
[[nodiscard]] std::vector<std::string> celdas_lista(
    const CargoListado& cargo, ColumnasLista columnas = columnas_lista());

/// Reads the columns from the row that a recordset stands on: their fields are looked for once. It must not
/// outlive the recordset, nor the columns.
class LectorLista {
public:
    /// Raises the error of the recordset when it has not all the fields.
    explicit LectorLista(adodb::Recordset& rs, ColumnasLista columnas = columnas_lista());

    /// What is null becomes an empty text, a zero or no date.
    void lee(CargoListado& cargo) const;

private:
    std::vector<std::pair<const adodb::Field*, const ColumnaLista*>> m_campos;
};

/// How many charges have gone by, and the sums of the columns that have one.
class TotalesLista {
public:
    explicit TotalesLista(ColumnasLista columnas = columnas_lista());

    void suma(const CargoListado& cargo); ///< raises nothing: the list is worth more than its totals
    [[nodiscard]] std::size_t cargos() const noexcept { return m_cargos; }
    /// A column that is summed with its total; without one where the sum is more than an amount can hold.
    using Suma = std::pair<const ColumnaLista*, std::optional<Currency>>;
    [[nodiscard]] const std::vector<Suma>& sumas() const noexcept { return m_sumas; } ///< in the list's order

private:
    std::size_t m_cargos = 0;
    std::vector<Suma> m_sumas;
};

} // namespace atipicos
