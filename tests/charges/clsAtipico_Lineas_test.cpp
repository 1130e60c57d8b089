#include "charges/clsAtipico_Lineas.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    clsAtipico_Lineas tres_lineas()
    {
        clsAtipico_Lineas lineas;
        lineas.Add(1, "uno");
        lineas.Add(2, "dos");
        lineas.Add(3, "tres");
        return lineas;
    }

    std::vector<std::int32_t> articulos(const clsAtipico_Lineas& lineas)
    {
        std::vector<std::int32_t> codigos;
        for (std::int16_t i = 1; i <= lineas.Count(); ++i)
            codigos.push_back(lineas.Item(i)->Cod_Articulo);
        return codigos;
    }

    template <class Uso> std::int32_t numero_de_error(Uso uso)
    {
        try {
            uso();
        } catch (const Error& error) {
            return error.numero();
        }
        return 0;
    }

    TEST(clsAtipico_Lineas, add_fills_the_line_from_its_arguments_and_leaves_its_number_0)
    {
        clsAtipico_Lineas lineas;
        const auto linea
            = lineas.Add(7, "Botella rota", Currency::de_texto("2.5"), Currency::de_texto("3"), "Palé 4", 99);
        EXPECT_EQ(linea->NumLinea, 0);
        EXPECT_EQ(linea->Cod_Articulo, 7);
        EXPECT_EQ(linea->Descripcion, "Botella rota");
        EXPECT_EQ(linea->Unidades, Currency::de_crudo(25'000));
        EXPECT_EQ(linea->Precio, Currency::de_crudo(30'000));
        EXPECT_EQ(linea->Observaciones, "Palé 4");
        EXPECT_EQ(linea->Id, 99);
        EXPECT_EQ(lineas.Item(1), linea) << "the stored object itself, not a copy";
    }

    TEST(clsAtipico_Lineas, add_without_arguments_gives_an_empty_line)
    {
        clsAtipico_Lineas lineas;
        const auto linea = lineas.Add();
        EXPECT_EQ(linea->Cod_Articulo, 0);
        EXPECT_EQ(linea->Descripcion, "");
        EXPECT_EQ(linea->Unidades, Currency());
        EXPECT_EQ(lineas.Count(), 1);
    }

    TEST(clsAtipico_Lineas, add_after_position_2_of_three_gives_1_2_new_3)
    {
        auto lineas = tres_lineas();
        lineas.Add(9, "", {}, {}, "", 0, 2);
        EXPECT_THAT(articulos(lineas), testing::ElementsAre(1, 2, 9, 3));
    }

    TEST(clsAtipico_Lineas, add_after_the_last_position_appends)
    {
        auto lineas = tres_lineas();
        lineas.Add(9, "", {}, {}, "", 0, 3);
        EXPECT_THAT(articulos(lineas), testing::ElementsAre(1, 2, 3, 9));
    }

    TEST(clsAtipico_Lineas, add_after_a_position_that_is_not_there_is_error_5)
    {
        auto lineas = tres_lineas();
        EXPECT_EQ(numero_de_error([&] { lineas.Add(9, "", {}, {}, "", 0, 4); }), 5);
        EXPECT_EQ(numero_de_error([&] { lineas.Add(9, "", {}, {}, "", 0, -1); }), 5);
        EXPECT_EQ(lineas.Count(), 3);
    }

    TEST(clsAtipico_Lineas, remove_moves_later_lines_up)
    {
        auto lineas = tres_lineas();
        lineas.Remove(2);
        EXPECT_THAT(articulos(lineas), testing::ElementsAre(1, 3));
    }

    TEST(clsAtipico_Lineas, item_and_remove_outside_1_to_count_are_error_5)
    {
        auto lineas = tres_lineas();
        for (const std::int16_t fuera : { std::int16_t{ 0 }, std::int16_t{ -1 }, std::int16_t{ 4 } }) {
            EXPECT_EQ(numero_de_error([&] { static_cast<void>(lineas.Item(fuera)); }), 5);
            EXPECT_EQ(numero_de_error([&] { lineas.Remove(fuera); }), 5);
        }
        EXPECT_EQ(lineas.Count(), 3);
    }

    TEST(clsAtipico_Lineas, clear_gives_count_0_and_lines_obtained_before_stay_valid)
    {
        auto lineas = tres_lineas();
        const auto segunda = lineas.Item(2);
        lineas.Clear();
        EXPECT_EQ(lineas.Count(), 0);
        EXPECT_EQ(segunda->Descripcion, "dos");
        EXPECT_EQ(numero_de_error([&] { static_cast<void>(lineas.Item(1)); }), 5);
    }

    TEST(clsAtipico_Lineas, add_by_class_copies_all_seven_fields_and_does_not_store_the_given_object)
    {
        clsAtipico_Linea dada;
        dada.NumLinea = 5;
        dada.Cod_Articulo = 6;
        dada.Descripcion = "d";
        dada.Unidades = Currency::de_crudo(1);
        dada.Precio = Currency::de_crudo(2);
        dada.Observaciones = "o";
        dada.Id = 7;
        clsAtipico_Lineas lineas;
        lineas.AddByClass(dada);
        dada.Descripcion = "cambiada";
        const auto copia = lineas.Item(1);
        EXPECT_EQ(copia->NumLinea, 5);
        EXPECT_EQ(copia->Cod_Articulo, 6);
        EXPECT_EQ(copia->Descripcion, "d");
        EXPECT_EQ(copia->Unidades, Currency::de_crudo(1));
        EXPECT_EQ(copia->Precio, Currency::de_crudo(2));
        EXPECT_EQ(copia->Observaciones, "o");
        EXPECT_EQ(copia->Id, 7);
    }

    TEST(clsAtipico_Lineas, clone_shares_no_line_with_its_source)
    {
        auto lineas = tres_lineas();
        lineas.Item(1)->Id = 44;
        const auto copia = lineas.Clone();
        EXPECT_THAT(articulos(*copia), testing::ElementsAre(1, 2, 3));
        EXPECT_EQ(copia->Item(1)->Id, 44) << "the mark survives";
        copia->Item(1)->Descripcion = "otra";
        EXPECT_EQ(lineas.Item(1)->Descripcion, "uno");
    }

    TEST(clsAtipico_Lineas, clone_of_an_empty_collection_is_another_empty_collection)
    {
        const clsAtipico_Lineas vacia;
        const auto copia = vacia.Clone();
        EXPECT_EQ(copia->Count(), 0);
        EXPECT_NE(copia.get(), &vacia);
    }

    TEST(clsAtipico_Lineas, positions_beyond_32767_overflow)
    {
        clsAtipico_Lineas lineas;
        const clsAtipico_Linea linea;
        for (int i = 0; i < 32'767; ++i)
            lineas.AddByClass(linea);
        EXPECT_EQ(lineas.Clone()->Count(), 32'767);
        lineas.AddByClass(linea);
        EXPECT_EQ(numero_de_error([&] { static_cast<void>(lineas.Clone()); }), 6);
    }

    TEST(clsAtipico_Linea, copiar_takes_every_field_but_the_line_number)
    {
        clsAtipico_Linea origen;
        origen.NumLinea = 3;
        origen.Cod_Articulo = 8;
        origen.Descripcion = "d";
        origen.Unidades = Currency::de_crudo(1);
        origen.Precio = Currency::de_crudo(2);
        origen.Observaciones = "o";
        origen.Id = 9;
        clsAtipico_Linea destino;
        destino.NumLinea = 1;
        destino.Copiar(origen);
        EXPECT_EQ(destino.NumLinea, 1);
        EXPECT_EQ(destino.Cod_Articulo, 8);
        EXPECT_EQ(destino.Descripcion, "d");
        EXPECT_EQ(destino.Unidades, Currency::de_crudo(1));
        EXPECT_EQ(destino.Precio, Currency::de_crudo(2));
        EXPECT_EQ(destino.Observaciones, "o");
        EXPECT_EQ(destino.Id, 9);
    }

}
}
