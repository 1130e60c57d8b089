#include "browser/EliminarAtipico.hpp"

#include "tests/support/ConexionEspia.hpp"
#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using testing::ElementsAre;
    using testing::SizeIs;
    using testing::StartsWith;

    const ClaveCargo clave{ 2026, 3, "AT260017" };

    TEST(EliminarAtipico, deletes_lines_and_header_in_one_transaction)
    {
        const pruebas::Contexto contexto;
        EXPECT_TRUE(EliminarAtipico(clave));
        EXPECT_THAT(contexto.gestion->dichas,
            ElementsAre("BEGIN", StartsWith("EXEC DELETE FROM Proveedores_Cargos_Atipicos_Lineas "),
                StartsWith("EXEC DELETE FROM Proveedores_Cargos_Atipicos "), "COMMIT"));
        EXPECT_THAT(contexto.contabilidad->dichas, testing::IsEmpty()) << "the entry is not touched";
    }

    struct Fallo {
        std::size_t en;
        std::string titulo;
        std::string ultima;
    };
    void PrintTo(const Fallo& fallo, std::ostream* salida) { *salida << "operation " << fallo.en; }

    struct EliminarAtipicoFalla : testing::TestWithParam<Fallo> { };

    TEST_P(EliminarAtipicoFalla, shows_one_box_and_rolls_everything_back)
    {
        const pruebas::Contexto contexto;
        const auto parte = std::make_shared<pruebas::Parte>();
        parte->falla_en = GetParam().en;
        modComun::set_ConexionOrvalin(
            std::make_shared<pruebas::ConexionEspia>("gestion", contexto.gestion, parte));
        EXPECT_FALSE(EliminarAtipico(clave));
        ASSERT_THAT(contexto.avisos->dichos, SizeIs(1));
        EXPECT_EQ(contexto.avisos->dichos[0].titulo, GetParam().titulo);
        EXPECT_EQ(parte->dichas.back(), GetParam().ultima);
    }

    INSTANTIATE_TEST_SUITE_P(sweep, EliminarAtipicoFalla,
        testing::Values(Fallo{ 1, "frmCompras_Atipicos_Visor:cmdEliminar_Click", "gestion BEGIN" },
            Fallo{ 2, "clsAtipico:Eliminar_Atipico", "gestion ROLLBACK" },
            Fallo{ 3, "clsAtipico:Eliminar_Atipico", "gestion ROLLBACK" },
            Fallo{ 4, "frmCompras_Atipicos_Visor:cmdEliminar_Click", "gestion ROLLBACK" }));

}
}
