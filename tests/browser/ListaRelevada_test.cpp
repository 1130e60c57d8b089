// A host that lends another connection while it answers: what is being read is read to its end, and a
// transaction ends where it began.
#include "browser/DetalleAtipico.hpp"
#include "browser/EliminarAtipico.hpp"
#include "browser/ListaAtipicos.hpp"

#include "tests/support/Relevo.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using testing::ElementsAre;
    using testing::IsEmpty;
    using testing::StartsWith;

    struct ListaRelevada : testing::Test {
        pruebas::Contexto contexto;
        pruebas::Relevo relevo{ contexto };

        ListaRelevada()
        {
            pruebas::EmpresaRelevada::presta(contexto);
            contexto.gestion->responde("SELECT pc.*",
                { { "Codigo", "Cod_Almacen", "Nombre_Almacen", "Proveedor", "Nombre_Proveedor", "Fecha",
                      "Hora", "Importe", "Impuesto_Importe", "Impuesto", "Asiento", "Usuario",
                      "Nombre_Usuario", "Observ" },
                    { { "AT260017", 3, "Güímar", 17, "Ñandú", pruebas::dia("21/11/2026"),
                          pruebas::dia("21/11/2026"), pruebas::moneda("100"), pruebas::moneda("7"),
                          pruebas::moneda("7"), 881, 12, "Begoña", "Palé" },
                        { "AT260016", 3, "Güímar", 17, "Ñandú", pruebas::dia("20/11/2026"),
                            pruebas::dia("20/11/2026"), pruebas::moneda("50"), pruebas::moneda("3.5"),
                            pruebas::moneda("7"), 880, 12, "Begoña", "" } } });
            contexto.gestion->responde(" SELECT pcl.*",
                { { "Codigo", "Cod_Articulo", "Descripcion", "Unidades", "Precio", "Observ" },
                    { { "AT260017", 1001, "Botella rota", pruebas::moneda("2"), pruebas::moneda("50"), "" },
                        { "AT260017", 1002, "Caja mojada", pruebas::moneda("1"), pruebas::moneda("3"),
                            "" } } });
        }
        /// What the browser does with a row may take its time too: another one is lent meanwhile.
        static void presta_otra()
        {
            modComun::set_ConexionOrvalin(std::make_shared<pruebas::ConexionDePrueba>());
        }
    };

    TEST_F(ListaRelevada, the_list_is_read_to_its_end)
    {
        std::vector<std::string> codigos;
        Cargar_Atipicos({ "01/01/2026", "31/12/2026" }, [&](const CargoListado& cargo) {
            presta_otra();
            EXPECT_FALSE(relevo.sueltas()) << "the rows hold their connection";
            codigos.push_back(cargo.Codigo);
        });
        EXPECT_THAT(codigos, ElementsAre("AT260017", "AT260016"));
        EXPECT_EQ(contexto.gestion->dichas.back(), "CLOSE");
        EXPECT_TRUE(relevo.sueltas());
    }

    TEST_F(ListaRelevada, the_lines_are_read_to_their_end)
    {
        std::vector<std::int32_t> articulos;
        Cargar_Detalles({ 2026, 3, "AT260017" }, [&](const LineaDetalle& linea) {
            presta_otra();
            EXPECT_FALSE(relevo.sueltas()) << "the rows hold their connection";
            articulos.push_back(linea.Cod_Articulo);
        });
        EXPECT_THAT(articulos, ElementsAre(1001, 1002));
        EXPECT_TRUE(relevo.sueltas());
    }

    TEST_F(ListaRelevada, a_deletion_is_committed_where_it_was_begun)
    {
        relevo.cuando = "gestion EXEC DELETE FROM Proveedores_Cargos_Atipicos "; // the last of its statements
        EXPECT_TRUE(EliminarAtipico({ 2026, 3, "AT260017" }));
        EXPECT_THAT(relevo.parte->dichas,
            ElementsAre("gestion BEGIN",
                StartsWith("gestion EXEC DELETE FROM Proveedores_Cargos_Atipicos_Lineas"),
                StartsWith(relevo.cuando), "gestion COMMIT"));
        EXPECT_THAT(relevo.otra_gestion->dichas, IsEmpty());
        EXPECT_EQ(modComun::ConexionOrvalin(), relevo.otra_gestion);
    }

    TEST_F(ListaRelevada, a_deletion_that_fails_is_undone_where_it_was_begun)
    {
        contexto.gestion->falla("DELETE FROM Proveedores_Cargos_Atipicos ", "no se pudo");
        relevo.cuando = "gestion EXEC DELETE FROM Proveedores_Cargos_Atipicos ";
        EXPECT_FALSE(EliminarAtipico({ 2026, 3, "AT260017" }));
        EXPECT_EQ(relevo.parte->dichas.back(), "gestion ROLLBACK");
        EXPECT_THAT(relevo.otra_gestion->dichas, IsEmpty());
    }

}
}
