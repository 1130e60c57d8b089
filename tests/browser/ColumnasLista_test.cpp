#include "browser/ListaAtipicos.hpp"

#include "tests/browser/CatorceColumnas.hpp"
#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using pruebas::dia;
    using pruebas::moneda;
    using testing::ElementsAre;

    const std::vector<std::string> campos{ "Codigo", "Cod_Almacen", "Nombre_Almacen", "Proveedor",
        "Nombre_Proveedor", "Fecha", "Importe", "Impuesto_Importe", "Impuesto", "Asiento", "Usuario",
        "Nombre_Usuario", "Observ", "EmpContable" };

    std::vector<std::string> filas_de(ColumnasLista columnas)
    {
        const pruebas::Contexto contexto;
        const Variant nulo{ Nulo{} };
        contexto.gestion->responde("SELECT pc.*",
            { campos,
                { { "AT1", 3, "A", 4, "P", dia("21/11/2025"), moneda("1"), moneda("2"), moneda("3"), 5, 6,
                      "U", "O", 7 },
                    { "AT2", nulo, nulo, nulo, nulo, nulo, nulo, nulo, nulo, nulo, nulo, nulo, nulo,
                        nulo } } });
        std::vector<std::string> filas;
        Cargar_Atipicos(
            { "01/01/2025", "31/12/2025" },
            [&](const CargoListado& cargo) {
                anexa_fila(filas.emplace_back(), cargo, columnas);
                std::string celdas;
                for (const auto& celda : celdas_lista(cargo, columnas))
                    celdas += celda + '\t';
                EXPECT_EQ(celdas, filas.back() + '\t') << "cell by cell as in one row";
            },
            columnas);
        return filas;
    }

    TEST(ColumnasLista, a_fourteenth_column_is_read_and_shown_behind_the_others)
    {
        EXPECT_THAT(filas_de(pruebas::catorce_columnas()),
            ElementsAre("AT1\t3\tA\t4\tP\t21/11/2025\t1,00\t2,00\t3,00 %\t5\t6\tU\tO\t7",
                "AT2\t0\t\t0\t\t30/12/1899\t0,00\t0,00\t0,00 %\t\t0\t\t\t0"));
    }

    TEST(ColumnasLista, what_the_grid_gains_in_width_goes_to_texts_and_all_of_it)
    {
        int repartido = 0;
        for (const auto& columna : columnas_lista()) {
            EXPECT_TRUE(es_texto(columna) || columna.porcentaje == 0) << columna.nombre;
            repartido += columna.porcentaje;
        }
        EXPECT_EQ(repartido, 100);
    }

    TEST(ColumnasLista, a_column_stands_where_its_line_does)
    {
        auto columnas = pruebas::catorce_columnas();
        std::rotate(columnas.begin(), columnas.end() - 1, columnas.end());
        columnas.resize(3);
        EXPECT_THAT(filas_de(columnas), ElementsAre("7\tAT1\t3", "0\tAT2\t0"));
    }

    TEST(ColumnasLista, values_without_a_member_can_be_of_every_type)
    {
        const std::vector<ColumnaLista> columnas{
            { "Observ", TipoColumna::texto, OtroDato{ 1 }, "", "", "", 0 },
            { "Fecha", TipoColumna::fecha, OtroDato{ 0 }, "", "", "", 0 },
            { "Impuesto", TipoColumna::porcentaje, OtroDato{ 3 }, "", "", "", 0 },
            { "Asiento", TipoColumna::numero_o_nada, OtroDato{ 2 }, "", "", "", 0 },
        };
        EXPECT_THAT(filas_de(columnas), ElementsAre("O\t21/11/2025\t3,00 %\t5", "\t30/12/1899\t0,00 %\t"));
    }

    TEST(ColumnasLista, every_column_keeps_its_value_where_its_type_says)
    {
        const CargoListado cargo;
        for (const auto& columna : columnas_lista())
            EXPECT_NO_THROW(static_cast<void>(celdas_lista(cargo, { &columna, 1 }))) << columna.campo;
    }

    TEST(ColumnasLista, no_two_columns_are_called_the_same_where_they_stand_alone)
    {
        std::vector<std::string> nombres;
        std::vector<std::string> claves;
        for (const auto& columna : columnas_lista()) {
            nombres.emplace_back(columna.nombre);
            claves.emplace_back(columna.clave);
        }
        for (auto* todos : { &nombres, &claves }) {
            std::sort(todos->begin(), todos->end());
            EXPECT_EQ(std::adjacent_find(todos->begin(), todos->end()), todos->end());
        }
    }

    TEST(TotalesLista, adds_up_what_the_columns_say)
    {
        TotalesLista totales;
        EXPECT_EQ(totales.cargos(), 0U);
        CargoListado cargo;
        cargo.Impuesto = moneda("7");
        for (const auto* importe : { "10.05", "-0.05", "3.3333" }) {
            cargo.Importe = moneda(importe);
            cargo.Impuesto_Importe = moneda("0.7");
            totales.suma(cargo);
        }
        EXPECT_EQ(totales.cargos(), 3U);
        ASSERT_EQ(totales.sumas().size(), 2U);
        EXPECT_EQ(totales.sumas()[0].first->campo, std::string("Importe"));
        EXPECT_EQ(totales.sumas()[0].second, moneda("13.3333"));
        EXPECT_EQ(totales.sumas()[1].first->campo, std::string("Impuesto_Importe"));
        EXPECT_EQ(totales.sumas()[1].second, moneda("2.1"));
    }

    TEST(TotalesLista, a_sum_that_does_not_fit_is_missing_and_the_others_stand)
    {
        TotalesLista totales;
        CargoListado cargo;
        cargo.Importe = moneda("900000000000000");
        cargo.Impuesto_Importe = moneda("0.7");
        for (int i = 0; i < 3; ++i)
            totales.suma(cargo);
        EXPECT_EQ(totales.cargos(), 3U);
        EXPECT_FALSE(totales.sumas()[0].second.has_value());
        EXPECT_EQ(totales.sumas()[1].second, moneda("2.1"));
    }

}
}
