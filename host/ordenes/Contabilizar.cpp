#include "charges/Impuesto.hpp"
#include "context/modComun.hpp"
#include "context/Transaccion.hpp"
#include "editor/CargoAbierto.hpp"
#include "host/comprobacion/CargoConsultado.hpp"
#include "host/comprobacion/Verificacion.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "host/reclamaciones/PrevisionesPropuestas.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/sql/Literal.hpp"
#include "posting/GenerarAsiento.hpp"
#include "posting/GenerarPrev.hpp"
#include "runtime/Formato.hpp"

#include <algorithm>
#include <iostream>
#include <utility>

namespace atipicos::app {

namespace {

    /// A second entry for a charge that has one would claim the money twice.
    void exige_sin_asiento(const Sesion& sesion, std::int16_t empresa, const ClaveCargo& clave)
    {
        const ClaveContenida buscado{ empresa, clave.Ejercicio, clave.Almacen, clave.Codigo };
        const auto verificacion = verifica(sesion.bases);
        const auto& faltan = verificacion.sin_asiento;
        const auto lugar = std::find_if(
            faltan.begin(), faltan.end(), [&](const auto& uno) { return uno.cargo == buscado; });
        if (lugar == faltan.end())
            rehusa("El " + texto(buscado) + " no necesita otro asiento: no se ha contabilizado nada.");
        if (!lugar->contabilizable)
            rehusa("El " + texto(buscado)
                + " no está completo: ábralo en el visor con «Modificar», complételo y acéptelo.");
    }

    std::vector<Prevision> previsiones(const Contabilizacion& datos, const Sesion& sesion)
    {
        AvisosRecogidos avisos(sesion.avisos);
        try {
            return previsiones_propuestas(datos, avisos);
        } catch (const Error& error) {
            rehusa("No se ha contabilizado nada: " + error.descripcion());
        }
    }

    /// The stored charge as the save hands it over to be posted.
    DatosAsiento datos_de(
        const Sesion& sesion, const CargoConsultado& cargo, const ClaveCargo& clave, bool franquiciado)
    {
        const auto& cabecera = cargo.cabecera;
        DatosAsiento datos{ cabecera.Fecha, cabecera.Proveedor, cabecera.Nombre_Proveedor, clave.Almacen,
            cabecera.Importe, {}, franquiciado, {} };
        lee_lineas({ clave.Ejercicio, clave.Almacen, clave.Codigo }, [&](const LineaAbierta& linea) {
            datos.Cargos.push_back(
                { importe_linea(linea.linea.Unidades, linea.linea.Costo), linea.CtaAtipicos });
        });
        const auto empresa = modComun::EmpresaOrvalin();
        const Currency porcentaje = empresa->PorcentajeImpuesto(tipo_impuesto_atipicos());
        if (importe_impuesto(cabecera.Importe, porcentaje, empresa->DecimalesImporte())
            != cabecera.Impuesto_Importe)
            rehusa("El cargo " + clave.Codigo + " se guardó con un impuesto del "
                + texto_pantalla(cabecera.Impuesto, 2) + " % y ahora es del " + texto_pantalla(porcentaje, 2)
                + " %: ábralo en el visor con «Modificar» y acéptelo.");
        datos.Previsiones = previsiones({ cabecera.Importe + cabecera.Impuesto_Importe, cabecera.Proveedor,
                                            cabecera.Fecha, cargo.EmpContable, genera_previsiones() },
            sesion);
        return datos;
    }

    /// Gives the stored charge its new entry, unless somebody has changed it meanwhile.
    void apunta_asiento(std::int16_t empresa, const ClaveCargo& clave, std::int32_t antes, std::int32_t ahora)
    {
        std::int32_t afectadas = 0;
        modComun::ConexionOrvalin()->Execute("UPDATE Proveedores_Cargos_Atipicos SET Asiento ="
                + std::to_string(ahora) + " WHERE Cod_Empresa =" + std::to_string(empresa)
                + " AND Cod_Ejercicio =" + std::to_string(clave.Ejercicio)
                + " AND Cod_Almacen =" + std::to_string(clave.Almacen)
                + " AND Codigo =" + sql::literal(clave.Codigo) + " AND Asiento =" + std::to_string(antes),
            &afectadas);
        if (afectadas != 1)
            rehusa("Otro usuario acaba de cambiar el cargo " + clave.Codigo
                + ": no se ha contabilizado nada. Compruébelo con: atipicos verificar");
    }

}

int contabilizar(const OpcionesComunes& comunes, const OpcionesContabilizar& opciones)
{
    const Sesion sesion(comunes);
    const ClaveCargo clave{ opciones.ejercicio, opciones.almacen, opciones.codigo };
    const auto cargo = busca_cargo(clave);
    if (!cargo)
        no_existe(clave);
    exige_sin_asiento(sesion, comunes.empresa, clave);
    const auto datos = datos_de(sesion, *cargo, clave, opciones.franquiciado);

    // Management is committed first, as in a save: a process that dies in between leaves the charge as it was
    // found, to be posted again.
    Transaccion gestion(modComun::ConexionOrvalin());
    Transaccion contabilidad(modComun::ConexionBexmor());
    std::int32_t asiento = 0;
    GenerarAsiento(clave.Codigo, cargo->EmpContable, asiento, datos);
    if (asiento == 0)
        return no_hecho; // shown already; both are rolled back
    apunta_asiento(comunes.empresa, clave, cargo->cabecera.Asiento, asiento);
    gestion.Confirma();
    contabilidad.Confirma();
    std::cout << "Contabilizado el cargo " << clave.Codigo << ": asiento " << asiento
              << " de la empresa contable " << cargo->EmpContable << ", ejercicio " << datos.Fecha.anio()
              << ".\n";
    return hecho;
}

} // namespace atipicos::app
