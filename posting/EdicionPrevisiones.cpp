#include "posting/EdicionPrevisiones.hpp"

#include "runtime/Celdas.hpp"
#include "runtime/Formato.hpp"

#include <utility>

namespace atipicos {

EdicionPrevisiones::EdicionPrevisiones(const Contabilizacion& datos)
    : m_datos(datos)
{
}

void EdicionPrevisiones::Proponer()
{
    Propuesta propuesta = GenerarPrev(m_datos);
    m_filas = std::move(propuesta.previsiones);
    m_suma = propuesta.suma;
}

void EdicionPrevisiones::Agregar(PrevisionPropuesta prevision)
{
    const Currency suma = m_suma + prevision.prevision.Importe;
    if (prevision.prevision.TipoDoc == 0)
        prevision.NombTipoDoc = "SIN ESPECIFICAR";
    m_filas.push_back(std::move(prevision));
    m_suma = suma;
}

void EdicionPrevisiones::Eliminar(std::int32_t fila)
{
    if (fila < 1 || static_cast<std::size_t>(fila) > m_filas.size())
        throw Error::de_ejecucion(numero_error::argumento_no_valido);
    const auto lugar = m_filas.begin() + (fila - 1);
    m_suma -= lugar->prevision.Importe;
    m_filas.erase(lugar);
}

std::string EdicionPrevisiones::AvisoDeVencimientos() const
{
    std::string cuales;
    int cuantas = 0;
    std::int32_t fila = 0;
    for (const auto& propuesta : m_filas) {
        ++fila;
        if (propuesta.prevision.Vencimiento >= m_datos.Fecha)
            continue;
        cuales += (cuantas++ == 0 ? "" : ", ") + std::to_string(fila);
    }
    if (cuantas == 0)
        return {};
    return (cuantas == 1 ? "La previsión " + cuales + " vence" : "Las previsiones " + cuales + " vencen")
        + " antes de la fecha del cargo, " + m_datos.Fecha.texto() + ".";
}

std::string EdicionPrevisiones::texto(const PrevisionPropuesta& fila)
{
    std::string texto;
    anexa_pantalla(texto, fila.prevision.Importe, 2);
    texto += '\t';
    anexa_celda(texto, fila.NombTipoDoc);
    texto += '\t';
    fila.prevision.Vencimiento.anexa_texto(texto);
    texto += '\t';
    anexa_celda(texto, fila.prevision.TipoDoc);
    texto += '\t';
    anexa_celda(texto, fila.prevision.Banco);
    texto += '\t';
    anexa_celda(texto, fila.NombreBanco);
    return texto;
}

} // namespace atipicos
