#pragma once

#include <string_view>

/// The configuration keys that the component reads, spelled as the company objects know them.
namespace atipicos::claves {

// Management company
inline constexpr std::string_view UsuarioActual = "UsuarioActual";
inline constexpr std::string_view OficinaCentral = "OficinaCentral";
inline constexpr std::string_view Proveedores_AtipcosImpuesto
    = "Proveedores_AtipcosImpuesto"; // sic: "Atipcos"
inline constexpr std::string_view Raiz_ProveedoresDeudor = "Raiz_ProveedoresDeudor";
inline constexpr std::string_view Raiz_ProveedoresDeudaCortoPlazo = "Raiz_ProveedoresDeudaCortoPlazo";
inline constexpr std::string_view Conta_CtoAutIgicDebe = "Conta_CtoAutIgicDebe";
inline constexpr std::string_view Concepto_Atipicos_Deudor = "Concepto_Atipicos_Deudor";
inline constexpr std::string_view Concepto_Atipicos_Ingreso = "Concepto_Atipicos_Ingreso";
inline constexpr std::string_view Concepto_Atipicos_Impuesto = "Concepto_Atipicos_Impuesto";
inline constexpr std::string_view Concepto_Atipicos_Proveedor = "Concepto_Atipicos_Proveedor";
inline constexpr std::string_view Proveedores_DptoIngresoRappels = "Proveedores_DptoIngresoRappels";
inline constexpr std::string_view GenerarPrevPagos = "GenerarPrevPagos";
inline constexpr std::string_view Proveedores_AtipicosDispImpresoDefault
    = "Proveedores_AtipicosDispImpresoDefault";
inline constexpr std::string_view Proveedores_AtipicosDisp2ImpresoDefault
    = "Proveedores_AtipicosDisp2ImpresoDefault";

// Accounting company
inline constexpr std::string_view ODBCBaseDatos = "ODBCBaseDatos";

} // namespace atipicos::claves
