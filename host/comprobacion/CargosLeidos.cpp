#include "host/comprobacion/CargosLeidos.hpp"

#include "charges/Impuesto.hpp"
#include "host/terminal/Interrupcion.hpp"
#include "platform/adodb/campos.hpp"

#include <algorithm>
#include <array>
#include <memory>

namespace atipicos::app {

namespace {

    auto orden(const CargoLeido& cargo)
    {
        return std::tuple(cargo.empresa, cargo.ejercicio, cargo.almacen, cargo.numero);
    }

    /// The fields of a key, fetched once for all rows.
    class CamposClave {
    public:
        explicit CamposClave(adodb::Recordset& rs)
            : m_campos{ &rs.Fields("Cod_Empresa"), &rs.Fields("Cod_Ejercicio"), &rs.Fields("Cod_Almacen") }
            , m_codigo(rs.Fields("Codigo"))
        {
        }
        void lee(ClaveContenida& clave) const
        {
            clave.empresa = CInt(m_campos[0]->Value());
            clave.ejercicio = CInt(m_campos[1]->Value());
            clave.almacen = CInt(m_campos[2]->Value());
            clave.codigo.clear();
            m_codigo.anexa_texto(clave.codigo);
        }

    private:
        std::array<const adodb::Field*, 3> m_campos;
        const adodb::Field& m_codigo;
    };

}

CargosLeidos::CargosLeidos(adodb::Connection& orvalin)
{
    const std::string tabla = "Proveedores_Cargos_Atipicos";
    m_cargos.reserve(static_cast<std::size_t>(
        CLng(adodb::flujo(orvalin, "SELECT COUNT(*) AS Cuantos FROM " + tabla)->Fields("Cuantos").Value())));
    const auto rs = adodb::flujo(orvalin,
        "SELECT Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Proveedor, Fecha, Hora, Importe, Impuesto,"
        " Impuesto_Importe, EmpContable, Asiento FROM "
            + tabla + " ORDER BY Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo");
    const CamposClave campos(*rs);
    const auto& proveedor = rs->Fields("Proveedor");
    const auto& fecha = rs->Fields("Fecha");
    const auto& hora = rs->Fields("Hora");
    const auto& importe = rs->Fields("Importe");
    const auto& porcentaje = rs->Fields("Impuesto");
    const auto& impuesto = rs->Fields("Impuesto_Importe");
    const auto& empresa = rs->Fields("EmpContable");
    const auto& asiento = rs->Fields("Asiento");
    ClaveContenida clave;
    for (; !rs->Eof(); rs->MoveNext()) {
        Interrupcion::comprueba();
        campos.lee(clave);
        auto& cargo = m_cargos.emplace_back();
        cargo.numero = numero_de(clave.codigo);
        if (cargo.numero == 0) {
            m_raros.push_back(clave.codigo);
            cargo.numero = -static_cast<std::int64_t>(m_raros.size());
        }
        cargo.empresa = clave.empresa;
        cargo.ejercicio = clave.ejercicio;
        cargo.almacen = clave.almacen;
        cargo.proveedor = CLng(proveedor.Value());
        cargo.fecha = CDate(fecha.Value());
        cargo.hora = CDate(hora.Value());
        cargo.importe = CCur(importe.Value());
        cargo.impuesto = CCur(impuesto.Value());
        cargo.asiento
            = { CInt(empresa.Value()), static_cast<std::int16_t>(cargo.fecha.anio()), CLng(asiento.Value()) };
        cargo.porcentaje = CCur(porcentaje.Value());
    }
    ordena();
}

/// The numbers of strange codes, which they have been given in the order in which they came, become those of
/// their order, so that a code is found.
void CargosLeidos::ordena()
{
    auto ordenados = m_raros;
    std::sort(ordenados.begin(), ordenados.end());
    ordenados.erase(std::unique(ordenados.begin(), ordenados.end()), ordenados.end());
    for (auto& cargo : m_cargos)
        if (cargo.numero < 0) {
            const auto& codigo = m_raros[static_cast<std::size_t>(-cargo.numero - 1)];
            cargo.numero
                = -1 - (std::lower_bound(ordenados.begin(), ordenados.end(), codigo) - ordenados.begin());
        }
    m_raros = std::move(ordenados);
    std::sort(m_cargos.begin(), m_cargos.end(),
        [](const auto& uno, const auto& otro) { return orden(uno) < orden(otro); });
    m_por_asiento.reserve(m_cargos.size());
    for (std::uint32_t i = 0; i < m_cargos.size(); ++i)
        if (m_cargos[i].asiento.numero > 0)
            m_por_asiento.push_back(i);
    std::sort(m_por_asiento.begin(), m_por_asiento.end(), [&](auto uno, auto otro) {
        return std::pair(m_cargos[uno].asiento, uno) < std::pair(m_cargos[otro].asiento, otro);
    });
}

std::string CargosLeidos::codigo(const CargoLeido& cargo) const
{
    return cargo.numero < 0 ? m_raros[static_cast<std::size_t>(-cargo.numero - 1)] : codigo_de(cargo.numero);
}

ClaveContenida CargosLeidos::clave(const CargoLeido& cargo) const
{
    return { cargo.empresa, cargo.ejercicio, cargo.almacen, codigo(cargo) };
}

std::int64_t CargosLeidos::numero_o_raro(const std::string& codigo) const
{
    if (const auto numero = numero_de(codigo); numero != 0)
        return numero;
    const auto lugar = std::lower_bound(m_raros.begin(), m_raros.end(), codigo);
    return lugar != m_raros.end() && *lugar == codigo ? -1 - (lugar - m_raros.begin()) : 0;
}

CargoLeido* CargosLeidos::busca(const ClaveContenida& clave)
{
    CargoLeido buscado;
    buscado.empresa = clave.empresa;
    buscado.ejercicio = clave.ejercicio;
    buscado.almacen = clave.almacen;
    buscado.numero = numero_o_raro(clave.codigo);
    const auto lugar = std::lower_bound(m_cargos.begin(), m_cargos.end(), buscado,
        [](const auto& uno, const auto& otro) { return orden(uno) < orden(otro); });
    return lugar != m_cargos.end() && orden(*lugar) == orden(buscado) ? &*lugar : nullptr;
}

std::span<const std::uint32_t> CargosLeidos::nombran(const ClaveAsiento& asiento) const
{
    const auto desde = std::lower_bound(m_por_asiento.begin(), m_por_asiento.end(), asiento,
        [&](auto uno, const auto& otro) { return m_cargos[uno].asiento < otro; });
    auto hasta = desde;
    while (hasta != m_por_asiento.end() && m_cargos[*hasta].asiento == asiento)
        ++hasta;
    return { desde, hasta };
}

void lee_lineas_de(CargosLeidos& cargos, adodb::Connection& orvalin,
    const std::function<void(CargoLeido&, const LineaLeida&)>& cada,
    const std::function<void(const ClaveContenida&)>& suelta)
{
    const auto rs = adodb::flujo(orvalin,
        "SELECT Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea, Unidades, Precio"
        " FROM Proveedores_Cargos_Atipicos_Lineas"
        " ORDER BY Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea");
    const CamposClave campos(*rs);
    const auto& numero = rs->Fields("Num_Linea");
    const auto& unidades = rs->Fields("Unidades");
    const auto& precio = rs->Fields("Precio");
    ClaveContenida anterior;
    ClaveContenida clave;
    CargoLeido* cargo = nullptr;
    for (; !rs->Eof(); rs->MoveNext()) {
        Interrupcion::comprueba();
        campos.lee(clave);
        if (clave != anterior) {
            cargo = cargos.busca(clave);
            anterior = clave;
        }
        if (cargo == nullptr)
            suelta(clave);
        else
            cada(*cargo,
                { CLng(numero.Value()), importe_linea(CCur(unidades.Value()), CCur(precio.Value())) });
    }
}

} // namespace atipicos::app
