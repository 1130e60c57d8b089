#include "posting/EdicionPrevisiones.hpp"

#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using pruebas::dia;
    using pruebas::moneda;

    struct EdicionDePrevisiones : testing::Test {
        pruebas::Contexto contexto;
        EdicionPrevisiones edicion{ { moneda("100"), 104, dia("21/11/2026"), 1, true } };

        void agrega(const char* importe, std::int16_t tipo = 4, const char* nombre = "Recibo")
        {
            edicion.Agregar(
                { { moneda(importe), tipo, dia("10/12/2026"), "57200001" }, nombre, "Banco Teno" });
        }
    };

    TEST_F(EdicionDePrevisiones, the_rest_follows_every_row)
    {
        EXPECT_EQ(edicion.Resto(), moneda("100"));
        agrega("50");
        agrega("49.99");
        EXPECT_EQ(edicion.Resto(), moneda("0.01"));
        EXPECT_FALSE(edicion.Cuadra());
        edicion.Eliminar(2);
        agrega("50");
        EXPECT_TRUE(edicion.Cuadra());
        edicion.Eliminar(1);
        EXPECT_EQ(edicion.Resto(), moneda("50"));
    }

    TEST_F(EdicionDePrevisiones, nothing_adds_up_to_nothing_only)
    {
        EXPECT_FALSE(edicion.Cuadra());
        EXPECT_TRUE(EdicionPrevisiones({ Currency{}, 104, dia("21/11/2026"), 1, true }).Cuadra());
    }

    TEST_F(EdicionDePrevisiones, a_row_as_text)
    {
        agrega("1234.5");
        EXPECT_EQ(EdicionPrevisiones::texto(edicion.filas().back()),
            "1.234,50\tRecibo\t10/12/2026\t4\t57200001\tBanco Teno");
        agrega("1", 0, "");
        EXPECT_EQ(EdicionPrevisiones::texto(edicion.filas().back()),
            "1,00\tSIN ESPECIFICAR\t10/12/2026\t0\t57200001\tBanco Teno");
    }

    TEST_F(EdicionDePrevisiones, due_dates_before_the_charge_are_named)
    {
        const auto agrega_el = [this](const char* vencimiento) {
            edicion.Agregar({ { moneda("1"), 4, dia(vencimiento), "57200001" }, "Recibo", "Banco Teno" });
        };
        agrega_el("21/11/2026"); // that day itself
        EXPECT_EQ(edicion.AvisoDeVencimientos(), "");
        agrega_el("20/11/2026");
        EXPECT_EQ(
            edicion.AvisoDeVencimientos(), "La previsión 2 vence antes de la fecha del cargo, 21/11/2026.");
        agrega_el("10/12/2026");
        agrega_el("31/12/2025");
        EXPECT_EQ(edicion.AvisoDeVencimientos(),
            "Las previsiones 2, 4 vencen antes de la fecha del cargo, 21/11/2026.");
        edicion.Eliminar(1);
        EXPECT_EQ(edicion.AvisoDeVencimientos(),
            "Las previsiones 1, 3 vencen antes de la fecha del cargo, 21/11/2026.");
        edicion.Eliminar(1);
        edicion.Eliminar(2);
        EXPECT_EQ(edicion.AvisoDeVencimientos(), "");
    }

    TEST_F(EdicionDePrevisiones, rows_that_are_not_there_are_refused)
    {
        agrega("50");
        for (const std::int32_t fila : { -1, 0, 2 })
            EXPECT_THROW(edicion.Eliminar(fila), Error);
        EXPECT_EQ(edicion.Resto(), moneda("50"));
    }

    TEST_F(EdicionDePrevisiones, an_amount_that_does_not_fit_is_not_added)
    {
        agrega("900000000000000");
        EXPECT_THROW(agrega("900000000000000"), Error);
        EXPECT_EQ(edicion.filas().size(), 1U);
    }

    TEST_F(EdicionDePrevisiones, the_proposal_replaces_what_there_was)
    {
        contexto.gestion->responde("SELECT a.DiaPago_1",
            { { "DiaPago_1", "DiaPago_2", "GenerarPrev", "NroVtos", "PrimerVto", "RestoVtos", "TipoDoc",
                  "NombTipoDoc", "Cuenta", "NombreBanco" },
                { { 0, 0, true, 3, 30, 30, 4, "Recibo", "57200009", "Banco Teno" } } });
        agrega("50");
        edicion.Proponer();
        ASSERT_EQ(edicion.filas().size(), 3U);
        EXPECT_EQ(edicion.filas().back().prevision.Importe, moneda("33.34"));
        EXPECT_TRUE(edicion.Cuadra());
    }

}
}
