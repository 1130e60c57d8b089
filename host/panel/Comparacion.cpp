#include "host/panel/Comparacion.hpp"

#include "host/panel/LecturaDeCargos.hpp"
#include "platform/adodb/campos.hpp"
#include "runtime/Formato.hpp"

#include <cmath>
#include <utility>

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

    /// A sum comes as the database adds: exactly, or in binary.
    Currency suma(adodb::Recordset& rs, const char* campo)
    {
        const auto valor = rs.Fields(campo).Value();
        return valor.es_nulo() ? Currency() : Redondear(CCur(valor), decimales);
    }

    bool esta(Date dia, const Periodo& periodo) { return periodo.desde <= dia && dia <= periodo.hasta; }

    void agrega(Totales& totales, const Totales& mas)
    {
        totales.cuantos += mas.cuantos;
        totales.base += mas.base;
        totales.impuesto += mas.impuesto;
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

std::optional<Comparacion> compara(const Ambito& ambito, Date hoy, const Sigue& sigue)
{
    if (!sigue())
        return std::nullopt;
    Comparacion comparacion{ Periodos::de(hoy), {}, {}, {}, {} };
    const auto& periodos = comparacion.periodos;
    for (const auto rs = adodb::consulta(*ambito.bases.orvalin,
             "SELECT pc.Fecha, COUNT(*) AS Cuantos, SUM(pc.Importe) AS Base, SUM(pc.Impuesto_Importe) AS"
             " Impuesto FROM Proveedores_Cargos_Atipicos pc WHERE "
                 + de_la_empresa("pc.Cod_Empresa", ambito.empresa, Camino::por_tabla)
                 + entre_dias("pc.Fecha", periodos.anio_anterior.desde, periodos.anio.hasta)
                 + " GROUP BY pc.Fecha");
         !rs->Eof(); rs->MoveNext()) {
        const auto dia = CDate(rs->Fields("Fecha").Value()).solo_dia();
        const Totales del_dia{ CLng(rs->Fields("Cuantos").Value()), suma(*rs, "Base"),
            suma(*rs, "Impuesto") };
        for (const auto& [periodo, destino] : { std::pair{ &periodos.mes, &comparacion.mes },
                 { &periodos.mes_anterior, &comparacion.mes_anterior }, { &periodos.anio, &comparacion.anio },
                 { &periodos.anio_anterior, &comparacion.anio_anterior } })
            if (esta(dia, *periodo))
                agrega(*destino, del_dia);
    }
    return comparacion;
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
