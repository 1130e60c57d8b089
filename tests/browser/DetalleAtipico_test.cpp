#include "browser/DetalleAtipico.hpp"

#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using pruebas::moneda;
    using testing::ElementsAre;

    TEST(DetalleAtipico, statement_letter_by_letter)
    {
        EXPECT_EQ(instruccion_detalle({ 2026, 3, "AT260017" }, 1),
            " SELECT pcl.*   FROM Proveedores_Cargos_Atipicos_Lineas pcl  WHERE pcl.Cod_Empresa =1    AND "
            "pcl.Cod_Ejercicio =2026    AND pcl.Cod_Almacen =3    AND pcl.Codigo ='AT260017' ORDER BY "
            "pcl.Num_Linea ");
    }

    TEST(DetalleAtipico, amount_is_units_times_price_whatever_is_stored)
    {
        const pruebas::Contexto contexto;
        contexto.gestion->responde(" SELECT pcl.*",
            { { "Codigo", "Cod_Articulo", "Descripcion", "Unidades", "Precio", "Observ", "Importe" },
                { { "AT260017", 1001, "Botella", moneda("2.5"), moneda("3"), "o", moneda("99") } } });
        std::vector<std::string> filas;
        Cargar_Detalles({ 2026, 3, "AT260017" },
            [&](const LineaDetalle& linea) { anexa_fila(filas.emplace_back(), linea, 3); });
        EXPECT_THAT(filas, ElementsAre("AT260017\t1001\tBotella\t2,500\t3,000\t7,50\to"));
    }

    TEST(DetalleAtipico, a_charge_without_lines_gives_none)
    {
        const pruebas::Contexto contexto;
        int filas = 0;
        Cargar_Detalles({ 2026, 3, "AT260017" }, [&](const LineaDetalle&) { ++filas; });
        EXPECT_EQ(filas, 0);
        EXPECT_THAT(contexto.gestion->dichas, testing::SizeIs(2)) << "opened and closed";
    }

}
}
