#include "engines/sql/Guion.hpp"

#include "engines/sql/Tokens.hpp"

#include <algorithm>
#include <string>
#include <utility>

namespace atipicos::sql {

namespace {

    void ejecuta(adodb::Connection& conexion, const std::string& instruccion, int linea, Donde donde)
    {
        try {
            conexion.Execute(instruccion, nullptr, adodb::CommandType::Text, donde);
        } catch (const adodb::ErrorBaseDatos& error) {
            throw adodb::ErrorBaseDatos(error.categoria(), error.fuente(),
                "línea " + std::to_string(linea) + " del guion: " + error.descripcion(), instruccion, donde);
        }
    }

}

void ejecuta_guion(adodb::Connection& conexion, std::string_view guion, Donde donde)
{
    constexpr std::string_view marca_utf8 = "\xef\xbb\xbf";
    if (guion.starts_with(marca_utf8))
        guion.remove_prefix(marca_utf8.size());
    std::string instruccion;
    int linea = 1;
    int inicio = 0; // line on which the statement begins; 0: it has not begun
    bool con_cuerpo = false; // it has statements of its own, if it makes a trigger
    std::string_view anterior; // the two last tokens
    std::string_view ultimo;
    for (const auto& token : separa(guion)) {
        const bool vacio = token.clase == Clase::blanco || token.clase == Clase::comentario;
        const bool cierra = token.texto == ";"
            && (!con_cuerpo || !crea_disparador(instruccion) || (iguales(ultimo, "END") && anterior == ";"));
        if (inicio == 0 && !vacio && !cierra)
            inicio = linea;
        linea += static_cast<int>(std::count(token.texto.begin(), token.texto.end(), '\n'));
        if (!vacio)
            anterior = std::exchange(ultimo, token.texto);
        con_cuerpo = con_cuerpo || (token.clase == Clase::palabra && iguales(token.texto, "BEGIN"));
        if (!cierra) {
            instruccion += token.texto;
            continue;
        }
        if (inicio != 0)
            ejecuta(conexion, instruccion, inicio, donde);
        instruccion.clear();
        con_cuerpo = false;
        inicio = 0;
    }
    if (inicio != 0)
        ejecuta(conexion, instruccion, inicio, donde);
}

} // namespace atipicos::sql
