#include "editor/ImpuestoDelCargo.hpp"

#include "tests/support/Contexto.hpp"

#include <gtest/gtest.h>

namespace atipicos {
namespace {

    using pruebas::moneda;

    struct ImpuestoTecleado : testing::Test {
        pruebas::Contexto contexto;
        ImpuestoDelCargo impuesto;

        void con(const char* porcentaje, int decimales = 2)
        {
            contexto.empresa->parametros["Proveedores_AtipcosImpuesto"] = Variant(4);
            contexto.empresa->porcentajes[4] = moneda(porcentaje);
            contexto.empresa->decimales_importe = decimales;
            impuesto.Leer();
        }
    };

    TEST_F(ImpuestoTecleado, base_rate_tax_and_total)
    {
        con("3");
        EXPECT_EQ(impuesto.texto(moneda("1234.56")),
            "Base 1.234,56  +  impuesto (3 %) 37,04  =  total con impuesto 1.271,60");
        EXPECT_EQ(impuesto.texto({}), "Base 0,00  +  impuesto (3 %) 0,00  =  total con impuesto 0,00");
        EXPECT_EQ(impuesto.texto(moneda("-50")),
            "Base -50,00  +  impuesto (3 %) -1,50  =  total con impuesto -51,50");
    }

    TEST_F(ImpuestoTecleado, a_rate_is_shown_with_the_decimals_that_it_has)
    {
        con("3.25");
        EXPECT_EQ(impuesto.texto(moneda("100")),
            "Base 100,00  +  impuesto (3,25 %) 3,25  =  total con impuesto 103,25");
        con("10");
        EXPECT_EQ(impuesto.texto(moneda("100")),
            "Base 100,00  +  impuesto (10 %) 10,00  =  total con impuesto 110,00");
        con("0");
        EXPECT_EQ(impuesto.texto(moneda("100")),
            "Base 100,00  +  impuesto (0 %) 0,00  =  total con impuesto 100,00");
    }

    TEST_F(ImpuestoTecleado, the_company_says_how_many_decimals_amounts_have)
    {
        con("7", 3);
        EXPECT_EQ(impuesto.texto(moneda("100.05")),
            "Base 100,05  +  impuesto (7 %) 7,004  =  total con impuesto 107,054");
        con("7", 0);
        EXPECT_EQ(impuesto.texto(moneda("100.05")),
            "Base 100,05  +  impuesto (7 %) 7,00  =  total con impuesto 107,05");
    }

    TEST_F(ImpuestoTecleado, without_a_rate_nothing_is_told_and_no_box_is_shown)
    {
        EXPECT_EQ(impuesto.texto(moneda("100")), "");
        con("7");
        contexto.empresa->parametros["Proveedores_AtipcosImpuesto"] = Variant(std::string("x"));
        impuesto.Leer();
        EXPECT_EQ(impuesto.texto(moneda("100")), "");
        con("7");
        pruebas::vacia_contexto();
        impuesto.Leer();
        EXPECT_EQ(impuesto.texto(moneda("100")), "");
        EXPECT_TRUE(contexto.avisos->dichos.empty());
    }

    TEST_F(ImpuestoTecleado, an_amount_that_does_not_fit_is_not_told)
    {
        con("100");
        EXPECT_EQ(impuesto.texto(moneda("900000000000000")), "");
    }

}
}
