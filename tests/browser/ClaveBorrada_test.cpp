// Which charge the browser deletes: that of the key it was given, in the company of the moment, and no other.
#include "browser/EliminarAtipico.hpp"

#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    TEST(ClaveBorrada, year_warehouse_code_and_company_are_those_of_the_charge)
    {
        const pruebas::Contexto contexto;
        contexto.empresa->codigo = 6;
        EXPECT_TRUE(EliminarAtipico({ 2025, 8, "AT250034" }));
        const std::string condicion
            = " WHERE Cod_Empresa =6   AND Cod_Ejercicio =2025   AND Cod_Almacen =8   AND Codigo ='AT250034'";
        EXPECT_THAT(contexto.gestion->dichas,
            testing::ElementsAre("BEGIN", "EXEC DELETE FROM Proveedores_Cargos_Atipicos_Lineas " + condicion,
                "EXEC DELETE FROM Proveedores_Cargos_Atipicos " + condicion, "COMMIT"));
    }

}
}
