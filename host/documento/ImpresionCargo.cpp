#include "host/documento/ImpresionCargo.hpp"

#include "host/documento/DocumentoCargo.hpp"

#include <utility>

namespace atipicos::orvalin {

namespace {

    void exige_conocido(std::int16_t dispositivo, Donde donde)
    {
        if (dispositivo < qvoremp::dispositivo::ninguno || dispositivo > qvoremp::dispositivo::correo)
            throw Error(1000, "QVOREMP:ImpresionCargo",
                "No se conoce el dispositivo de salida " + std::to_string(dispositivo) + ".", donde);
    }

}

void saca(std::shared_ptr<const Report> documento, std::int16_t dispositivo, const std::string& impresora,
    SalidaReport& salida, Donde donde)
{
    using namespace qvoremp::dispositivo;
    exige_conocido(dispositivo, donde);
    if (dispositivo == qvoremp::dispositivo::impresora)
        salida.imprime(*documento, impresora, donde);
    else if (dispositivo == pantalla)
        salida.muestra(std::move(documento), donde);
    else if (dispositivo == fichero_pdf)
        salida.guarda(*documento, donde);
    else if (dispositivo == correo)
        salida.envia(*documento, donde);
}

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
    exige_conocido(Dispositivo, donde);
    if (Dispositivo == qvoremp::dispositivo::ninguno)
        return;
    const auto cargo = CargoImpreso::lee(*m_conexion, m_empresa, Ejercicio, almacen->Codigo, Codigo, donde);
    saca(documento_cargo(cargo, *almacen, *proveedor, *m_plantilla, m_salida->medidor(), donde), Dispositivo,
        Impresora, *m_salida, donde);
}

} // namespace atipicos::orvalin
