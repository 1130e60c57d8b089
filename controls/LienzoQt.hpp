#pragma once

#include "platform/report/Report.hpp"

#include <QFont>
#include <QFontMetricsF>

#include <map>

class QPainter;

namespace atipicos {

/// The type of that description, unhinted: it is as wide on paper as it is in any zoom on a screen.
[[nodiscard]] QFont fuente_qt(const Letra& letra);

struct LetraMenor {
    [[nodiscard]] bool operator()(const Letra& a, const Letra& b) const;
};

/// Measures texts as `LienzoQt` paints them. Needs a Qt application, though no display.
class MedidorQt final : public Medidor {
public:
    [[nodiscard]] Medida ancho(std::string_view texto, const Letra& letra) const override;

private:
    mutable std::map<Letra, QFontMetricsF, LetraMenor> m_metricas;
};

/// The fonts that have been painted with: to look one up again costs more than to paint a line with it.
using FuentesUsadas = std::map<Letra, QFont, LetraMenor>;

/// Paints the pages of reports with a painter whose unit is a hundredth of a millimetre.
class LienzoQt final : public Lienzo {
public:
    LienzoQt(QPainter& pintor, FuentesUsadas& fuentes);

    void texto(Medida x, Medida y, std::string_view texto, const Letra& letra, Color color) override;
    void relleno(const Recuadro& recuadro, Color color) override;

private:
    QPainter& m_pintor;
    FuentesUsadas& m_fuentes;
    Letra m_letra; ///< the one that the painter has
};

/// Paints one page, `puntos_por_pulgada` being the resolution of what the painter paints on.
void pinta_pagina(const Report& report, std::size_t pagina, QPainter& pintor, double puntos_por_pulgada,
    FuentesUsadas& fuentes);

} // namespace atipicos
