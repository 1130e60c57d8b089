#include "host/panel/Comparacion.hpp"

#include "host/panel/LecturaDeCargos.hpp"
#include "platform/adodb/campos.hpp"
#include "runtime/Formato.hpp"

#include <algorithm>
#include <cmath>

namespace atipicos::app {

namespace {

    constexpr int decimales = 2;
    constexpr int ultimo_mes = 12;

    /// That day of a month, or its last one.
    Date dia_de(int anio, int mes, int dia)
    {
        for (; dia > 1; --dia)
            if (const auto fecha = Date::de_dia(anio, mes, dia))
                return *fecha;
        return Date::de_dia(anio, mes, 1).value_or(Date());
    }

    Date fin_de_mes(Date dia) { return dia_de(dia.anio(), dia.mes(), 31); }

    /// A sum comes as the database adds: exactly, or in binary.
    Currency suma(adodb::Recordset& rs, const char* campo)
    {
        const auto valor = rs.Fields(campo).Value();
        return valor.es_nulo() ? Currency() : Redondear(CCur(valor), decimales);
    }

    Totales de_un_mes(const Ambito& ambito, const Periodo& mes)
    {
        const auto rs = adodb::consulta(*ambito.bases.orvalin,
            "SELECT COUNT(*) AS Cuantos, SUM(pc.Importe) AS Base, SUM(pc.Impuesto_Importe) AS Impuesto"
            " FROM Proveedores_Cargos_Atipicos pc WHERE pc.Cod_Empresa ="
                + std::to_string(ambito.empresa) + entre_dias("pc.Fecha", mes.desde, mes.hasta));
        return { CLng(rs->Fields("Cuantos").Value()), suma(*rs, "Base"), suma(*rs, "Impuesto") };
    }

}

Periodos Periodos::de(Date hoy)
{
    const auto dia = hoy.solo_dia();
    const bool enero = dia.mes() == 1;
    const int anio_de_antes = enero ? dia.anio() - 1 : dia.anio();
    const int mes_de_antes = enero ? ultimo_mes : dia.mes() - 1;
    return { { dia_de(dia.anio(), dia.mes(), 1), dia },
        { dia_de(anio_de_antes, mes_de_antes, 1), dia_de(anio_de_antes, mes_de_antes, dia.dia()) },
        { dia_de(dia.anio(), 1, 1), dia },
        { dia_de(dia.anio() - 1, 1, 1), dia_de(dia.anio() - 1, dia.mes(), dia.dia()) } };
}

std::optional<Totales> totales(const Ambito& ambito, const Periodo& periodo, const Sigue& sigue)
{
    Totales todos;
    for (auto desde = periodo.desde; desde <= periodo.hasta;) {
        if (!sigue())
            return std::nullopt;
        const auto hasta = std::min(fin_de_mes(desde), periodo.hasta);
        const auto mes = de_un_mes(ambito, { desde, hasta });
        todos.cuantos += mes.cuantos;
        todos.base += mes.base;
        todos.impuesto += mes.impuesto;
        desde = hasta.mas_dias(1);
    }
    return todos;
}

std::optional<Comparacion> compara(const Ambito& ambito, Date hoy, const Sigue& sigue)
{
    Comparacion comparacion{ Periodos::de(hoy), {}, {}, {}, {} };
    const auto& periodos = comparacion.periodos;
    const auto lee = [&](const Periodo& periodo, Totales& destino) {
        const auto leidos = totales(ambito, periodo, sigue);
        destino = leidos.value_or(Totales());
        return leidos.has_value();
    };
    if (lee(periodos.mes, comparacion.mes) && lee(periodos.mes_anterior, comparacion.mes_anterior)
        && lee(periodos.anio, comparacion.anio) && lee(periodos.anio_anterior, comparacion.anio_anterior))
        return comparacion;
    return std::nullopt;
}

std::optional<std::int64_t> cambio(Currency antes, Currency ahora)
{
    if (antes.crudo() == 0)
        return std::nullopt;
    constexpr double ciento = 100;
    return std::llround(static_cast<double>(ahora.crudo() - antes.crudo()) * ciento
        / std::abs(static_cast<double>(antes.crudo())));
}

} // namespace atipicos::app
