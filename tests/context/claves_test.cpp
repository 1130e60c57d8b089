#include "context/claves.hpp"

#include <gtest/gtest.h>

namespace atipicos {
namespace {

    TEST(claves, are_spelled_as_the_company_objects_know_them)
    {
        EXPECT_EQ(claves::UsuarioActual, "UsuarioActual");
        EXPECT_EQ(claves::OficinaCentral, "OficinaCentral");
        EXPECT_EQ(claves::Proveedores_AtipcosImpuesto, "Proveedores_AtipcosImpuesto");
        EXPECT_EQ(claves::Raiz_ProveedoresDeudor, "Raiz_ProveedoresDeudor");
        EXPECT_EQ(claves::Raiz_ProveedoresDeudaCortoPlazo, "Raiz_ProveedoresDeudaCortoPlazo");
        EXPECT_EQ(claves::Conta_CtoAutIgicDebe, "Conta_CtoAutIgicDebe");
        EXPECT_EQ(claves::Concepto_Atipicos_Deudor, "Concepto_Atipicos_Deudor");
        EXPECT_EQ(claves::Concepto_Atipicos_Ingreso, "Concepto_Atipicos_Ingreso");
        EXPECT_EQ(claves::Concepto_Atipicos_Impuesto, "Concepto_Atipicos_Impuesto");
        EXPECT_EQ(claves::Concepto_Atipicos_Proveedor, "Concepto_Atipicos_Proveedor");
        EXPECT_EQ(claves::Proveedores_DptoIngresoRappels, "Proveedores_DptoIngresoRappels");
        EXPECT_EQ(claves::GenerarPrevPagos, "GenerarPrevPagos");
        EXPECT_EQ(claves::Proveedores_AtipicosDispImpresoDefault, "Proveedores_AtipicosDispImpresoDefault");
        EXPECT_EQ(claves::Proveedores_AtipicosDisp2ImpresoDefault, "Proveedores_AtipicosDisp2ImpresoDefault");
        EXPECT_EQ(claves::ODBCBaseDatos, "ODBCBaseDatos");
    }

}
}
