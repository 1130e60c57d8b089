#include "controls/LienzoQt.hpp"

#include "controls/Texto.hpp"

#include <QPainter>

#include <cmath>
#include <tuple>

namespace atipicos {

namespace {

    constexpr double medidas_por_pulgada = 2540.0;

}

QFont fuente_qt(const Letra& letra)
{
    QFont fuente(a_qt(letra.familia));
    fuente.setPixelSize(letra.cuerpo);
    fuente.setBold(letra.negrita);
    fuente.setHintingPreference(QFont::PreferNoHinting);
    return fuente;
}

bool LetraMenor::operator()(const Letra& a, const Letra& b) const
{
    return std::tie(a.cuerpo, a.negrita, a.familia) < std::tie(b.cuerpo, b.negrita, b.familia);
}

Medida MedidorQt::ancho(std::string_view texto, const Letra& letra) const
{
    auto lugar = m_metricas.find(letra);
    if (lugar == m_metricas.end())
        lugar = m_metricas.emplace(letra, QFontMetricsF(fuente_qt(letra))).first;
    return static_cast<Medida>(std::ceil(lugar->second.horizontalAdvance(a_qt(texto))));
}

LienzoQt::LienzoQt(QPainter& pintor, FuentesUsadas& fuentes)
    : m_pintor(pintor)
    , m_fuentes(fuentes)
{
}

void LienzoQt::texto(Medida x, Medida y, std::string_view texto, const Letra& letra, Color color)
{
    if (m_letra != letra) {
        m_letra = letra;
        auto lugar = m_fuentes.find(letra);
        if (lugar == m_fuentes.end())
            lugar = m_fuentes.emplace(letra, fuente_qt(letra)).first;
        m_pintor.setFont(lugar->second);
    }
    m_pintor.setPen(QColor::fromRgb(color));
    m_pintor.drawText(QPointF(x, y), a_qt(texto));
}

void LienzoQt::relleno(const Recuadro& recuadro, Color color)
{
    m_pintor.fillRect(QRectF(recuadro.x, recuadro.y, recuadro.ancho, recuadro.alto), QColor::fromRgb(color));
}

void pinta_pagina(const Report& report, std::size_t pagina, QPainter& pintor, double puntos_por_pulgada,
    FuentesUsadas& fuentes)
{
    pintor.save();
    pintor.scale(puntos_por_pulgada / medidas_por_pulgada, puntos_por_pulgada / medidas_por_pulgada);
    LienzoQt lienzo(pintor, fuentes);
    report.pinta(pagina, lienzo);
    pintor.restore();
}

} // namespace atipicos
