#include "host/documento/ImpresionCargo.hpp"

#include "host/documento/DocumentoCargo.hpp"

#include <utility>

namespace atipicos::orvalin {

ImpresionCargo::ImpresionCargo(std::shared_ptr<adodb::Connection> conexion, const qvoremp::Empresa& empresa,
    std::shared_ptr<SalidaReport> salida, std::shared_ptr<const Plantilla> plantilla)
    : m_conexion(std::move(conexion))
    , m_empresa(empresa)
    , m_salida(std::move(salida))
    , m_plantilla(std::move(plantilla))
{
}

void ImpresionCargo::Imprimir(Donde donde)
{
    if (!m_conexion || !almacen || !proveedor)
        throw Error::de_ejecucion(numero_error::objeto_no_establecido, donde);
    if (Dispositivo < qvoremp::dispositivo::ninguno || Dispositivo > qvoremp::dispositivo::fichero_pdf)
        throw Error(1000, "QVOREMP:ImpresionCargo",
            "No se conoce el dispositivo de salida " + std::to_string(Dispositivo) + ".", donde);
    if (Dispositivo == qvoremp::dispositivo::ninguno)
        return;
    const auto cargo = CargoImpreso::lee(*m_conexion, m_empresa, Ejercicio, almacen->Codigo, Codigo, donde);
    auto documento = documento_cargo(cargo, *almacen, *proveedor, *m_plantilla, m_salida->medidor(), donde);
    if (Dispositivo == qvoremp::dispositivo::impresora)
        m_salida->imprime(*documento, Impresora, donde);
    else if (Dispositivo == qvoremp::dispositivo::pantalla)
        m_salida->muestra(std::move(documento), donde);
    else
        m_salida->guarda(*documento, donde);
}

} // namespace atipicos::orvalin
