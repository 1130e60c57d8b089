#include "editor/GuardarAtipico.hpp"

#include "charges/clsAtipico.hpp"
#include "charges/Impuesto.hpp"
#include "context/Cajas.hpp"
#include "context/modComun.hpp"
#include "context/Transaccion.hpp"
#include "context/trap.hpp"
#include "platform/adodb/campos.hpp"
#include "posting/GenerarAsiento.hpp"
#include "posting/GenerarPrev.hpp"

namespace atipicos {

namespace {

    std::int16_t empresa_contable(std::int16_t almacen)
    {
        const auto empresa = modComun::EmpresaOrvalin()->Codigo();
        auto rs = modComun::CreateRecordset();
        rs->Open("SELECT EmpContable FROM Almacenes WHERE Cod_Empresa =" + std::to_string(empresa)
                + " AND Codigo =" + std::to_string(almacen),
            adodb::CursorType::Static, adodb::LockType::ReadOnly);
        const std::int16_t contable = rs->Eof() ? std::int16_t{ 0 } : adodb::entero(*rs, "EmpContable");
        rs->Close();
        return contable;
    }

    Currency total_a_pagar(Currency total)
    {
        const auto tipo = tipo_impuesto_atipicos();
        const auto empresa = modComun::EmpresaOrvalin();
        const Currency porcentaje = empresa->PorcentajeImpuesto(tipo);
        return total + importe_impuesto(total, porcentaje, empresa->DecimalesImporte());
    }

    Contabilizacion prepara(const CargoTecleado& tecleado)
    {
        Contabilizacion datos;
        datos.Proveedor = tecleado.Proveedor;
        datos.Fecha = tecleado.Fecha;
        datos.EmpresaContable = empresa_contable(tecleado.Almacen);
        datos.Importe = total_a_pagar(tecleado.Total);
        datos.GenerarPrevisiones = genera_previsiones();
        return datos;
    }

    DatosAsiento datos_asiento(const CargoTecleado& tecleado, std::vector<Prevision> previsiones)
    {
        return { tecleado.Fecha, tecleado.Proveedor, tecleado.NombreProveedor, tecleado.Almacen,
            tecleado.Total, tecleado.Cargos, tecleado.Franquiciado, std::move(previsiones) };
    }

    void rellena(clsAtipico& cargo, const CargoTecleado& tecleado, const std::string& codigo,
        std::int32_t asiento, std::int16_t contable)
    {
        const Date ahora = modComun::reloj().ahora();
        cargo.Cod_Ejercicio = CInt(tecleado.Fecha.anio());
        cargo.Codigo = codigo;
        cargo.Cod_Almacen = tecleado.Almacen;
        cargo.Proveedor = tecleado.Proveedor;
        cargo.Fecha = tecleado.Fecha;
        cargo.Importe = tecleado.Total;
        cargo.Hora = ahora;
        cargo.Observ = tecleado.Observaciones;
        cargo.AplicarImpuesto = true;
        cargo.Asiento = asiento;
        cargo.EmpContable = contable;
        cargo.EjContable = CInt(ahora.anio());
    }

    /// From the first BeginTrans to the last CommitTrans.
    void escribe_cabecera(clsAtipico& cargo, const CargoTecleado& tecleado, std::int16_t contable,
        const DatosAsiento& datos, ResultadoGuardado& resultado)
    {
        // Declared first so that, when an error leaves this block, management is rolled back first.
        std::optional<Transaccion> contabilidad;
        Transaccion gestion(modComun::ConexionOrvalin());
        contabilidad.emplace(modComun::ConexionBexmor());

        const bool nuevo = tecleado.Codigo.empty();
        const auto ejercicio = CInt(tecleado.Fecha.anio());
        const std::string codigo = nuevo ? cargo.Devuelve_Codigo(true, ejercicio) : tecleado.Codigo;

        std::int32_t asiento = 0;
        if (modComun::EmpresaOrvalin()->EnlaceContable() == 1)
            GenerarAsiento(codigo, contable, asiento, datos);

        rellena(cargo, tecleado, codigo, asiento, contable);
        if (!nuevo)
            cargo.Eliminar_Atipico();
        resultado.InsertarFallido = cargo.Insertar();

        gestion.Confirma();
        contabilidad->Confirma();
        resultado.Codigo = codigo;
        resultado.Asiento = asiento;
    }

}

ResultadoGuardado GuardarAtipico(
    clsAtipico& cargo, const CargoTecleado& tecleado, const PedirPrevisiones& pedir_previsiones)
{
    using Estado = ResultadoGuardado::Estado;
    ResultadoGuardado resultado;
    const bool bien = trap("frmCompras_Atipicos:cmdAceptar_Click", [&] {
        if (cargo.Lineas->Count() == 0)
            return;
        cargo.Fecha = tecleado.Fecha;
        cargo.Cod_Almacen = tecleado.Almacen; // numbering counts by the charge's warehouse

        const Contabilizacion a_contabilizar = prepara(tecleado);
        auto previsiones = pedir_previsiones(a_contabilizar);
        if (!previsiones) {
            resultado.estado = Estado::NoAceptado;
            return;
        }
        escribe_cabecera(cargo, tecleado, a_contabilizar.EmpresaContable,
            datos_asiento(tecleado, std::move(*previsiones)), resultado);
        resultado.estado = Estado::Guardado;
    });
    if (!bien)
        resultado.estado = Estado::Fallido;
    return resultado;
}

Mensaje mensaje_guardado(const ResultadoGuardado& resultado)
{
    std::string texto = "Atípico " + resultado.Codigo + " generado correctamente.";
    if (resultado.Asiento > 0)
        texto += "\r\nAsiento: " + std::to_string(resultado.Asiento);
    return { texto, atencion, Icono::informacion };
}

} // namespace atipicos
