#include "browser/UltimoFiltroQt.hpp"

#include "context/claves.hpp"
#include "context/modComun.hpp"
#include "controls/Texto.hpp"

#include <QSettings>

namespace atipicos {

namespace {

    QString grupo()
    {
        const auto& empresa = modComun::EmpresaOrvalin();
        return QStringLiteral("visor/%1/%2")
            .arg(empresa.Codigo())
            .arg(a_qt(CStr(empresa.Parametro(claves::UsuarioActual))));
    }

}

FiltroAtipicos filtro_de_este_anio()
{
    const Date hoy = modComun::reloj().hoy();
    FiltroAtipicos filtro;
    filtro.FechaI = Date::de_dia(hoy.anio(), 1, 1).value_or(hoy).texto();
    filtro.FechaF = hoy.texto();
    return filtro;
}

FiltroAtipicos ultimo_filtro()
{
    QSettings guardado;
    guardado.beginGroup(grupo());
    FiltroAtipicos filtro = filtro_de_este_anio();
    const auto lee_fecha = [&](const char* clave, std::string& fecha) {
        const std::string leida = de_qt(guardado.value(QLatin1String(clave)).toString());
        if (Date::de_texto(leida))
            fecha = leida;
    };
    lee_fecha("FechaI", filtro.FechaI);
    lee_fecha("FechaF", filtro.FechaF);
    filtro.Almacen = static_cast<std::int16_t>(guardado.value(QLatin1String("Almacen")).toInt());
    filtro.Proveedor = guardado.value(QLatin1String("Proveedor")).toInt();
    return filtro;
}

void guarda_filtro(const FiltroAtipicos& filtro)
{
    QSettings guardado;
    guardado.beginGroup(grupo());
    guardado.setValue(QLatin1String("FechaI"), a_qt(filtro.FechaI));
    if (filtro.FechaF == modComun::reloj().hoy().texto())
        guardado.remove(QLatin1String("FechaF")); // tomorrow it is to reach until tomorrow
    else
        guardado.setValue(QLatin1String("FechaF"), a_qt(filtro.FechaF));
    guardado.setValue(QLatin1String("Almacen"), static_cast<int>(filtro.Almacen));
    guardado.setValue(QLatin1String("Proveedor"), filtro.Proveedor);
}

} // namespace atipicos
