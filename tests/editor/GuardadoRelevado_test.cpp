// A host that lends other connections while a charge is being saved: both transactions end where they began.
#include "editor/CargoAbierto.hpp"
#include "editor/GuardarAtipico.hpp"

#include "charges/clsAtipico.hpp"
#include "posting/GenerarPrev.hpp"
#include "tests/support/Relevo.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using pruebas::dia;
    using pruebas::moneda;
    using testing::ElementsAre;
    using testing::IsEmpty;
    using Estado = ResultadoGuardado::Estado;

    struct GuardadoRelevado : testing::Test {
        pruebas::Contexto contexto;
        pruebas::Relevo relevo{ contexto };
        clsAtipico cargo;
        const CargoTecleado tecleado{ "", 3, 17, "Ñandú e Hijos, S.L.", dia("15/03/2025"), "Palé dañado",
            false, moneda("100"), { { moneda("100"), "" } } };

        GuardadoRelevado()
        {
            contexto.gestion->responde("SELECT EmpContable", { { "EmpContable" }, { { 1 } } });
            cargo.Lineas->Add(1001, "Botella rota", moneda("2"), moneda("50"));
        }
        Estado guarda()
        {
            return GuardarAtipico(cargo, tecleado, [](const Contabilizacion&) {
                return std::vector<Prevision>{};
            }).estado;
        }
    };

    TEST_F(GuardadoRelevado, both_transactions_are_committed_where_they_were_begun)
    {
        relevo.cuando = "contabilidad BEGIN";
        EXPECT_EQ(guarda(), Estado::Guardado);
        EXPECT_THAT(contexto.avisos->dichos, IsEmpty());
        EXPECT_EQ(contexto.gestion->dichas.back(), "COMMIT");
        EXPECT_THAT(contexto.contabilidad->dichas, ElementsAre("BEGIN", "COMMIT"));
        EXPECT_THAT(relevo.otra_contabilidad->dichas, IsEmpty());
        EXPECT_TRUE(relevo.sueltas());
    }

    TEST_F(GuardadoRelevado, both_transactions_are_undone_where_they_were_begun)
    {
        relevo.cuando = "contabilidad BEGIN";
        relevo.otra_gestion->falla("SELECT * FROM Contador_", "no se pudo");
        EXPECT_EQ(guarda(), Estado::Fallido);
        EXPECT_EQ(contexto.gestion->dichas.back(), "ROLLBACK");
        EXPECT_THAT(contexto.contabilidad->dichas, ElementsAre("BEGIN", "ROLLBACK"));
        EXPECT_THAT(relevo.otra_contabilidad->dichas, IsEmpty());
    }

    TEST_F(GuardadoRelevado, is_worked_out_though_each_question_is_answered_so)
    {
        relevo.cuando = "gestion OPEN SELECT EmpContable";
        pruebas::EmpresaRelevada::presta(contexto);
        relevo.otra_gestion->responde("SELECT Cta_Proveedor",
            { { "Cta_Proveedor", "Cta_Deudor", "Cta_DeudaCortoPlazo" }, { { "", "", "" } } });
        EXPECT_EQ(guarda(), Estado::Guardado);
        EXPECT_THAT(contexto.avisos->dichos, IsEmpty());
        EXPECT_THAT(relevo.parte->dichas,
            ElementsAre("gestion OPEN SELECT EmpContable FROM Almacenes WHERE Cod_Empresa =1 AND Codigo =3"));
        EXPECT_EQ(relevo.otra_gestion->dichas.front(), "BEGIN")
            << "what begins later is asked of the other one";
        EXPECT_EQ(relevo.otra_gestion->dichas.back(), "COMMIT");
    }

    TEST_F(GuardadoRelevado, a_stored_charge_is_read_to_its_end)
    {
        contexto.gestion->responde("SELECT Proveedor, Fecha",
            { { "Proveedor", "Fecha", "Observ", "Impuesto" },
                { { 17, dia("15/03/2025"), "Palé", moneda("7") } } });
        contexto.gestion->responde("SELECT lin.*",
            { { "Cod_Articulo", "Descripcion", "Observ", "Unidades", "Precio", "Num_Linea", "CtaAtipicos" },
                { { 1001, "Botella rota", "", moneda("2"), moneda("50"), 1, "" },
                    { 1002, "Caja mojada", "", moneda("1"), moneda("3"), 2, "" } } });
        pruebas::EmpresaRelevada::presta(contexto);
        EXPECT_EQ(lee_cabecera({ 2025, 3, "AT250001" })->Proveedor, 17);

        const pruebas::Relevo otro(contexto);
        int lineas = 0;
        lee_lineas({ 2025, 3, "AT250001" }, [&](const LineaAbierta&) {
            modComun::set_ConexionOrvalin(nullptr);
            ++lineas;
        });
        EXPECT_EQ(lineas, 2);
        modComun::set_ConexionBexmor(nullptr);
        EXPECT_TRUE(otro.sueltas());
    }

}
}
