#pragma once

#include "automation/Despacho.hpp"
#include "platform/report/Report.hpp"
#include "runtime/Error.hpp"

#include <vector>

namespace atipicos::server {

/// A report of the host. It is asked for all its pages when this is made, so that its errors reach whoever
/// hands it in: it paints them through an automation object that it is lent, with `Texto` and `Relleno`.
class ReportAnfitrion final : public Report {
public:
    explicit ReportAnfitrion(const automation::Despacho& report, Donde donde = Donde::aqui());

    [[nodiscard]] std::string titulo() const override { return m_titulo; }
    [[nodiscard]] std::size_t paginas() const override { return m_paginas.size(); }
    [[nodiscard]] Tamano tamano() const override { return m_tamano; }
    void pinta(std::size_t pagina, Lienzo& lienzo) const override;

    struct Trazo {
        Recuadro lugar; ///< of a text, where its base line begins
        std::string texto; ///< empty: a coloured box
        Letra letra;
        Color color = 0;
    };
    using Pagina = std::vector<Trazo>;

private:
    std::string m_titulo;
    Tamano m_tamano;
    std::vector<Pagina> m_paginas;
};

} // namespace atipicos::server
