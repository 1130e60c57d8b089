#include "editor/EdicionAtipico.hpp"

#include "editor/GuardarAtipico.hpp"
#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using pruebas::moneda;
    using testing::ElementsAre;

    struct EdicionDeAtipico : testing::Test {
        pruebas::Contexto contexto;
        EdicionAtipico edicion;
        std::vector<std::int32_t> buscados;

        EdicionDeAtipico() { edicion.Nuevo_Atipico(); }

        std::int32_t acepta(std::int32_t articulo, const char* descripcion, const char* unidades,
            const char* costo, const char* observaciones = "")
        {
            return edicion.Aceptar_Linea(
                { articulo, descripcion, observaciones, moneda(unidades), moneda(costo) },
                [this](std::int32_t codigo) {
                    buscados.push_back(codigo);
                    return "7590000" + std::to_string(codigo);
                });
        }

        std::vector<std::string> filas() const
        {
            std::vector<std::string> textos;
            for (const auto& fila : edicion.filas())
                textos.push_back(fila.texto(4));
            return textos;
        }

        std::vector<std::string> descripciones() const // of the charge itself
        {
            std::vector<std::string> textos;
            auto& cargo = const_cast<EdicionAtipico&>(edicion).cargo();
            for (std::int16_t i = 1; i <= cargo.Lineas->Count(); ++i)
                textos.push_back(cargo.Lineas->Item(i)->Descripcion);
            return textos;
        }
    };

    std::int32_t numero_de_error(const std::function<void()>& trabajo)
    {
        try {
            trabajo();
        } catch (const Error& error) {
            return error.numero();
        }
        return 0;
    }

    TEST_F(EdicionDeAtipico, begins_with_a_new_line_of_this_year)
    {
        EXPECT_EQ(edicion.cargo().Cod_Ejercicio, 2026);
        EXPECT_TRUE(edicion.bolNuevaLinea());
        EXPECT_EQ(edicion.intLineaActual(), 0);
        EXPECT_EQ(edicion.Total(), Currency{});
    }

    TEST_F(EdicionDeAtipico, a_line_goes_into_the_grid_and_into_the_charge)
    {
        EXPECT_EQ(acepta(6, "Lata", "12.485", "9.75", "rota"), 1);
        EXPECT_EQ(acepta(0, "Porte", "1", "1234.5"), 2);
        EXPECT_THAT(filas(),
            ElementsAre("6\tLata\trota\t12,49\t9,7500\t121,73\t75900006",
                "0\tPorte\t\t1,00\t1.234,5000\t1.234,50\t"));
        EXPECT_THAT(buscados, ElementsAre(6)) << "a line without article asks for no account";
        const auto linea = edicion.cargo().Lineas->Item(1);
        EXPECT_EQ(linea->Cod_Articulo, 6);
        EXPECT_EQ(linea->Descripcion, "Lata");
        EXPECT_EQ(linea->Observaciones, "rota");
        EXPECT_EQ(linea->Unidades, moneda("12.485")) << "as typed, whatever the grid shows";
        EXPECT_EQ(linea->Precio, moneda("9.75"));
        EXPECT_EQ(edicion.Total(), moneda("1356.23"));
    }

    TEST_F(EdicionDeAtipico, a_line_taken_back_starts_from_what_is_shown)
    {
        acepta(6, "Lata", "12.485", "9.75", "rota");
        const auto linea = edicion.Modificar_Linea(1);
        EXPECT_EQ(linea.Unidades, moneda("12.49"));
        EXPECT_EQ(linea.Costo, moneda("9.75"));
        EXPECT_EQ(linea.Descripcion, "Lata");
        EXPECT_EQ(linea.Observaciones, "rota");
        EXPECT_FALSE(edicion.bolNuevaLinea());
        EXPECT_EQ(edicion.intLineaActual(), 1);
    }

    TEST_F(EdicionDeAtipico, a_changed_line_keeps_its_place_and_its_hidden_account)
    {
        acepta(6, "Lata", "2", "10");
        acepta(7, "Caja", "1", "5");
        static_cast<void>(edicion.Modificar_Linea(1));
        EXPECT_EQ(acepta(8, "Bote", "3", "10"), 1);
        EXPECT_THAT(filas(),
            ElementsAre(
                "8\tBote\t\t3,00\t10,0000\t30,00\t75900006", "7\tCaja\t\t1,00\t5,0000\t5,00\t75900007"));
        EXPECT_THAT(descripciones(), ElementsAre("Bote", "Caja"));
        EXPECT_EQ(edicion.Total(), moneda("35"));
        EXPECT_TRUE(edicion.bolNuevaLinea()) << "the next line is a new one";
        EXPECT_EQ(acepta(0, "Otra", "1", "1"), 3);
    }

    TEST_F(EdicionDeAtipico, a_change_that_is_given_up_leaves_the_line_as_it_is)
    {
        acepta(6, "Lata", "2", "10");
        static_cast<void>(edicion.Modificar_Linea(1));
        edicion.Dejar_Linea();
        EXPECT_TRUE(edicion.bolNuevaLinea());
        EXPECT_EQ(edicion.intLineaActual(), 0);
        EXPECT_EQ(acepta(7, "Caja", "1", "5"), 2);
        EXPECT_THAT(descripciones(), ElementsAre("Lata", "Caja"));
        EXPECT_EQ(edicion.Total(), moneda("25"));
    }

    TEST_F(EdicionDeAtipico, removing_the_line_being_changed_ends_the_change)
    {
        acepta(0, "A", "1", "1");
        acepta(0, "B", "1", "2");
        static_cast<void>(edicion.Modificar_Linea(2));
        edicion.Eliminar_Linea(2);
        EXPECT_TRUE(edicion.bolNuevaLinea());
        EXPECT_EQ(edicion.intLineaActual(), 0);
        acepta(0, "C", "1", "3");
        EXPECT_THAT(descripciones(), ElementsAre("A", "C"));
        EXPECT_EQ(edicion.Total(), moneda("4"));
    }

    TEST_F(EdicionDeAtipico, removing_a_line_above_moves_the_change_up)
    {
        acepta(0, "A", "1", "1");
        acepta(0, "B", "1", "2");
        acepta(0, "C", "1", "3");
        static_cast<void>(edicion.Modificar_Linea(3));
        edicion.Eliminar_Linea(1);
        EXPECT_EQ(edicion.intLineaActual(), 2);
        EXPECT_EQ(acepta(0, "D", "1", "4"), 2);
        EXPECT_THAT(descripciones(), ElementsAre("B", "D"));
        EXPECT_EQ(edicion.Total(), moneda("6"));
    }

    TEST_F(EdicionDeAtipico, removing_a_line_below_leaves_the_change_where_it_is)
    {
        acepta(0, "A", "1", "1");
        acepta(0, "B", "1", "2");
        static_cast<void>(edicion.Modificar_Linea(1));
        edicion.Eliminar_Linea(2);
        EXPECT_EQ(edicion.intLineaActual(), 1);
        acepta(0, "C", "1", "3");
        EXPECT_THAT(descripciones(), ElementsAre("C"));
    }

    TEST_F(EdicionDeAtipico, a_new_charge_forgets_lines_and_change)
    {
        acepta(0, "A", "1", "1");
        static_cast<void>(edicion.Modificar_Linea(1));
        edicion.Nuevo_Atipico();
        EXPECT_TRUE(edicion.filas().empty());
        EXPECT_EQ(edicion.cargo().Lineas->Count(), 0);
        EXPECT_TRUE(edicion.bolNuevaLinea());
        EXPECT_EQ(edicion.intLineaActual(), 0);
        EXPECT_EQ(edicion.Total(), Currency{});
        EXPECT_EQ(acepta(0, "B", "1", "1"), 1);
    }

    TEST_F(EdicionDeAtipico, an_amount_that_does_not_fit_changes_nothing)
    {
        acepta(0, "A", "1", "1");
        EXPECT_EQ(numero_de_error([&] { acepta(0, "B", "900000000000", "900000000000"); }), 6);
        static_cast<void>(edicion.Modificar_Linea(1));
        EXPECT_EQ(numero_de_error([&] { acepta(0, "B", "900000000000", "900000000000"); }), 6);
        EXPECT_THAT(filas(), ElementsAre("0\tA\t\t1,00\t1,0000\t1,00\t"));
        EXPECT_THAT(descripciones(), ElementsAre("A"));
        EXPECT_EQ(edicion.intLineaActual(), 1) << "the change goes on";
    }

    TEST_F(EdicionDeAtipico, a_failing_account_changes_nothing)
    {
        const auto falla = [](std::int32_t) -> std::string { throw Error(1, "prueba", "sin base"); };
        EXPECT_EQ(numero_de_error([&] {
            edicion.Aceptar_Linea({ 6, "Lata", "", moneda("1"), moneda("1") }, falla);
        }),
            1);
        EXPECT_TRUE(edicion.filas().empty());
        EXPECT_EQ(edicion.cargo().Lineas->Count(), 0);
    }

    TEST_F(EdicionDeAtipico, a_tab_is_kept_in_the_charge_and_a_blank_in_the_row)
    {
        acepta(0, "dos\ttrozos", "1", "1", "salto\nde línea");
        EXPECT_THAT(filas(), ElementsAre("0\tdos trozos\tsalto\nde línea\t1,00\t1,0000\t1,00\t"));
        EXPECT_THAT(descripciones(), ElementsAre("dos\ttrozos"));
        EXPECT_EQ(edicion.Modificar_Linea(1).Observaciones, "salto\nde línea");
    }

    TEST_F(EdicionDeAtipico, a_remark_goes_to_the_charge_and_to_the_row)
    {
        acepta(0, "A", "1", "1");
        edicion.Comentar_Linea(1, "LARGO");
        EXPECT_EQ(edicion.cargo().Lineas->Item(1)->Observaciones, "LARGO");
        EXPECT_THAT(filas(), ElementsAre("0\tA\tLARGO\t1,00\t1,0000\t1,00\t"));
    }

    TEST_F(EdicionDeAtipico, rows_that_are_not_there_are_refused)
    {
        acepta(0, "A", "1", "1");
        for (const std::int32_t fila : { -1, 0, 2 }) {
            EXPECT_EQ(numero_de_error([&] { static_cast<void>(edicion.Modificar_Linea(fila)); }), 5);
            EXPECT_EQ(numero_de_error([&] { edicion.Eliminar_Linea(fila); }), 5);
            EXPECT_EQ(numero_de_error([&] { edicion.Comentar_Linea(fila, ""); }), 5);
        }
        EXPECT_TRUE(edicion.bolNuevaLinea());
    }

    TEST_F(EdicionDeAtipico, holds_32767_lines_and_no_more)
    {
        for (int i = 0; i < 32767; ++i)
            acepta(0, "", "1", "1");
        EXPECT_EQ(numero_de_error([&] { acepta(0, "", "1", "1"); }), 6);
        EXPECT_EQ(edicion.filas().size(), 32767U);
        EXPECT_EQ(edicion.cargo().Lineas->Count(), 32767);
        EXPECT_EQ(edicion.Total(), moneda("32767"));
    }

    TEST_F(EdicionDeAtipico, a_stored_line_is_loaded_with_its_number_and_account)
    {
        edicion.Cargar_Linea({ 6, "Lata", "rota", moneda("2.5"), moneda("3.3333") }, 7, "75900010");
        EXPECT_THAT(filas(), ElementsAre("6\tLata\trota\t2,50\t3,3333\t8,33\t75900010"));
        EXPECT_EQ(edicion.cargo().Lineas->Item(1)->NumLinea, 7);
        EXPECT_EQ(edicion.Total(), moneda("8.33"));
    }

    TEST_F(EdicionDeAtipico, hands_total_amounts_and_accounts_to_the_save)
    {
        acepta(6, "Lata", "2", "10");
        acepta(0, "Porte", "1", "5");
        CargoTecleado tecleado;
        edicion.Rellenar(tecleado);
        EXPECT_EQ(tecleado.Total, moneda("25"));
        ASSERT_EQ(tecleado.Cargos.size(), 2U);
        EXPECT_EQ(tecleado.Cargos[0].Importe, moneda("20"));
        EXPECT_EQ(tecleado.Cargos[0].Cuenta, "75900006");
        EXPECT_EQ(tecleado.Cargos[1].Cuenta, "");
    }

}
}
