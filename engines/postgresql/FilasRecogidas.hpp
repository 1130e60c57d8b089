#pragma once

#include <cstddef>
#include <cstdint>
#include <libpq-fe.h>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::postgresql {

/// Rows of a query that had to leave the line before they were read: their texts, one behind the other, to be
/// read once from the first to the last.
class FilasRecogidas {
public:
    void agrega(const PGresult* respuesta); ///< its first row; all have the same columns
    bool avanza(); ///< to the next row, first of all to the first one; false at the end

    // Of the row stood on.
    [[nodiscard]] bool es_nulo(std::size_t columna) const noexcept
    {
        return m_actual[columna].data() == nullptr;
    }
    [[nodiscard]] std::string_view texto(std::size_t columna) const noexcept { return m_actual[columna]; }

private:
    static constexpr std::uint32_t nulo = UINT32_MAX;

    std::string m_textos;
    std::vector<std::uint32_t> m_largos; ///< of the cells
    std::size_t m_columnas = 0;
    std::size_t m_celda = 0; ///< that comes next
    std::size_t m_leido = 0; ///< of the texts
    std::vector<std::string_view> m_actual;
};

} // namespace atipicos::postgresql
