#include "host/resumen/ResumenEnTerminal.hpp"

#include "host/resumen/ColumnasResumen.hpp"
#include "host/terminal/Tabla.hpp"
#include "runtime/Formato.hpp"
#include "runtime/Redondeo.hpp"

#include <algorithm>
#include <array>
#include <ostream>

namespace atipicos::app {

namespace {

    constexpr std::size_t nombre_mas_corto = 12;
    constexpr std::size_t nombre_mas_largo = 30; ///< beside a bar
    constexpr std::size_t barra_mas_corta = 8;
    constexpr std::size_t sin_nombres = 100; ///< what the other columns of the table take

    entero_ancho tamano(Currency importe) noexcept
    {
        return importe.crudo() < 0 ? -entero_ancho{ importe.crudo() } : importe.crudo();
    }

    void quita_letra(std::string& texto)
    {
        bool sigue = true; // what follows the first byte of a letter goes with it
        while (sigue && !texto.empty()) {
            sigue = (static_cast<unsigned char>(texto.back()) & 0xC0U) == 0x80U;
            texto.pop_back();
        }
    }

    /// The text in so many places, its end replaced by "…" where it has more.
    std::string recorta(const std::string& texto, std::size_t lugares)
    {
        auto en_linea = en_una_linea(texto);
        if (ancho(en_linea) <= lugares)
            return en_linea;
        while (ancho(en_linea) + 1 > lugares)
            quita_letra(en_linea);
        return en_linea + "…";
    }

    void escribe_tabla(std::ostream& salida, const ResumenCargos& resumen, const Aspecto& aspecto)
    {
        const auto columnas = columnas_resumen(resumen.peticion().por);
        std::vector<Tabla::Columna> titulos;
        titulos.reserve(columnas.size());
        for (const auto& columna : columnas)
            titulos.push_back({ columna.titulo,
                columna.dato == DatoResumen::nombre ? Alineacion::izquierda : Alineacion::derecha });
        const auto nombres
            = std::max(aspecto.ancho, sin_nombres + nombre_mas_corto) - sin_nombres; // others are never cut
        Tabla tabla(std::move(titulos));
        const auto agrega = [&](const GrupoResumen& grupo) {
            std::vector<std::string> celdas;
            for (const auto& columna : columnas) {
                auto celda = celda_de(resumen, grupo, columna);
                const bool se_corta = aspecto.es_terminal && columna.dato == DatoResumen::nombre;
                celdas.push_back(se_corta ? recorta(celda, nombres) : std::move(celda));
            }
            tabla.agrega(std::move(celdas));
        };
        for (const auto& grupo : resumen.grupos())
            agrega(grupo);
        agrega(resumen.total());
        tabla.escribe(salida);
    }

    void escribe_barras(std::ostream& salida, const ResumenCargos& resumen, const Aspecto& aspecto)
    {
        std::size_t nombres = 0;
        std::size_t importes = 0;
        Currency mayor;
        for (const auto& grupo : resumen.grupos()) {
            nombres = std::max(nombres, ancho(recorta(grupo.nombre, nombre_mas_largo)));
            importes = std::max(importes, texto_pantalla(grupo.ahora.total(), 2).size());
            if (tamano(grupo.ahora.total()) > tamano(mayor))
                mayor = grupo.ahora.total();
        }
        if (mayor == Currency())
            return;
        const auto resto = nombres + importes + 4;
        const auto lugares = std::max(aspecto.ancho, resto + barra_mas_corta) - resto;
        salida << '\n';
        for (const auto& grupo : resumen.grupos()) {
            const auto nombre = recorta(grupo.nombre, nombre_mas_largo);
            const auto total = texto_pantalla(grupo.ahora.total(), 2);
            const auto dibujo = barra(grupo.ahora.total(), mayor, lugares);
            salida << nombre << std::string(nombres - ancho(nombre) + 2, ' ')
                   << std::string(importes - total.size(), ' ') << total;
            if (!dibujo.empty())
                salida << "  " << (aspecto.color ? "\x1b[36m" : "") << dibujo
                       << (aspecto.color ? "\x1b[0m" : "");
            salida << '\n';
        }
    }

}

std::string barra(Currency valor, Currency mayor, std::size_t lugares)
{
    static constexpr std::array<const char*, 8> octavos{ "", "▏", "▎", "▍", "▌", "▋", "▊", "▉" };
    if (valor == Currency() || mayor == Currency() || lugares == 0)
        return {};
    const auto octavas = static_cast<entero_ancho>(lugares) * 8;
    auto cuantos = redondea_cociente<entero_ancho>(tamano(valor) * octavas, tamano(mayor));
    cuantos = std::clamp<entero_ancho>(cuantos, 1, octavas);
    const bool negativo = valor < Currency();
    if (negativo) // there are no eighths of this pattern
        cuantos = std::max<entero_ancho>((cuantos + 4) / 8, 1) * 8;
    std::string dibujo;
    for (entero_ancho i = 0; i < cuantos / 8; ++i)
        dibujo += negativo ? "░" : "█";
    return dibujo + octavos[static_cast<std::size_t>(cuantos % 8)];
}

void resumen_en_terminal(std::ostream& salida, const ResumenCargos& resumen, const Aspecto& aspecto)
{
    salida << titulo(resumen.peticion()) << "\n\n";
    if (resumen.total().ahora.cuantos == 0 && resumen.total().antes.cuantos == 0)
        return;
    escribe_tabla(salida, resumen, aspecto);
    if (const auto nota = nota_de(resumen); !nota.empty())
        salida << nota << '\n';
    escribe_barras(salida, resumen, aspecto);
}

} // namespace atipicos::app
