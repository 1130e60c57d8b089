#include "host/ventanas/ListasPendientes.hpp"

#include "controls/Texto.hpp"
#include "runtime/Formato.hpp"

namespace atipicos::app {

namespace {

    QString importe(Currency valor) { return a_qt(texto_pantalla(valor, 2)); }

    QString con_puntos(std::int64_t cuantos)
    {
        return a_qt(texto_pantalla(Currency::de_entero(static_cast<std::int32_t>(cuantos)), 0));
    }

    QString cuantos_son(std::int64_t cuantos, const char* uno, const char* varios)
    {
        return cuantos == 1 ? a_qt(uno) : con_puntos(cuantos) + u' ' + a_qt(varios);
    }

    /// To be given in any terminal, from whatever folder.
    QString orden(const char* cual, const Destinatario& de, const QString& mas = {})
    {
        return QStringLiteral("atipicos %1 ").arg(QLatin1String(cual)) + mas
            + a_qt(de.lugar.absoluto().opcion()) + QStringLiteral(" --empresa %1").arg(de.empresa);
    }

}

QString resumen_de(const SinAsiento& sin_asiento)
{
    if (sin_asiento.cargos.empty())
        return QStringLiteral("Todos los cargos que lo necesitan tienen asiento");
    if (sin_asiento.hay_mas)
        return QStringLiteral("Más de %1 cargos sin asiento").arg(SinAsiento::maximo);
    return cuantos_son(std::ssize(sin_asiento.cargos), "Un cargo sin asiento", "cargos sin asiento");
}

QString resumen_de(const AsientosSueltos& sueltos)
{
    if (sueltos.asientos.empty())
        return sueltos.hay_mas ? QStringLiteral("Hay muchos asientos que no son de ningún cargo")
                               : QStringLiteral("Ningún asiento de un cargo borrado está sin anular");
    const auto cuantos = cuantos_son(
        std::ssize(sueltos.asientos), "Un asiento sin cargo, por anular", "asientos sin cargo, por anular");
    return sueltos.hay_mas ? QStringLiteral("Al menos ") + cuantos : cuantos;
}

QString resumen_de(const Proximas& proximas)
{
    if (proximas.cuantas == 0)
        return QStringLiteral("Ninguna previsión vence en %1 días").arg(Proximas::dias);
    return cuantos_son(proximas.cuantas, "Una previsión vence", "previsiones vencen")
        + QStringLiteral(" en %1 días, por %2").arg(Proximas::dias).arg(importe(proximas.importe));
}

ListaPendiente lista_de(const SinAsiento& sin_asiento, const Destinatario& de)
{
    ListaPendiente lista{ QStringLiteral("Cargos sin asiento"),
        QStringLiteral("Estos cargos están guardados y no se han contabilizado. Para hacerlo, ábralo en el "
                       "visor y pulse «Modificar» y «Aceptar»; o dé la orden en un terminal, que dice qué lo "
                       "impide si no se puede.") };
    lista.columnas = { { QStringLiteral("Código"), 12 }, { QStringLiteral("Almacén"), 10, true },
        { QStringLiteral("Fecha"), 13 }, { QStringLiteral("Proveedor"), 44 },
        { QStringLiteral("Total"), 14, true } };
    for (const auto& cargo : sin_asiento.cargos) {
        lista.filas.push_back({ a_qt(cargo.codigo), QString::number(cargo.almacen), a_qt(cargo.fecha.texto()),
            a_qt(cargo.nombre_proveedor), importe(cargo.total()) });
        lista.ordenes << orden("contabilizar", de,
            QStringLiteral("%1 --ejercicio %2 --almacen %3 ")
                .arg(a_qt(cargo.codigo))
                .arg(cargo.ejercicio)
                .arg(cargo.almacen));
    }
    lista.se_abren = true;
    return lista;
}

ListaPendiente lista_de(const AsientosSueltos& sueltos, const Destinatario& de)
{
    ListaPendiente lista{ QStringLiteral("Asientos sin cargo"),
        QStringLiteral(
            "Se hicieron para cargos que después se han eliminado o cambiado, y siguen en "
            "Contabilidad. «Anular» dice de cada uno qué es y pregunta antes de anular los que sobran; la "
            "orden hace lo mismo en un terminal.") };
    lista.columnas = { { QStringLiteral("Asiento"), 14 }, { QStringLiteral("Fecha"), 14 },
        { QStringLiteral("Documento"), 14 }, { QStringLiteral("Cuenta"), 14 },
        { QStringLiteral("Total"), 14, true } };
    for (const auto& uno : sueltos.asientos)
        lista.filas.push_back({ a_qt(nombre_corto(uno.asiento)), a_qt(uno.fecha.texto()), a_qt(uno.documento),
            a_qt(uno.cuenta), importe(uno.importe) });
    lista.ordenes << orden("regularizar", de);
    lista.se_anulan = true;
    return lista;
}

ListaPendiente lista_de(const Proximas& proximas)
{
    QString explicacion
        = QStringLiteral("Vencen del %1 al %2, y suman %3. Se atienden en Contabilidad.")
              .arg(a_qt(proximas.desde.texto()), a_qt(proximas.hasta.texto()), importe(proximas.importe));
    if (proximas.cuantas > std::ssize(proximas.primeras))
        explicacion += QStringLiteral(" Son %1; aquí están las %2 primeras.")
                           .arg(con_puntos(proximas.cuantas), con_puntos(std::ssize(proximas.primeras)));
    ListaPendiente lista{ QStringLiteral("Previsiones que vencen"), explicacion };
    lista.columnas = { { QStringLiteral("Vencimiento"), 14 }, { QStringLiteral("Importe"), 14, true },
        { QStringLiteral("Cuenta"), 14 }, { QStringLiteral("Nombre"), 44 },
        { QStringLiteral("Asiento"), 14 } };
    for (const auto& una : proximas.primeras)
        lista.filas.push_back({ a_qt(una.vencimiento.texto()), importe(una.importe), a_qt(una.cuenta),
            a_qt(una.nombre_cuenta), a_qt(nombre_corto(una.asiento)) });
    return lista;
}

} // namespace atipicos::app
