#include "host/documento/Documento.hpp"

#include "host/documento/Paginacion.hpp"
#include "host/documento/Parrafo.hpp"

#include <algorithm>
#include <utility>

namespace atipicos::orvalin {

namespace {

    constexpr Medida cuerpo_minimo = 2000; ///< less than two centimetres for what flows is no page

    /// Small letters for capitals, of those that Spanish and its neighbours write.
    std::string en_minusculas(std::string_view texto)
    {
        std::string resultado(texto);
        unsigned anterior = 0;
        for (auto& c : resultado) {
            const unsigned valor = static_cast<unsigned char>(c);
            const bool acentuada
                = anterior == 0xC3 && valor >= 0x80 && valor <= 0x9E && valor != 0x97; // À to Þ, not ×
            if ((c >= 'A' && c <= 'Z') || acentuada)
                c = static_cast<char>(valor + 0x20);
            anterior = valor;
        }
        return resultado;
    }

}

/// Lays a document out: first what goes on each strip and in each heading, then where the strips go.
class Maqueta {
public:
    Maqueta(const DatosDocumento& datos, const Plantilla& plantilla, const Medidor& medidor, Donde donde)
        : m_datos(datos)
        , m_plantilla(plantilla)
        , m_medidor(medidor)
        , m_donde(donde)
    {
    }

    [[nodiscard]] std::vector<std::vector<Documento::Trazo>> paginas()
    {
        const Campos supuesta{ { "pagina", "1" }, { "paginas", "1" } };
        const auto cabecera = alto(dibuja(m_plantilla.cabecera, supuesta));
        const auto primera = std::max(cabecera, alto(dibuja(m_plantilla.primera, supuesta)));
        m_papel.primera = m_plantilla.cuerpo_hasta - primera - m_plantilla.separacion;
        m_papel.resto = m_plantilla.cuerpo_hasta - cabecera - m_plantilla.separacion;
        if (m_papel.primera < cuerpo_minimo || m_papel.resto < cuerpo_minimo)
            throw error("no deja sitio en la página");
        for (const auto& seccion : m_plantilla.cuerpo)
            if (seccion.si.empty() || !campo(seccion.si, {}).empty())
                agrega(seccion);

        const auto reparto = reparte(m_bloques, m_papel);
        std::vector<Trazos> hojas;
        hojas.reserve(reparto.size());
        for (const auto& repartida : reparto)
            hojas.push_back(hoja(repartida, hojas.size(), reparto.size()));
        return hojas;
    }

private:
    using Trazo = Documento::Trazo;
    using Trazos = std::vector<Trazo>;

    [[nodiscard]] Error error(const std::string& motivo) const
    {
        return { 1000, "QVOREMP:Documento", "La plantilla " + motivo + ".", m_donde };
    }

    [[nodiscard]] const std::string& campo(std::string_view nombre, const Campos& propios) const
    {
        for (const auto* campos : { &propios, &m_datos.campos })
            if (const auto lugar = campos->find(nombre); lugar != campos->end())
                return lugar->second;
        throw error("pide el dato «" + std::string(nombre) + "», que no existe");
    }

    /// `texto` with its fields filled in; empty when it has fields and all of them are.
    [[nodiscard]] std::string rellena(std::string_view texto, const Campos& propios) const
    {
        std::string resultado;
        bool pide = false;
        bool da = false;
        while (!texto.empty()) {
            const auto abre = std::min(texto.find('{'), texto.size());
            resultado += texto.substr(0, abre);
            texto.remove_prefix(abre);
            if (texto.empty())
                break;
            const auto cierra = texto.find('}');
            if (cierra == std::string_view::npos)
                throw error("tiene una llave sin cerrar: «" + std::string(texto) + "»");
            const auto& valor = campo(texto.substr(1, cierra - 1), propios);
            pide = true;
            da = da || !valor.empty();
            resultado += valor;
            texto.remove_prefix(cierra + 1);
        }
        return pide && !da ? std::string() : resultado;
    }

    [[nodiscard]] Trazo linea(
        const Estilo& estilo, const Recuadro& columna, bool a_la_derecha, std::string texto) const
    {
        Trazo trazo;
        const auto ancho = m_medidor.ancho(texto, estilo.letra);
        trazo.lugar = { a_la_derecha ? columna.x + columna.ancho - ancho : columna.x, columna.y, ancho,
            estilo.linea };
        trazo.base = columna.y + estilo.linea / 2 + estilo.letra.cuerpo * 36 / 100; // capitals in the middle
        trazo.texto = std::move(texto);
        trazo.letra = estilo.letra;
        trazo.color = estilo.color;
        return trazo;
    }

    /// The lines of a piece, one below the other from its own place on. Figures, which stand to the right,
    /// are never cut.
    void dibuja(const Pieza& pieza, const Campos& propios, Trazos& destino) const
    {
        auto columna = pieza.lugar;
        if (pieza.parrafos.empty())
            destino.push_back({ columna, {}, {}, 0, pieza.relleno });
        for (const auto& parrafo : pieza.parrafos)
            for (auto& renglon : parte_en_lineas(rellena(parrafo.texto, propios), parrafo.estilo.letra,
                     columna.ancho, m_medidor, pieza.a_la_derecha ? Palabras::Enteras : Palabras::Partidas)) {
                destino.push_back(linea(parrafo.estilo, columna, pieza.a_la_derecha, std::move(renglon)));
                columna.y += parrafo.estilo.linea;
            }
    }

    [[nodiscard]] Trazos dibuja(const std::vector<Pieza>& piezas, const Campos& propios) const
    {
        Trazos trazos;
        for (const auto& pieza : piezas)
            dibuja(pieza, propios, trazos);
        return trazos;
    }

    [[nodiscard]] static Medida alto(const Trazos& trazos)
    {
        Medida hasta = 0;
        for (const auto& trazo : trazos)
            hasta = std::max(hasta, trazo.lugar.y + trazo.lugar.alto);
        return hasta;
    }

    void agrega(const Seccion& seccion)
    {
        switch (seccion.tipo) {
        case Seccion::Tipo::Parrafo:
            agrega_lineas(dibuja(seccion.piezas, {}), seccion);
            break;
        case Seccion::Tipo::Grupo: {
            auto trazos = dibuja(seccion.piezas, {});
            const Tira tira{ alto(trazos), seccion.separacion, sin_tabla };
            bloque(seccion.unida).push_back(tira);
            m_tiras.push_back(std::move(trazos));
            break;
        }
        case Seccion::Tipo::Tabla:
            agrega_tabla(seccion);
            break;
        }
    }

    [[nodiscard]] Bloque& bloque(bool unido)
    {
        return unido && !m_bloques.empty() ? m_bloques.back() : m_bloques.emplace_back();
    }

    /// Each line a strip, all of them a block.
    void agrega_lineas(const Trazos& lineas, const Seccion& seccion)
    {
        auto& destino = bloque(seccion.unida);
        for (const auto& una : lineas) {
            const auto separacion = &una == &lineas.front() ? seccion.separacion : 0;
            destino.push_back({ una.lugar.alto, separacion, sin_tabla });
            m_tiras.push_back({ movido(una, -una.lugar.y) });
        }
    }

    void agrega_tabla(const Seccion& seccion)
    {
        const auto lista = m_datos.listas.find(seccion.lista);
        if (lista == m_datos.listas.end())
            throw error("pide la lista «" + seccion.lista + "», que no existe");
        m_cabeceras.push_back(titulos(seccion));
        m_papel.cabeceras.push_back(alto(m_cabeceras.back()));
        for (const auto& fila : lista->second)
            agrega_fila(fila, seccion, &fila == &lista->second.front() ? seccion.separacion : 0);
    }

    [[nodiscard]] static Recuadro de_lado_a_lado(const Seccion& tabla, Medida y, Medida alto)
    {
        const auto& primera = tabla.columnas.front().celda.lugar;
        const auto& ultima = tabla.columnas.back().celda.lugar;
        constexpr Medida vuelo = 150;
        return { primera.x - vuelo, y, ultima.x + ultima.ancho - primera.x + 2 * vuelo, alto };
    }

    [[nodiscard]] Trazos titulos(const Seccion& tabla) const
    {
        const auto& estilo = tabla.columnas.front().titulo.estilo;
        Trazos trazos{ { de_lado_a_lado(tabla, 0, estilo.linea + 2 * tabla.margen), {}, {}, 0,
            tabla.fondo_titulos } };
        for (const auto& [titulo, celda] : tabla.columnas) {
            auto lugar = celda.lugar;
            lugar.y = tabla.margen;
            trazos.push_back(linea(estilo, lugar, celda.a_la_derecha, titulo.texto));
        }
        return trazos;
    }

    /// A row is a block of strips of one line each, so that line n of every cell stands on strip n.
    void agrega_fila(const Campos& fila, const Seccion& tabla, Medida separacion)
    {
        std::vector<Trazos> tiras(1);
        Medida paso = 0;
        for (const auto& columna : tabla.columnas)
            for (const auto& parrafo : columna.celda.parrafos)
                paso = std::max(paso, parrafo.estilo.linea);
        for (const auto& columna : tabla.columnas) {
            Trazos celda;
            dibuja(columna.celda, fila, celda);
            if (tiras.size() < celda.size())
                tiras.resize(celda.size());
            for (std::size_t i = 0; i < celda.size(); ++i)
                tiras[i].push_back(movido(celda[i], (i == 0 ? tabla.margen : 0) - celda[i].lugar.y));
        }
        auto& destino = bloque(tabla.unida);
        for (std::size_t i = 0; i < tiras.size(); ++i) {
            const bool ultima = i + 1 == tiras.size();
            const auto alto_tira = paso + (i == 0 ? tabla.margen : 0) + (ultima ? tabla.margen : 0);
            if (ultima)
                tiras[i].push_back(
                    { de_lado_a_lado(tabla, alto_tira - filete, filete), {}, {}, 0, tabla.filete });
            destino.push_back({ alto_tira, i == 0 ? separacion : 0, m_cabeceras.size() - 1 });
            m_tiras.push_back(std::move(tiras[i]));
        }
    }

    [[nodiscard]] static Trazo movido(Trazo trazo, Medida hacia_abajo)
    {
        trazo.lugar.y += hacia_abajo;
        trazo.base += hacia_abajo;
        return trazo;
    }

    [[nodiscard]] Trazos hoja(const PaginaRepartida& repartida, std::size_t numero, std::size_t total)
    {
        const Campos paginacion{ { "pagina", std::to_string(numero + 1) },
            { "paginas", std::to_string(total) } };
        Trazos trazos = dibuja(m_plantilla.cabecera, paginacion);
        if (numero == 0)
            std::ranges::move(dibuja(m_plantilla.primera, paginacion), std::back_inserter(trazos));
        const auto desde = m_plantilla.cuerpo_hasta - (numero == 0 ? m_papel.primera : m_papel.resto);
        for (const auto& [tira, y, cabecera] : repartida) {
            if (cabecera != sin_tabla)
                for (const auto& trazo : m_cabeceras[cabecera])
                    trazos.push_back(movido(trazo, desde + y - m_papel.cabeceras[cabecera]));
            for (auto& trazo : m_tiras[tira])
                trazos.push_back(movido(std::move(trazo), desde + y));
        }
        std::ranges::move(dibuja(m_plantilla.pie, paginacion), std::back_inserter(trazos));
        return trazos;
    }

    static constexpr Medida filete = 10;

    const DatosDocumento& m_datos;
    const Plantilla& m_plantilla;
    const Medidor& m_medidor;
    Donde m_donde;
    Papel m_papel;
    std::vector<Bloque> m_bloques;
    std::vector<Trazos> m_tiras; ///< what is on each strip, from its upper edge
    std::vector<Trazos> m_cabeceras; ///< the column heads of each table
};

Documento::Documento(std::string titulo, const DatosDocumento& datos, const Plantilla& plantilla,
    const Medidor& medidor, Donde donde)
    : m_titulo(std::move(titulo))
    , m_nombre_de_fichero(m_titulo)
    , m_asunto(m_titulo)
    , m_tamano(plantilla.papel)
    , m_paginas(Maqueta(datos, plantilla, medidor, donde).paginas())
{
}

void Documento::pinta(std::size_t pagina, Lienzo& lienzo) const
{
    for (const auto& trazo : m_paginas.at(pagina))
        if (trazo.texto.empty())
            lienzo.relleno(trazo.lugar, trazo.color);
        else
            lienzo.texto(trazo.lugar.x, trazo.base, trazo.texto, trazo.letra, trazo.color);
}

std::vector<Hallazgo> Documento::busca(std::string_view texto) const
{
    std::vector<Hallazgo> hallazgos;
    const auto buscado = en_minusculas(texto);
    if (buscado.empty())
        return hallazgos;
    for (std::size_t pagina = 0; pagina < m_paginas.size(); ++pagina)
        for (const auto& trazo : m_paginas[pagina])
            if (en_minusculas(trazo.texto).find(buscado) != std::string::npos)
                hallazgos.push_back({ pagina, trazo.lugar });
    return hallazgos;
}

} // namespace atipicos::orvalin
