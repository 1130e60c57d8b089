#pragma once

#include "host/documento/Plantilla.hpp"
#include "platform/report/Report.hpp"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace atipicos::orvalin {

/// Texts by the names under which a template asks for them.
using Campos = std::map<std::string, std::string, std::less<>>;

struct DatosDocumento {
    Campos campos;
    std::map<std::string, std::vector<Campos>, std::less<>> listas;
};

/// A document laid out on its pages by a template, to the last line of text.
class Documento final : public Report {
public:
    /// Beside the given ones there are the fields `pagina` and `paginas`. Raises an `Error` when the
    /// template asks for a field or a list that is not there.
    Documento(std::string titulo, const DatosDocumento& datos, const Plantilla& plantilla,
        const Medidor& medidor, Donde donde = Donde::aqui());

    [[nodiscard]] std::string titulo() const override { return m_titulo; }
    [[nodiscard]] std::string nombre_de_fichero() const override { return m_nombre_de_fichero; }
    void set_NombreDeFichero(std::string nombre) { m_nombre_de_fichero = std::move(nombre); }
    [[nodiscard]] std::string asunto() const override { return m_asunto; }
    void set_Asunto(std::string asunto) { m_asunto = std::move(asunto); }
    [[nodiscard]] std::vector<Adjunto> adjuntos() const override { return m_adjuntos; }
    void Adjunta(Adjunto adjunto) { m_adjuntos.push_back(std::move(adjunto)); }
    [[nodiscard]] std::size_t paginas() const override { return m_paginas.size(); }
    [[nodiscard]] Tamano tamano() const override { return m_tamano; }
    void pinta(std::size_t pagina, Lienzo& lienzo) const override;

    [[nodiscard]] bool permite_buscar() const override { return true; }
    /// Finds whole lines of text: each that holds `texto`, whatever the case.
    [[nodiscard]] std::vector<Hallazgo> busca(std::string_view texto) const override;

private:
    friend class Maqueta;

    struct Trazo {
        Recuadro lugar;
        std::string texto; ///< empty: a coloured box
        Letra letra;
        Medida base = 0; ///< of the text
        Color color = 0;
    };

    std::string m_titulo;
    std::string m_nombre_de_fichero; ///< the title where no other is given
    std::string m_asunto; ///< the same
    std::vector<Adjunto> m_adjuntos;
    Tamano m_tamano;
    std::vector<std::vector<Trazo>> m_paginas;
};

} // namespace atipicos::orvalin
