#include "host/comprobacion/SinCargo.hpp"

#include "host/comprobacion/Regularizados.hpp"
#include "platform/adodb/campos.hpp"

#include <algorithm>
#include <memory>

namespace atipicos::app {

Almacenes::Almacenes(adodb::Connection& orvalin)
{
    for (const auto rs = adodb::consulta(
             orvalin, "SELECT Cod_Empresa, Codigo, EmpContable, CtaIngresosAtipicos FROM Almacenes");
         !rs->Eof(); rs->MoveNext())
        m_almacenes[{ adodb::entero(*rs, "Cod_Empresa"), adodb::entero(*rs, "Codigo") }]
            = { adodb::entero(*rs, "EmpContable"), adodb::texto(*rs, "CtaIngresosAtipicos") };
    for (const auto rs = adodb::consulta(orvalin,
             "SELECT Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Numero"
             " FROM Contador_Proveedores_Cargos_Atipicos");
         !rs->Eof(); rs->MoveNext())
        m_contadores[{ adodb::entero(*rs, "Cod_Empresa"), adodb::entero(*rs, "Cod_Ejercicio"),
            adodb::entero(*rs, "Cod_Almacen") }]
            = CLng(rs->Fields("Numero").Value());
}

bool Almacenes::ingresa(std::int16_t empresa, std::int16_t almacen, const AsientoContabilizado& asiento) const
{
    const auto lugar = m_almacenes.find({ empresa, almacen });
    if (lugar == m_almacenes.end() || asiento.apuntes.empty())
        return false;
    return std::any_of(asiento.apuntes.begin(), asiento.apuntes.end(),
        [&](const auto& uno) { return uno.cuenta == lugar->second.ingresos; });
}

std::vector<ClaveSerie> Almacenes::series_de(const AsientoContabilizado& asiento) const
{
    std::vector<ClaveSerie> con_su_cuenta;
    std::vector<ClaveSerie> todas;
    for (const auto& [clave, almacen] : m_almacenes) {
        if (almacen.contable != asiento.clave.empresa)
            continue;
        todas.emplace_back(clave.first, asiento.clave.ejercicio, clave.second);
        if (ingresa(clave.first, clave.second, asiento))
            con_su_cuenta.push_back(todas.back());
    }
    return con_su_cuenta.empty() ? todas : con_su_cuenta;
}

std::int64_t Almacenes::contador(const ClaveSerie& serie) const
{
    const auto lugar = m_contadores.find(serie);
    return lugar == m_contadores.end() ? 0 : lugar->second;
}

void SinCargo::suma(const AsientoContabilizado& asiento)
{
    for (const auto& uno : asiento.apuntes) {
        auto& saldo = m_saldos[{ asiento.clave.empresa, uno.cuenta }];
        saldo += uno.debe;
        saldo -= uno.haber;
    }
}

void SinCargo::agrega(const AsientoContabilizado& asiento)
{
    suma(asiento);
    m_pendientes.push_back({ sin_clasificar(asiento), asiento.apuntes.front().cuenta,
        huella_de_cuentas(asiento), m_almacenes.series_de(asiento) });
}

void SinCargo::agrega_ajeno(const AsientoContabilizado& asiento)
{
    m_ajenos[{ asiento.clave.empresa, huella_de_cuentas(asiento) }] = asiento.clave;
}

void SinCargo::agrega_regularizado(const AsientoContabilizado& asiento) { suma(asiento); }

/// The charge that bears the code now: in the one series that it can be of, or of the same supplier.
const CargoLeido* SinCargo::cargo_de_ahora(const Pendiente& pendiente) const
{
    const auto& asiento = pendiente.asiento;
    for (const auto& [empresa, ejercicio, almacen] : pendiente.series) {
        const auto* cargo = m_cargos.busca({ empresa, ejercicio, almacen, asiento.documento });
        if (cargo != nullptr
            && (pendiente.series.size() == 1
                || m_cuentas.es_suya(empresa, asiento.asiento.empresa, cargo->proveedor, pendiente.deudor)))
            return cargo;
    }
    return nullptr;
}

void SinCargo::clasifica(const Pendiente& pendiente, AsientoSinCargo& asiento) const
{
    const auto ajeno = m_ajenos.find({ asiento.asiento.empresa, 0 - pendiente.huella });
    if (ajeno != m_ajenos.end() && pendiente.huella != 0) {
        asiento.procedencia = Procedencia::saldado;
        asiento.explicacion = "parece saldado a mano con el " + texto(ajeno->second);
        return;
    }
    if (const auto* cargo = cargo_de_ahora(pendiente)) {
        asiento.procedencia = cargo->con_asiento ? Procedencia::cambiado : Procedencia::dudoso;
        asiento.explicacion = cargo->con_asiento
            ? "de un cargo cambiado, que ahora tiene el asiento " + std::to_string(cargo->asiento.numero)
            : "quizá del " + texto(m_cargos.clave(*cargo)) + ", que no tiene asiento";
        return;
    }
    const auto numero = numero_de(asiento.documento);
    const bool dado = std::any_of(pendiente.series.begin(), pendiente.series.end(),
        [&](const auto& serie) { return m_almacenes.contador(serie) >= numero; });
    asiento.procedencia = dado ? Procedencia::eliminado : Procedencia::perdido;
    asiento.explicacion = dado ? "de un cargo eliminado, o que no llegó a guardarse"
                               : "de un cargo perdido: el contador de su serie no ha llegado a su número";
}

std::vector<AsientoSinCargo> SinCargo::clasificados() const
{
    std::vector<AsientoSinCargo> todos;
    todos.reserve(m_pendientes.size());
    for (const auto& pendiente : m_pendientes)
        clasifica(pendiente, todos.emplace_back(pendiente.asiento));
    return todos;
}

std::vector<SaldoQueSobra> SinCargo::saldos() const
{
    std::vector<SaldoQueSobra> todos;
    for (const auto& [cuenta, importe] : m_saldos)
        if (importe != Currency())
            todos.push_back({ cuenta.first, cuenta.second, importe });
    return todos;
}

} // namespace atipicos::app
