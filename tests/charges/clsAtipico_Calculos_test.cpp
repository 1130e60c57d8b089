// What a charge computes when it is stored, with a tax type, decimals, lines and positions that none of the
// usual values would give by chance.
#include "charges/clsAtipico.hpp"
#include "charges/Impuesto.hpp"

#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using pruebas::dia;
    using pruebas::dia_y_hora;
    using pruebas::moneda;
    using testing::ElementsAre;
    using testing::EndsWith;
    using testing::HasSubstr;
    using testing::SizeIs;

    constexpr auto actualiza_linea = "UPDATE Proveedores_Cargos_Atipicos_Lineas SET  Cod_Articulo = ";

    struct Calculos : testing::Test {
        pruebas::Contexto contexto;
        clsAtipico cargo;
        std::vector<std::string>& dichas = contexto.gestion->dichas;

        Calculos()
        {
            contexto.empresa->codigo = 6;
            contexto.empresa->parametros["Proveedores_AtipcosImpuesto"] = "3";
            contexto.empresa->porcentajes[2] = moneda("3");
            contexto.empresa->porcentajes[3] = moneda("6.5");
            cargo.Cod_Ejercicio = 2025;
            cargo.Cod_Almacen = 8;
            cargo.Codigo = "AT250034";
            cargo.Proveedor = 40077;
            cargo.Fecha = dia("03/02/2025");
            cargo.Hora = dia_y_hora("03/02/2025", 17, 40, 9);
            cargo.Importe = moneda("150.25");
            cargo.Tipo = 4;
        }

        /// Three lines, whose own numbers are not their positions.
        void con_tres_lineas()
        {
            for (const std::int32_t articulo : { 2001, 2002, 2003 }) {
                const auto linea = cargo.Lineas->Add(articulo, "Caja", moneda("1.5"), moneda("0.75"));
                linea->NumLinea = articulo + 70;
            }
        }
        /// The end of the header that was inserted: rate, tax, kind.
        std::string fin_de_cabecera()
        {
            dichas.clear();
            EXPECT_FALSE(cargo.Insertar());
            return dichas.at(0).substr(dichas.at(0).rfind(", 0, ") + 5);
        }
        /// From the rate to the key in the header that was changed.
        std::string impuesto_modificado()
        {
            dichas.clear();
            EXPECT_FALSE(cargo.Modificar_Atipico());
            const auto desde = dichas.at(0).find("Impuesto =");
            return dichas.at(0).substr(desde, dichas.at(0).find(" WHERE") - desde);
        }
    };

    TEST_F(Calculos, insertar_asks_for_the_rate_of_the_configured_type)
    {
        cargo.AplicarImpuesto = true;
        EXPECT_EQ(fin_de_cabecera(), "6.5, 9.77, 4)"); // 9.76625
        contexto.empresa->parametros["Proveedores_AtipcosImpuesto"] = std::int32_t{ 2 };
        EXPECT_EQ(fin_de_cabecera(), "3, 4.51, 4)"); // 4.5075
        contexto.empresa->parametros["Proveedores_AtipcosImpuesto"] = "0";
        contexto.empresa->porcentajes[0] = moneda("1.25");
        EXPECT_EQ(fin_de_cabecera(), "1.25, 1.88, 4)"); // what the company says of type 0
    }

    TEST_F(Calculos, insertar_shows_what_the_company_says_of_a_type_that_it_does_not_know)
    {
        cargo.AplicarImpuesto = true;
        contexto.empresa->parametros["Proveedores_AtipcosImpuesto"] = "17";
        EXPECT_TRUE(cargo.Insertar());
        EXPECT_THAT(contexto.avisos->dichos,
            ElementsAre(
                Mensaje{ "No existe el tipo de impuesto 17.", "clsAtipico:Insertar", Icono::critico }));
        EXPECT_THAT(dichas, testing::IsEmpty());
    }

    TEST_F(Calculos, insertar_rounds_the_tax_to_the_decimals_of_the_company)
    {
        cargo.AplicarImpuesto = true;
        contexto.empresa->decimales_importe = 3;
        EXPECT_EQ(fin_de_cabecera(), "6.5, 9.766, 4)");
        contexto.empresa->decimales_importe = 0;
        EXPECT_EQ(fin_de_cabecera(), "6.5, 10, 4)");
        contexto.empresa->decimales_importe = 4;
        EXPECT_EQ(fin_de_cabecera(), "6.5, 9.7663, 4)");
    }

    TEST_F(Calculos, modificar_rounds_the_rate_first_and_takes_the_tax_from_the_rounded_one)
    {
        cargo.Importe = moneda("1000");
        cargo.Impuesto = moneda("3.125");
        EXPECT_EQ(impuesto_modificado(), "Impuesto =3.13, Impuesto_Importe =31.3, Tipo =4"); // not 31.25
        cargo.Impuesto = moneda("-3.125");
        EXPECT_EQ(impuesto_modificado(), "Impuesto =-3.13, Impuesto_Importe =-31.3, Tipo =4");
    }

    TEST_F(Calculos, modificar_rounds_rate_and_tax_to_the_decimals_of_the_company)
    {
        cargo.Impuesto = moneda("6.4567");
        contexto.empresa->decimales_importe = 3;
        EXPECT_EQ(impuesto_modificado(), "Impuesto =6.457, Impuesto_Importe =9.702, Tipo =4"); // 9.7016425
        contexto.empresa->decimales_importe = 0;
        EXPECT_EQ(impuesto_modificado(), "Impuesto =6, Impuesto_Importe =9, Tipo =4"); // 9.015
    }

    TEST_F(Calculos, modificar_neither_asks_for_a_type_nor_looks_at_whether_tax_applies)
    {
        contexto.empresa->parametros["Proveedores_AtipcosImpuesto"] = "17"; // which does not exist
        cargo.Impuesto = moneda("3");
        for (const bool aplica : { true, false }) {
            cargo.AplicarImpuesto = aplica;
            EXPECT_EQ(impuesto_modificado(), "Impuesto =3, Impuesto_Importe =4.51, Tipo =4");
        }
    }

    TEST_F(Calculos, lines_are_numbered_by_position_when_they_are_inserted)
    {
        con_tres_lineas();
        EXPECT_FALSE(cargo.Insertar());
        ASSERT_THAT(dichas, SizeIs(4));
        EXPECT_THAT(dichas[1], HasSubstr("(6, 2025, 8, 'AT250034', 1, 2001, "));
        EXPECT_THAT(dichas[2], HasSubstr("(6, 2025, 8, 'AT250034', 2, 2002, "));
        EXPECT_THAT(dichas[3], HasSubstr("(6, 2025, 8, 'AT250034', 3, 2003, "));
    }

    TEST_F(Calculos, lines_are_numbered_by_position_when_they_are_changed)
    {
        con_tres_lineas();
        EXPECT_FALSE(cargo.Modificar_Atipico());
        ASSERT_THAT(dichas, SizeIs(4));
        for (std::size_t i = 1; i <= 3; ++i) {
            EXPECT_THAT(dichas[i], HasSubstr("Cod_Articulo = " + std::to_string(2000 + i) + ","));
            EXPECT_THAT(dichas[i], EndsWith(" AND Num_Linea =" + std::to_string(i)));
        }
    }

    TEST_F(Calculos, only_the_line_that_was_not_stored_is_inserted_with_its_position)
    {
        con_tres_lineas();
        contexto.gestion->afecta(std::string(actualiza_linea) + "2002", 0);
        EXPECT_FALSE(cargo.Modificar_Atipico());
        ASSERT_THAT(dichas, SizeIs(5)) << "header, three changes and one line more";
        EXPECT_THAT(dichas[2], EndsWith(" AND Num_Linea =2"));
        EXPECT_EQ(dichas[3],
            "EXEC INSERT INTO Proveedores_Cargos_Atipicos_Lineas (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, "
            "Codigo, Num_Linea, Cod_Articulo, Descripcion, Unidades, Precio, Observ) VALUES (6, 2025, 8, "
            "'AT250034', 2, 2002, 'Caja', 1.5, 0.75, '')");
        EXPECT_THAT(dichas[4], EndsWith(" AND Num_Linea =3"));
    }

    TEST_F(Calculos, every_line_that_was_not_stored_is_inserted_with_its_own_position)
    {
        con_tres_lineas();
        for (const auto* articulo : { "2002", "2003" })
            contexto.gestion->afecta(std::string(actualiza_linea) + articulo, 0);
        EXPECT_FALSE(cargo.Modificar_Atipico());
        ASSERT_THAT(dichas, SizeIs(6));
        EXPECT_THAT(dichas[3], HasSubstr("'AT250034', 2, 2002, "));
        EXPECT_THAT(dichas[5], HasSubstr("'AT250034', 3, 2003, "));
    }

    TEST_F(Calculos, a_line_that_cannot_be_changed_ends_it_before_the_later_ones)
    {
        con_tres_lineas();
        contexto.gestion->falla(std::string(actualiza_linea) + "2002", "bloqueada");
        EXPECT_TRUE(cargo.Modificar_Atipico());
        EXPECT_THAT(dichas, SizeIs(3));
        ASSERT_THAT(contexto.avisos->dichos, SizeIs(1));
        EXPECT_EQ(pruebas::linea_nombrada(contexto.avisos->dichos[0].texto, "charges/clsAtipico.cpp"),
            "conexion->Execute(");
    }

    TEST(CuotaDelLimite, the_last_cent_that_there_is_fits_and_one_more_does_not)
    {
        EXPECT_EQ(cuota_impuesto(moneda("922337203685477.58"), moneda("100")), moneda("922337203685477.58"));
        EXPECT_EQ(
            cuota_impuesto(moneda("-922337203685477.58"), moneda("100")), moneda("-922337203685477.58"));
        for (const auto* importe : { "92233720368547.759", "-92233720368547.759" })
            EXPECT_THROW(static_cast<void>(cuota_impuesto(moneda(importe), moneda("1000"))), Error);
    }

}
}
