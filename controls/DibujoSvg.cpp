#include "controls/DibujoSvg.hpp"

#include <QPainter>
#include <QXmlStreamReader>

#include <optional>

namespace atipicos {

namespace {

    /// The numbers of `d`, one after the other, and the letters between them.
    class Ordenes {
    public:
        explicit Ordenes(const QString& d)
            : m_partes(d.simplified().split(u' ', Qt::SkipEmptyParts))
        {
        }

        [[nodiscard]] bool quedan() const { return m_lugar < m_partes.size(); }
        QChar letra() { return m_partes.at(m_lugar++).at(0); }
        double numero() { return quedan() ? m_partes.at(m_lugar++).toDouble() : 0; }
        QPointF punto()
        {
            const double x = numero();
            return { x, numero() };
        }

    private:
        QStringList m_partes;
        qsizetype m_lugar = 0;
    };

    QPainterPath forma_de(const QString& d)
    {
        QPainterPath forma;
        Ordenes ordenes(d);
        while (ordenes.quedan()) {
            const QPointF aqui = forma.currentPosition();
            switch (ordenes.letra().unicode()) {
            case u'M':
                forma.moveTo(ordenes.punto());
                break;
            case u'L':
                forma.lineTo(ordenes.punto());
                break;
            case u'H':
                forma.lineTo(ordenes.numero(), aqui.y());
                break;
            case u'V':
                forma.lineTo(aqui.x(), ordenes.numero());
                break;
            case u'C': {
                const QPointF primero = ordenes.punto();
                const QPointF segundo = ordenes.punto();
                forma.cubicTo(primero, segundo, ordenes.punto());
                break;
            }
            case u'Z':
                forma.closeSubpath();
                break;
            default:
                break;
            }
        }
        return forma;
    }

    QPainterPath circulo(const QXmlStreamAttributes& datos)
    {
        const auto valor = [&](const char* nombre) { return datos.value(QLatin1String(nombre)).toDouble(); };
        QPainterPath forma;
        forma.addEllipse(QPointF(valor("cx"), valor("cy")), valor("r"), valor("r"));
        return forma;
    }

    std::optional<QColor> color_de(const QString& palabra, const QColor& corriente)
    {
        if (palabra == QLatin1String("none"))
            return std::nullopt;
        return palabra == QLatin1String("currentColor") ? corriente : QColor(palabra);
    }

}

DibujoSvg DibujoSvg::lee(QIODevice& fichero)
{
    DibujoSvg dibujo;
    Tinta de_todos;
    QXmlStreamReader xml(&fichero);
    while (xml.readNextStartElement() || !xml.atEnd()) {
        if (!xml.isStartElement())
            continue;
        const auto datos = xml.attributes();
        Tinta tinta = de_todos;
        if (datos.hasAttribute(QLatin1String("fill")))
            tinta.relleno = datos.value(QLatin1String("fill")).toString();
        if (datos.hasAttribute(QLatin1String("stroke")))
            tinta.linea = datos.value(QLatin1String("stroke")).toString();
        if (datos.hasAttribute(QLatin1String("stroke-width")))
            tinta.grueso = datos.value(QLatin1String("stroke-width")).toDouble();
        if (xml.name() == QLatin1String("svg"))
            de_todos = tinta;
        else if (xml.name() == QLatin1String("path"))
            dibujo.m_trazos.push_back({ forma_de(datos.value(QLatin1String("d")).toString()), tinta });
        else if (xml.name() == QLatin1String("circle"))
            dibujo.m_trazos.push_back({ circulo(datos), tinta });
    }
    return dibujo;
}

void DibujoSvg::pinta(QPainter& pintor, const QRectF& donde, const QColor& corriente) const
{
    pintor.save();
    pintor.setRenderHint(QPainter::Antialiasing);
    pintor.translate(donde.topLeft());
    pintor.scale(donde.width() / lado, donde.height() / lado);
    for (const auto& [forma, tinta] : m_trazos) {
        const auto linea = color_de(tinta.linea, corriente);
        const auto relleno = color_de(tinta.relleno, corriente);
        pintor.setPen(
            linea ? QPen(*linea, tinta.grueso, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin) : QPen(Qt::NoPen));
        pintor.setBrush(relleno ? QBrush(*relleno) : QBrush(Qt::NoBrush));
        pintor.drawPath(forma);
    }
    pintor.restore();
}

} // namespace atipicos
