#include "host/reclamaciones/Contabilizable.hpp"

#include "charges/Impuesto.hpp"
#include "context/claves.hpp"
#include "context/modComun.hpp"
#include "editor/GuardarAtipico.hpp"
#include "host/bexmor/Instrucciones.hpp"
#include "host/reclamaciones/PrevisionesPropuestas.hpp"
#include "posting/GenerarPrev.hpp"

#include <utility>

namespace atipicos::app {

namespace {

    constexpr std::size_t condiciones_que_se_recuerdan = 10'000;

    std::string texto_de(std::string_view clave)
    {
        const Variant valor = modComun::EmpresaOrvalin()->Parametro(clave);
        return valor.es_nulo() ? std::string() : CStr(valor);
    }

    /// What is known under the code, asked for once.
    template <class Codigo, class Ficha, class Pregunta>
    const Ficha& preguntada(std::map<Codigo, Ficha>& conocidas, Codigo codigo, Pregunta pregunta)
    {
        const auto lugar = conocidas.find(codigo);
        return lugar != conocidas.end() ? lugar->second
                                        : conocidas.emplace(codigo, pregunta(codigo)).first->second;
    }

}

struct Contabilizable::Examen {
    const Reclamacion& reclamacion;
    const CargoTecleado& tecleado;
    const orvalin::Almacen& almacen;
    Ejercicio& ejercicio;
    qvbxemp::TipoImpuesto impuesto{};
    std::vector<Reparo> reparos{};

    void agrega(int fila, const char* columna, const std::string& motivo)
    {
        reparos.push_back({ fila, columna, motivo });
    }
    void agrega(const char* columna, const std::string& motivo) { agrega(reclamacion.fila, columna, motivo); }
};

Contabilizable::Contabilizable(const orvalin::Catalogos& catalogos, const qvbxemp::Biblioteca& biblioteca,
    adodb::Connection& bexmor, AvisosRecogidos& avisos)
    : m_catalogos(catalogos)
    , m_biblioteca(biblioteca)
    , m_bexmor(bexmor)
    , m_avisos(avisos)
{
}

std::vector<Reparo> Contabilizable::reparos(const Reclamacion& reclamacion, const CargoTecleado& tecleado)
{
    if (modComun::EmpresaOrvalin()->EnlaceContable() != 1)
        return {};
    const auto& almacen = preguntada(m_almacenes, tecleado.Almacen,
        [&](auto codigo) { return m_catalogos.almacen(codigo).value_or(orvalin::Almacen{}); });
    Examen examen{ reclamacion, tecleado, almacen,
        ejercicio({ almacen.EmpContable, CInt(tecleado.Fecha.anio()) }) };
    try {
        mira_ejercicio(examen);
        if (!examen.reparos.empty())
            return examen.reparos;
        if (const auto tipo = tipo_impuesto_atipicos(); tipo > 0) {
            examen.impuesto = examen.ejercicio.servicio->LeerTipoImpuesto(tipo);
            mira_cuenta(examen, reclamacion.fila, "", examen.impuesto.Imp_CtaRep);
        }
        mira_proveedor(examen);
        mira_ingresos(examen);
        mira_importes(examen);
        mira_condiciones(examen);
    } catch (const adodb::ErrorBaseDatos&) {
        throw;
    } catch (const Error& error) { // what the configuration says cannot be worked with
        examen.agrega("", error.descripcion());
    }
    return examen.reparos;
}

Contabilizable::Ejercicio& Contabilizable::ejercicio(Plan plan)
{
    const auto [lugar, nuevo] = m_ejercicios.try_emplace(plan);
    auto& uno = lugar->second;
    if (!nuevo)
        return uno;
    auto empresa = m_biblioteca.NuevaEmpresa();
    empresa->Codigo = plan.first;
    if (plan.first == 0 || !empresa->Cargar())
        return uno;
    empresa->Ejercicio = plan.second;
    const auto rs = m_bexmor.CreateRecordset();
    rs->Open("SELECT Inicio, Fin FROM Ejercicios WHERE Cod_Empresa =" + std::to_string(plan.first)
            + " AND Ejercicio =" + std::to_string(plan.second),
        adodb::CursorType::Static, adodb::LockType::ReadOnly);
    if (!rs->Eof())
        uno.dias.emplace(CDate(rs->Fields("Inicio").Value()), CDate(rs->Fields("Fin").Value()));
    uno.servicio = m_biblioteca.NuevoServicioCuentas(*empresa);
    uno.empresa = std::move(empresa);
    return uno;
}

void Contabilizable::mira_ejercicio(Examen& examen)
{
    const auto contable = std::to_string(examen.almacen.EmpContable);
    const auto almacen = std::to_string(examen.tecleado.Almacen);
    const auto& fecha = examen.tecleado.Fecha;
    const auto anio = std::to_string(fecha.anio());
    const auto& ejercicio = examen.ejercicio;
    if (examen.almacen.EmpContable == 0)
        return examen.agrega("almacen", "el almacén " + almacen + " no tiene empresa contable.");
    if (!ejercicio.empresa)
        return examen.agrega("almacen",
            "no existe la empresa contable " + contable + ", que es la del almacén " + almacen + ".");
    if (!ejercicio.dias)
        return examen.agrega("fecha",
            "el ejercicio " + anio + " no está abierto en la empresa contable " + contable
                + ". Ábralo en contabilidad.");
    if (fecha.solo_dia() < ejercicio.dias->first || fecha.solo_dia() > ejercicio.dias->second)
        examen.agrega("fecha",
            "la fecha " + fecha.texto() + " está fuera del ejercicio " + anio + " de la empresa contable "
                + contable + ".");
}

void Contabilizable::mira_cuenta(Examen& examen, int fila, const char* columna, const std::string& cuenta)
{
    auto& ejercicio = examen.ejercicio;
    const bool esta = preguntada(ejercicio.cuentas, cuenta,
        [&](const std::string& una) { return ejercicio.servicio->ExisteCuenta(una); });
    if (!esta)
        examen.agrega(fila, columna,
            "la cuenta " + (cuenta.empty() ? "vacía" : cuenta) + " no existe en el plan de "
                + bexmor::nombre(*ejercicio.empresa) + ". Dela de alta en contabilidad.");
}

/// Accounts of his own are used as they stand; the others are formed, all of them, from their roots.
void Contabilizable::mira_proveedor(Examen& examen)
{
    const auto codigo = examen.tecleado.Proveedor;
    auto cuentas = preguntada(m_cuentas, codigo,
        [&](auto uno) { return m_catalogos.cuentas_proveedor(uno).value_or(orvalin::CuentasProveedor{}); });
    const auto forma = [&](std::string& cuenta, const std::string& raiz) {
        if (cuenta.empty())
            cuenta = examen.ejercicio.servicio->FormarCuenta(
                raiz, codigo, examen.ejercicio.empresa->LongitudCuenta());
    };
    try {
        forma(cuentas.Proveedor, std::to_string(modComun::EmpresaOrvalin()->RaizProveedores()));
        forma(cuentas.Deudor, texto_de(claves::Raiz_ProveedoresDeudor));
        forma(cuentas.DeudaCortoPlazo, texto_de(claves::Raiz_ProveedoresDeudaCortoPlazo));
    } catch (const adodb::ErrorBaseDatos&) {
        throw;
    } catch (const Error& error) {
        return examen.agrega("proveedor", error.descripcion());
    }
    const auto fila = examen.reclamacion.fila;
    mira_cuenta(examen, fila, "proveedor", cuentas.Deudor);
    mira_cuenta(examen, fila, "proveedor",
        examen.tecleado.Franquiciado ? cuentas.DeudaCortoPlazo : cuentas.Proveedor);
}

void Contabilizable::mira_ingresos(Examen& examen)
{
    const auto& lineas = examen.reclamacion.lineas;
    const auto& cargos = examen.tecleado.Cargos;
    std::map<std::string, int> dichas; // once each, however many lines it has
    for (std::size_t i = 0; i < cargos.size() && i < lineas.size(); ++i) {
        const bool propia = !cargos[i].Cuenta.empty();
        const auto& cuenta = propia ? cargos[i].Cuenta : examen.almacen.CtaIngresosAtipicos;
        if (dichas.emplace(cuenta, lineas[i].fila).second)
            mira_cuenta(examen, lineas[i].fila, propia ? "articulo" : "almacen", cuenta);
    }
}

void Contabilizable::mira_importes(Examen& examen)
{
    const auto comprueba = [&](int fila, Currency importe) {
        try {
            bexmor::comprueba_importe(importe, "atipicos", Donde::aqui());
            return true;
        } catch (const Error& error) {
            examen.agrega(fila, "costo", error.descripcion());
            return false;
        }
    };
    const auto& lineas = examen.reclamacion.lineas;
    for (std::size_t i = 0; i < lineas.size(); ++i)
        if (!comprueba(lineas[i].fila, examen.tecleado.Cargos[i].Importe))
            return;
    const auto total = examen.tecleado.Total;
    comprueba(examen.reclamacion.fila, total + importe_impuesto(total, examen.impuesto.Porcentaje, 2));
}

/// The terms are asked for what they propose; of the amount it does not depend whether they can.
void Contabilizable::mira_condiciones(Examen& examen)
{
    const auto& tecleado = examen.tecleado;
    const auto empresa = modComun::EmpresaOrvalin();
    const auto importe = tecleado.Total
        + importe_impuesto(tecleado.Total, empresa->PorcentajeImpuesto(tipo_impuesto_atipicos()),
            empresa->DecimalesImporte());
    if (importe == Currency() || !genera_previsiones())
        return;
    const std::tuple clave{ tecleado.Proveedor, examen.almacen.EmpContable, tecleado.Fecha.texto() };
    auto lugar = m_condiciones.find(clave);
    if (lugar == m_condiciones.end()) {
        if (m_condiciones.size() == condiciones_que_se_recuerdan)
            m_condiciones.clear();
        lugar = m_condiciones.emplace(clave, "").first;
        try {
            static_cast<void>(previsiones_propuestas(
                { importe, tecleado.Proveedor, tecleado.Fecha, examen.almacen.EmpContable, true }, m_avisos));
        } catch (const Error& error) {
            lugar->second = error.descripcion();
        }
    }
    if (!lugar->second.empty())
        examen.agrega("proveedor", lugar->second);
}

} // namespace atipicos::app
