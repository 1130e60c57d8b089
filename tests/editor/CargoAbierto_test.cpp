#include "editor/CargoAbierto.hpp"

#include "tests/integracion/Banco.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using pruebas::dia;
    using pruebas::moneda;

    TEST(CargoAbierto, the_statements_letter_by_letter)
    {
        const ClaveCargo clave{ 2026, 4, "AT260001" };
        EXPECT_EQ(instruccion_cabecera(clave, 1),
            "SELECT Proveedor, Fecha, Observ, Impuesto FROM Proveedores_Cargos_Atipicos  WHERE Cod_Empresa "
            "=1 "
            "AND Cod_Ejercicio =2026 AND Cod_Almacen =4 AND Codigo ='AT260001'");
        EXPECT_EQ(instruccion_lineas(clave, 1),
            "SELECT lin.*, ISNULL(a.CtaIngresosAtipicos, '') AS CtaAtipicos FROM "
            "Proveedores_Cargos_Atipicos_Lineas lin LEFT JOIN Articulos a ON a.Cod_Empresa =1 AND a.Codigo = "
            "lin.Cod_Articulo WHERE lin.Cod_Empresa =1 AND lin.Cod_Ejercicio =2026 AND lin.Cod_Almacen =4 "
            "AND "
            "lin.Codigo ='AT260001' ORDER BY lin.Num_Linea");
    }

    TEST(CargoAbierto, reads_what_was_stored)
    {
        pruebas::Banco banco;
        const ClaveCargo clave{ 2026, 1, banco.guarda().Codigo };
        const auto cabecera = lee_cabecera(clave);
        ASSERT_TRUE(cabecera.has_value());
        EXPECT_EQ(cabecera->Fecha, dia("21/11/2026"));
        EXPECT_EQ(cabecera->Proveedor, 104);
        EXPECT_EQ(cabecera->Observ, "Palé dañado");
        EXPECT_EQ(cabecera->Impuesto, moneda("7"));
        std::vector<Currency> costos;
        lee_lineas(clave, [&](const LineaAbierta& linea) {
            costos.push_back(linea.linea.Costo);
            EXPECT_EQ(linea.Num_Linea, static_cast<std::int32_t>(costos.size()));
            EXPECT_EQ(linea.linea.Cod_Articulo, 1006);
            EXPECT_EQ(linea.linea.Unidades, moneda("12"));
        });
        EXPECT_THAT(costos, testing::ElementsAre(moneda("5.6325"), moneda("1.1975"), moneda("12.5")));
    }

    TEST(CargoAbierto, lines_come_in_order_with_the_account_of_their_article)
    {
        pruebas::Banco banco;
        const ClaveCargo clave{ 2026, 1, banco.guarda().Codigo };
        auto& gestion = *banco.bases().orvalin;
        gestion.Execute("UPDATE Proveedores_Cargos_Atipicos_Lineas SET Num_Linea = 9 - Num_Linea");
        gestion.Execute(
            "UPDATE Proveedores_Cargos_Atipicos_Lineas SET Cod_Articulo =1003 WHERE Num_Linea =7");
        gestion.Execute(
            "UPDATE Proveedores_Cargos_Atipicos_Lineas SET Cod_Articulo =9999 WHERE Num_Linea =8");
        std::vector<std::pair<std::int32_t, std::string>> leidas;
        lee_lineas(clave,
            [&](const LineaAbierta& linea) { leidas.emplace_back(linea.Num_Linea, linea.CtaAtipicos); });
        EXPECT_THAT(leidas,
            testing::ElementsAre(std::pair{ 6, std::string() }, std::pair{ 7, std::string("75900010") },
                std::pair{ 8, std::string() }));
    }

    TEST(CargoAbierto, null_texts_are_empty)
    {
        pruebas::Banco banco;
        const ClaveCargo clave{ 2026, 1, banco.guarda().Codigo };
        banco.bases().orvalin->Execute("UPDATE Proveedores_Cargos_Atipicos SET Observ = NULL");
        banco.bases().orvalin->Execute(
            "UPDATE Proveedores_Cargos_Atipicos_Lineas SET Observ = NULL, Descripcion = NULL");
        EXPECT_EQ(lee_cabecera(clave).value().Observ, "");
        lee_lineas(clave, [](const LineaAbierta& linea) {
            EXPECT_EQ(linea.linea.Descripcion, "");
            EXPECT_EQ(linea.linea.Observaciones, "");
        });
    }

    TEST(CargoAbierto, null_numbers_and_dates_are_empty)
    {
        const pruebas::Contexto contexto; // no database of ours stores them, a host's may
        const Variant nulo = Nulo{};
        contexto.gestion->responde("SELECT Proveedor, Fecha",
            { { "Proveedor", "Fecha", "Observ", "Impuesto" }, { { nulo, nulo, nulo, nulo } } });
        contexto.gestion->responde("SELECT lin.*",
            { { "Num_Linea", "Cod_Articulo", "Descripcion", "Observ", "Unidades", "Precio", "CtaAtipicos" },
                { { nulo, nulo, nulo, nulo, nulo, nulo, nulo } } });
        const ClaveCargo clave{ 2026, 1, "AT260001" };
        const auto cabecera = lee_cabecera(clave).value();
        EXPECT_EQ(cabecera.Proveedor, 0);
        EXPECT_EQ(cabecera.Fecha, Date());
        EXPECT_EQ(cabecera.Observ, "");
        EXPECT_EQ(cabecera.Impuesto, Currency());
        int lineas = 0;
        lee_lineas(clave, [&](const LineaAbierta& leida) {
            ++lineas;
            EXPECT_EQ(leida.Num_Linea, 0);
            EXPECT_EQ(leida.linea.Cod_Articulo, 0);
            EXPECT_EQ(leida.linea.Unidades, Currency());
            EXPECT_EQ(leida.linea.Costo, Currency());
            EXPECT_EQ(leida.CtaAtipicos, "");
        });
        EXPECT_EQ(lineas, 1);
    }

    TEST(CargoAbierto, a_charge_that_is_not_there_has_no_header_and_no_lines)
    {
        const pruebas::Banco banco;
        const ClaveCargo clave{ 2026, 1, "AT269999" };
        EXPECT_FALSE(lee_cabecera(clave).has_value());
        lee_lineas(clave, [](const LineaAbierta&) { FAIL() << "a line of no charge"; });
    }

}
}
