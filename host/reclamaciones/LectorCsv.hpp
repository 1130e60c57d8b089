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
    std::vector<std::string> campos; ///< of a badly quoted row those before the bad one
    bool mal_entrecomillada = false;
};

/// Where a text comes from, piece by piece; an empty piece is its end. A piece has to last until the next one
/// is asked for.
using Trozos = std::function<std::string_view()>;

/// The rows of a text with ";" between fields and fields with separators, quotes or line breaks between
/// quotes, as it is read; blank lines are left out, and so is the mark of UTF-8, which the first piece holds
/// whole. After a row whose quotes are out of place it goes on with the line after that row's first one.
class LectorCsv {
public:
    explicit LectorCsv(Trozos trozos);
    LectorCsv(const LectorCsv&) = delete;
    LectorCsv& operator=(const LectorCsv&) = delete;
    ~LectorCsv();

    /// The next row; false at the end. Raises an `ErrorDeContenido` when the text is UTF-16, and when so many
    /// rows are badly quoted that it is no such file.
    bool lee(FilaCsv& fila);

private:
    bool avanza();
    bool pide_trozo();
    void empieza_linea();
    [[nodiscard]] std::string_view sin_leer() const noexcept;
    void prepara();
    bool alimenta(std::string_view texto);
    void consume(std::size_t cuanto);
    void salta_linea();
    void busca_fin_de_linea();
    static void campo(void* texto, std::size_t tamano, void* lector);
    static void fin_fila(int, void* lector);

    Trozos m_trozos;
    csv_parser m_csv{};
    std::string_view m_resto; ///< of the piece
    std::string m_cruda; ///< the row at hand as it is written
    std::string m_devuelta; ///< to be read before `m_resto`: what a badly quoted row had swallowed
    std::size_t m_de_devuelta = 0; ///< how much of it has been read
    int m_malas = 0; ///< badly quoted rows
    std::deque<FilaCsv> m_leidas;
    FilaCsv m_fila;
    int m_linea = 0;
    bool m_empezado = false;
    bool m_acabado = false; ///< there are no more pieces
    bool m_cerrado = false; ///< and the last row has been read
    bool m_en_linea = false; ///< the line goes on in the next piece
    bool m_tras_retorno
        = false; ///< the line before ended with a carriage return, perhaps the half of its end
    bool m_a_medias = false; ///< the row has begun
    bool m_saltando = false; ///< what is left of a line is of no use
};

} // namespace atipicos::app
