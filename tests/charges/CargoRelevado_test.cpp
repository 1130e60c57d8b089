// A host that lends another connection, or another company, while it answers: each operation of a charge ends
// where it began.
#include "charges/clsAtipico.hpp"

#include "tests/support/Relevo.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using pruebas::dia;
    using pruebas::moneda;
    using testing::Each;
    using testing::HasSubstr;
    using testing::IsEmpty;
    using testing::SizeIs;
    using testing::StartsWith;

    struct CargoRelevado : testing::Test {
        pruebas::Contexto contexto;
        pruebas::Relevo relevo{ contexto };
        clsAtipico cargo;
        const std::vector<std::string>& dichas = relevo.parte->dichas;

        CargoRelevado()
        {
            contexto.empresa->codigo = 4;
            cargo.Cod_Almacen = 3;
            cargo.Codigo = "AT260017";
            cargo.Fecha = dia("21/11/2026");
            cargo.AplicarImpuesto = true;
            cargo.Lineas->Add(1001, "Botella rota", moneda("2.5"), moneda("60.1"));
            cargo.Lineas->Add(1002, "Caja mojada", moneda("1"), moneda("3"));
        }

        /// All went to the one with which it began, which is let go behind it.
        void acaba_donde_empezo(std::size_t preguntas) const
        {
            EXPECT_THAT(contexto.avisos->dichos, IsEmpty());
            EXPECT_THAT(dichas, SizeIs(preguntas));
            EXPECT_THAT(dichas, Each(StartsWith("gestion ")));
            EXPECT_THAT(relevo.otra_gestion->dichas, IsEmpty());
            EXPECT_EQ(modComun::ConexionOrvalin(), relevo.otra_gestion) << "and the next one is in force";
            modComun::set_ConexionBexmor(nullptr);
            EXPECT_TRUE(relevo.sueltas());
        }
    };

    TEST_F(CargoRelevado, is_inserted_whole)
    {
        EXPECT_FALSE(cargo.Insertar());
        acaba_donde_empezo(3);
    }

    TEST_F(CargoRelevado, is_changed_whole)
    {
        EXPECT_FALSE(cargo.Modificar_Atipico());
        acaba_donde_empezo(3);
    }

    TEST_F(CargoRelevado, is_changed_whole_where_lines_are_missing)
    {
        contexto.gestion->afecta("UPDATE Proveedores_Cargos_Atipicos_Lineas", 0);
        EXPECT_FALSE(cargo.Modificar_Atipico());
        acaba_donde_empezo(5);
    }

    TEST_F(CargoRelevado, is_deleted_whole)
    {
        EXPECT_FALSE(cargo.EliminarConResultado());
        acaba_donde_empezo(2);
    }

    TEST_F(CargoRelevado, is_looked_for_to_the_end)
    {
        contexto.gestion->responde("SELECT Codigo", { { "Codigo" }, { { "AT260017" } } });
        EXPECT_TRUE(cargo.Existe(2026, 3, "AT260017"));
        acaba_donde_empezo(1);
        EXPECT_EQ(contexto.gestion->dichas.back(), "CLOSE");
    }

    TEST_F(CargoRelevado, is_numbered_to_the_end)
    {
        contexto.gestion->responde("SELECT * FROM Contador_", { { "Numero" }, { { 260'017 } } });
        EXPECT_EQ(cargo.Devuelve_Codigo(true, 2026), "AT260018");
        acaba_donde_empezo(2);
        EXPECT_EQ(contexto.gestion->dichas.back(), "CLOSE");
    }

    TEST_F(CargoRelevado, is_stored_in_the_company_with_which_it_began)
    {
        const std::vector<std::pair<const char*, std::function<bool()>>> operaciones{
            { "Cod_Empresa =4 ", [&] { return cargo.EliminarConResultado(); } },
            { "VALUES (4, ", [&] { return cargo.Insertar(); } },
            { "Cod_Empresa=4 ", [&] { return cargo.Modificar_Atipico(); } },
        };
        for (const auto& [suya, opera] : operaciones) {
            contexto.gestion->dichas.clear();
            modComun::set_ConexionOrvalin(contexto.gestion);
            pruebas::EmpresaRelevada::presta(contexto);
            EXPECT_FALSE(opera());
            EXPECT_THAT(contexto.avisos->dichos, IsEmpty());
            EXPECT_THAT(contexto.gestion->dichas, Each(HasSubstr(suya)));
            EXPECT_EQ(modComun::EmpresaOrvalin()->Codigo(), 99);
        }
    }

}
}
