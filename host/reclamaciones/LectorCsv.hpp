#pragma once

#include "runtime/Error.hpp"

#include <csv.h>

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::app {

/// What cannot be read of a file because of what stands in it.
struct ErrorDeContenido : Error {
    explicit ErrorDeContenido(const std::string& motivo);
};

struct FilaCsv {
    int numero = 0; ///< line of the file on which the row begins, 1-based; blank lines count
    std::vector<std::string> campos;
};

/// Where a text comes from, piece by piece; an empty piece is its end. A piece has to last until the next one
/// is asked for.
using Trozos = std::function<std::string_view()>;

/// The rows of a text with ";" between fields and fields with separators, quotes or line breaks between
/// quotes, as it is read; blank lines are left out, and so is the mark of UTF-8, which the first piece holds
/// whole.
class LectorCsv {
public:
    explicit LectorCsv(Trozos trozos);
    LectorCsv(const LectorCsv&) = delete;
    LectorCsv& operator=(const LectorCsv&) = delete;
    ~LectorCsv();

    /// The next row; false at the end. Raises an `ErrorDeContenido` that names the row when the quotes are
    /// out of place.
    bool lee(FilaCsv& fila);

private:
    bool avanza();
    bool pide_trozo();
    void empieza_linea();
    void alimenta(std::string_view texto);
    [[noreturn]] void mal_entrecomillada() const;
    static void campo(void* texto, std::size_t tamano, void* lector);
    static void fin_fila(int, void* lector);

    Trozos m_trozos;
    csv_parser m_csv{};
    std::string_view m_resto; ///< of the piece
    std::deque<FilaCsv> m_leidas;
    FilaCsv m_fila;
    int m_linea = 0;
    bool m_empezado = false;
    bool m_acabado = false;
    bool m_en_linea = false; ///< the line goes on in the next piece
    bool m_tras_retorno
        = false; ///< the line before ended with a carriage return, perhaps the half of its end
    bool m_a_medias = false; ///< the row has begun
};

} // namespace atipicos::app
