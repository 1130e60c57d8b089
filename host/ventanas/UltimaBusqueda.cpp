#include "host/ventanas/UltimaBusqueda.hpp"

#include "controls/Texto.hpp"

#include <QSettings>

#include <algorithm>
#include <limits>

namespace atipicos::app {

namespace {

    template <class T> T codigo(const QSettings& guardado, QLatin1String clave)
    {
        const int leido = guardado.value(clave).toInt();
        return static_cast<T>(leido <= std::numeric_limits<T>::max() ? std::max(leido, 0) : 0);
    }

}

UltimaBusqueda::UltimaBusqueda(std::int16_t empresa, std::int32_t usuario)
    : m_grupo(QStringLiteral("visor/%1/%2").arg(empresa).arg(usuario))
{
}

frmclsComprasAtipVisor::Busqueda UltimaBusqueda::lee(Date hoy) const
{
    QSettings guardado;
    guardado.beginGroup(m_grupo);
    const auto fecha = [&](const char* clave) {
        return Date::de_texto(de_qt(guardado.value(QLatin1String(clave)).toString()));
    };
    return { fecha("FechaI").value_or(Date::de_dia(hoy.anio(), 1, 1).value_or(hoy)),
        fecha("FechaF").value_or(hoy), codigo<std::int16_t>(guardado, QLatin1String("Almacen")),
        codigo<std::int32_t>(guardado, QLatin1String("Proveedor")) };
}

void UltimaBusqueda::guarda(const frmclsComprasAtipVisor::Busqueda& busqueda, Date hoy) const
{
    QSettings guardado;
    guardado.beginGroup(m_grupo);
    guardado.setValue(QLatin1String("FechaI"), a_qt(busqueda.Fecha_Inicial.texto()));
    if (busqueda.Fecha_Final == hoy)
        guardado.remove(QLatin1String("FechaF")); // tomorrow it is to reach until tomorrow
    else
        guardado.setValue(QLatin1String("FechaF"), a_qt(busqueda.Fecha_Final.texto()));
    guardado.setValue(QLatin1String("Almacen"), static_cast<int>(busqueda.Almacen));
    guardado.setValue(QLatin1String("Proveedor"), busqueda.Proveedor);
}

} // namespace atipicos::app
