#include "posting/Calendario.hpp"

namespace atipicos {

Date FechaValida(int intDia, int intMes, int intAnio, Donde donde)
{
    auto fecha = Date::de_dia(intAnio, intMes, intDia);
    for (int dia = intDia; !fecha && dia >= 1;) {
        --dia;
        fecha = Date::de_dia(intAnio, intMes, dia);
    }
    if (!fecha)
        throw Error::de_ejecucion(numero_error::tipos_no_coinciden, donde);
    return *fecha;
}

Date AjustarDiaPago(Date fecha, int intDiaPago1, int intDiaPago2, Donde donde)
{
    if (intDiaPago1 + intDiaPago2 <= 0)
        return fecha;
    const int dia = fecha.dia();
    const int mes = fecha.mes();
    const int anio = fecha.anio();
    if (intDiaPago2 == 0)
        return FechaValida(intDiaPago1, mes, anio, donde);

    if (dia < intDiaPago1 && dia > intDiaPago2) // pay days in descending order, and the date between them
        return fecha;
    if (dia < intDiaPago1)
        return FechaValida(intDiaPago1, mes, anio, donde);
    if (dia <= intDiaPago2)
        return FechaValida(intDiaPago2, mes, anio, donde);
    if (mes == 12)
        return FechaValida(intDiaPago1, 1, anio + 1, donde);
    return FechaValida(intDiaPago1, mes + 1, anio, donde);
}

} // namespace atipicos
