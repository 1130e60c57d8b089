#pragma once

#include "browser/EscritorZip.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos {

/// A workbook of one sheet, written row by row: no more of it is held than a row. The first row are headings,
/// in bold, and stays in sight.
class LibroXlsx {
public:
    static constexpr std::size_t filas_maximas = 1'048'576; ///< with the headings
    static constexpr std::size_t letras_maximas = 32'767; ///< of a cell, as UTF-16 counts them

    enum class Formato : std::uint8_t { normal, titulo, importe, fecha };

    /// `salida` outlives the book; what could not be written is seen in its state.
    LibroXlsx(std::ostream& salida, std::string_view hoja, const std::vector<std::string>& titulos);

    /// Opens the next row, in which cells are put from left to right; false when the sheet has no room for
    /// it.
    [[nodiscard]] bool empieza_fila();
    /// An empty text is no cell; what is no UTF-8 becomes U+FFFD. False when it has more letters than a cell
    /// holds: it is not written.
    [[nodiscard]] bool texto(std::size_t columna, std::string_view valor, Formato formato = Formato::normal);
    void numero(std::size_t columna, double valor, Formato formato = Formato::normal);

    void termina(); ///< without it the file is none

private:
    void empieza_celda(std::size_t columna, Formato formato);
    void pon_parte(const char* nombre, std::string_view contenido);
    void vacia(); ///< packs what is gathered

    EscritorZip m_zip;
    std::string m_xml; ///< of the sheet, that has not been packed
    std::size_t m_filas = 0;
};

} // namespace atipicos
