#include "browser/TextosVisorQt.hpp"

#include "controls/Texto.hpp"
#include "runtime/Formato.hpp"

#include <algorithm>

namespace atipicos::textos_visor {

namespace {

    std::string con_puntos(std::size_t cuantos)
    {
        return texto_pantalla(Currency::de_entero(static_cast<std::int32_t>(cuantos)), 0);
    }

    QString nombre_de(const ClaveCargo& clave)
    {
        return QStringLiteral("%1 del almacén %2").arg(a_qt(clave.Codigo)).arg(clave.Almacen);
    }

}

QString sin_buscar()
{
    return QStringLiteral("Aquí salen los atípicos al pulsar Intro en la fecha final, F5 o Buscar.");
}

QString sin_atipicos() { return QStringLiteral("No hay atípicos con estas condiciones."); }

std::string leyendo(std::size_t cuantos) { return "Leyendo atípicos: " + con_puntos(cuantos); }

QString resumen(const TotalesLista& totales)
{
    const auto cuantos = totales.cargos();
    if (cuantos == 0)
        return sin_atipicos();
    std::string texto = con_puntos(cuantos) + (cuantos == 1 ? " atípico" : " atípicos");
    for (const auto& [columna, suma] : totales.sumas())
        texto += std::string("     ") + columna->titulo + ": " + (suma ? texto_pantalla(*suma, 2) : "…");
    return a_qt(texto);
}

QString por_que_falta_una_suma(const TotalesLista& totales)
{
    const auto& sumas = totales.sumas();
    return std::all_of(sumas.begin(), sumas.end(), [](const auto& una) { return una.second.has_value(); })
        ? QString()
        : QStringLiteral("La suma no cabe en un importe. Acote la búsqueda para verla.");
}

QString va_al_abierto(const ClaveCargo& clave)
{
    return QStringLiteral("     F6: ") + nombre_de(clave) + QStringLiteral(", el último abierto");
}

QString eliminado(const ClaveCargo& clave)
{
    return QStringLiteral("Eliminado ") + nombre_de(clave)
        + QStringLiteral(". La lista está sin leer de nuevo: F5 lo hace.");
}

} // namespace atipicos::textos_visor
