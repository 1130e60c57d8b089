// A host that lends other objects while it answers: an entry and its forecasts are worked out all the same.
#include "posting/GenerarAsiento.hpp"
#include "posting/GenerarPrev.hpp"

#include "tests/support/Relevo.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using pruebas::dia;
    using pruebas::moneda;
    using testing::IsEmpty;
    using testing::SizeIs;

    struct AsientoRelevado : testing::Test {
        pruebas::Contexto contexto;
        DatosAsiento datos;

        AsientoRelevado()
        {
            datos.Fecha = dia("21/11/2026");
            datos.Proveedor = 17;
            datos.NombreProveedor = "Ñandú e Hijos, S.L.";
            datos.Almacen = 3;
            datos.Cargos.push_back({ moneda("100"), "75900011" });
            datos.Total = moneda("100");
            contexto.gestion->responde("SELECT Cta_Proveedor",
                { { "Cta_Proveedor", "Cta_Deudor", "Cta_DeudaCortoPlazo" }, { { "", "", "" } } });
            contexto.gestion->responde("SELECT a.DiaPago_1",
                { { "DiaPago_1", "DiaPago_2", "GenerarPrev", "NroVtos", "PrimerVto", "RestoVtos", "TipoDoc",
                      "NombTipoDoc", "Cuenta", "NombreBanco" },
                    { { 0, 0, true, 2, 30, 30, 4, "Recibo", "57200009", "Banco Ñandú" } } });
        }

        std::size_t lineas_del_asiento()
        {
            contexto.biblioteca->diario->escrito.clear();
            std::int32_t asiento = 0;
            GenerarAsiento("AT260017", 1, asiento, datos);
            EXPECT_THAT(contexto.avisos->dichos, IsEmpty());
            EXPECT_NE(asiento, 0);
            return contexto.biblioteca->diario->escrito.size();
        }
        void propone_dos() const
        {
            const auto propuesta = GenerarPrev({ moneda("107"), 17, dia("21/11/2026"), 2, true });
            EXPECT_THAT(contexto.avisos->dichos, IsEmpty());
            EXPECT_THAT(propuesta.previsiones, SizeIs(2));
        }
    };

    TEST_F(AsientoRelevado, with_another_management_connection_at_each_question)
    {
        const auto lineas = lineas_del_asiento();
        const pruebas::Relevo relevo(contexto);
        EXPECT_EQ(lineas_del_asiento(), lineas);
        const pruebas::Relevo otro(contexto);
        propone_dos();
    }

    TEST_F(AsientoRelevado, with_another_management_company_at_each_question)
    {
        const auto lineas = lineas_del_asiento();
        pruebas::EmpresaRelevada::presta(contexto);
        EXPECT_EQ(lineas_del_asiento(), lineas);
        pruebas::EmpresaRelevada::presta(contexto);
        propone_dos();
    }

    TEST_F(AsientoRelevado, without_the_accounting_company_from_its_first_question_on)
    {
        const auto lineas = lineas_del_asiento();
        pruebas::ContableRelevada::presta(contexto);
        EXPECT_EQ(lineas_del_asiento(), lineas);
        EXPECT_THROW(static_cast<void>(modComun::EmpresaBexmor()), Error);
    }

    TEST_F(AsientoRelevado, forecasts_tell_that_the_accounting_company_was_taken_away)
    {
        pruebas::ContableRelevada::presta(contexto);
        const auto propuesta = GenerarPrev({ moneda("107"), 17, dia("21/11/2026"), 2, true });
        EXPECT_THAT(propuesta.previsiones, IsEmpty());
        ASSERT_THAT(contexto.avisos->dichos, SizeIs(1)) << "its name was given; for its bank it is not there";
        EXPECT_THAT(
            contexto.avisos->dichos[0].texto, testing::EndsWith("La variable de objeto no está establecida"));
    }

}
}
