#include "host/comprobacion/EjerciciosAbiertos.hpp"

#include "host/bexmor/Instrucciones.hpp"
#include "platform/adodb/campos.hpp"

namespace atipicos::app {

EjerciciosAbiertos::EjerciciosAbiertos(adodb::Connection& bexmor)
{
    for (const auto rs = adodb::consulta(bexmor, "SELECT Codigo FROM Empresas"); !rs->Eof(); rs->MoveNext())
        m_empresas.insert(adodb::entero(*rs, "Codigo"));
    for (const auto rs
         = adodb::consulta(bexmor, "SELECT Cod_Empresa, Ejercicio, Inicio, Fin FROM Ejercicios");
         !rs->Eof(); rs->MoveNext())
        m_ejercicios[{ adodb::entero(*rs, "Cod_Empresa"), adodb::entero(*rs, "Ejercicio") }]
            = { CDate(rs->Fields("Inicio").Value()), CDate(rs->Fields("Fin").Value()) };
}

bool EjerciciosAbiertos::admite(std::int16_t empresa, Currency importe) const
{
    try {
        bexmor::comprueba_importe(importe, {}, Donde::aqui());
        return m_empresas.contains(empresa);
    } catch (const Error&) {
        return false;
    }
}

std::string EjerciciosAbiertos::impedimento(std::int16_t empresa, Date dia) const
{
    const auto de_la_empresa = " la empresa contable " + std::to_string(empresa);
    if (!m_empresas.contains(empresa))
        return "No existe" + de_la_empresa + ": dela de alta en Contabilidad.";
    const auto ejercicio = std::to_string(dia.anio());
    const auto lugar = m_ejercicios.find({ empresa, dia.anio() });
    if (lugar == m_ejercicios.end())
        return "El ejercicio " + ejercicio + " no está abierto en" + de_la_empresa
            + ": ábralo en Contabilidad.";
    const auto& [inicio, fin] = lugar->second;
    if (dia.solo_dia() < inicio || dia.solo_dia() > fin)
        return "El " + dia.texto() + " está fuera del ejercicio " + ejercicio + " de" + de_la_empresa
            + ", que va del " + inicio.texto() + " al " + fin.texto() + ".";
    return {};
}

} // namespace atipicos::app
