#include "host/reclamaciones/FicheroReclamaciones.hpp"

#include "tests/app/Reclamaciones.hpp"
#include "tests/app/ReclamacionesLeidas.hpp"

#include <gmock/gmock.h>

namespace atipicos::app {
namespace {

    using pruebas::en_trozos;
    using pruebas::lee_reclamaciones;
    using testing::ElementsAre;
    using testing::IsEmpty;
    using testing::SizeIs;

    std::vector<std::string> textos(const std::vector<Reparo>& reparos)
    {
        std::vector<std::string> resultado;
        for (const auto& reparo : reparos)
            resultado.push_back(std::to_string(reparo.fila) + " " + reparo.columna + ": " + reparo.motivo);
        return resultado;
    }

    std::string rechazo(const std::string& contenido)
    {
        try {
            static_cast<void>(lee_reclamaciones(contenido));
        } catch (const Error& error) {
            return error.descripcion();
        }
        return "read";
    }

    TEST(FicheroReclamaciones, consecutive_rows_with_one_reference_are_one_charge)
    {
        const auto leidas = lee_reclamaciones(pruebas::cabecera
            + "R1;3;101;21/11/2026;Palé dañado;S;1001;Agua;2,5;1.234,5678;lote 1\n"
              "R1;;;;;;;Portes;-1;0,5;\n"
              "\n"
              "R2;1;102;01/12/2026;;;;Rappel;1;100;\n");
        EXPECT_THAT(leidas.errores, IsEmpty());
        ASSERT_THAT(leidas.todas, SizeIs(2));
        const auto& uno = leidas.todas[0];
        EXPECT_EQ(uno.referencia, "R1");
        EXPECT_EQ(uno.almacen, 3);
        EXPECT_EQ(uno.proveedor, 101);
        EXPECT_EQ(uno.fecha.texto(), "21/11/2026");
        EXPECT_EQ(uno.observaciones, "Palé dañado");
        EXPECT_TRUE(uno.franquiciado);
        ASSERT_THAT(uno.lineas, SizeIs(2));
        EXPECT_EQ(uno.lineas[0].articulo, 1001);
        EXPECT_EQ(uno.lineas[0].unidades.texto(), "2.5000");
        EXPECT_EQ(uno.lineas[0].costo.texto(), "1234.5678");
        EXPECT_EQ(uno.lineas[1].articulo, 0);
        EXPECT_EQ(uno.lineas[1].unidades.texto(), "-1.0000");
        EXPECT_EQ(uno.lineas[1].fila, 3);
        EXPECT_EQ(leidas.todas[1].fila, 5) << "the blank row counts";
        EXPECT_FALSE(leidas.todas[1].franquiciado);
    }

    TEST(FicheroReclamaciones, a_mark_windows_line_ends_and_columns_in_another_order_are_read)
    {
        const auto leidas = lee_reclamaciones("\xEF\xBB\xBF"
                                              "costo;unidades;descripcion;articulo;franquiciado;"
                                              "observaciones;fecha;proveedor;almacen;referencia;"
                                              "observaciones_linea\r\n2;3;Año;;n;;21/11/2026;101;1;R1;x\r\n");
        EXPECT_THAT(leidas.errores, IsEmpty());
        ASSERT_THAT(leidas.todas, SizeIs(1));
        EXPECT_EQ(leidas.todas[0].lineas.at(0).descripcion, "Año");
        EXPECT_EQ(leidas.todas[0].lineas.at(0).costo.texto(), "2.0000");
    }

    TEST(FicheroReclamaciones, a_carriage_return_alone_ends_a_row_too_and_rows_are_counted)
    {
        LectorCsv lector(en_trozos("a;b\rc;d\r\re;f\r\ng;h\n"));
        std::vector<int> numeros;
        for (FilaCsv fila; lector.lee(fila);)
            numeros.push_back(fila.numero);
        EXPECT_THAT(numeros, testing::ElementsAre(1, 2, 4, 5));
    }

    TEST(FicheroReclamaciones, is_the_same_in_whatever_pieces_it_comes)
    {
        const std::string texto = "\xEF\xBB\xBF"
                                  "a;b\r\n\r\n\"c\r\n\"\"d\"\"\";e\r\r\"f\r\rg\"\n\nñ;\"\"\n;\nfin;ya";
        const auto lee = [&](std::size_t tamano) {
            std::vector<std::string> filas;
            LectorCsv lector(en_trozos(texto, tamano));
            for (FilaCsv fila; lector.lee(fila);) {
                filas.push_back(std::to_string(fila.numero));
                for (const auto& campo : fila.campos)
                    filas.back() += "|" + campo;
            }
            return filas;
        };
        const auto entero = lee(texto.size());
        EXPECT_THAT(entero, ElementsAre("1|a|b", "3|c\r\n\"d\"|e", "6|f\r\rg", "10|ñ|", "11||", "12|fin|ya"));
        for (std::size_t tamano = 1; tamano < texto.size(); ++tamano)
            EXPECT_EQ(lee(tamano), entero) << tamano;
    }

    TEST(FicheroReclamaciones, no_more_of_it_is_asked_for_than_the_charge_needs)
    {
        const auto fila = [](int i) { return "R" + std::to_string(i) + ";1;101;21/11/2026;;;;Agua;1;1;\n"; };
        int pedidos = 0;
        std::string trozo;
        LectorReclamaciones lector([&]() -> std::string_view {
            trozo = pedidos == 0 ? pruebas::cabecera : fila(pedidos);
            ++pedidos;
            return trozo;
        });
        for (int i = 1; i < 50; ++i) {
            EXPECT_EQ(lector.siguiente().value().fila, i + 1);
            EXPECT_EQ(pedidos, i + 2) << "its row, and the next one to know that it has no other";
        }
    }

    TEST(FicheroReclamaciones, quoted_fields_hold_separators_quotes_and_line_breaks)
    {
        const auto leidas = lee_reclamaciones(pruebas::cabecera
            + "R1;1;101;21/11/2026;\"uno; \"\"dos\"\"\ntres\";N;;Agua;1;1;\n"
              "R2;1;101;31/02/2026;;N;;Agua;1;1;\n");
        EXPECT_EQ(leidas.todas.at(0).observaciones, "uno; \"dos\"\ntres");
        EXPECT_THAT(
            textos(leidas.errores), ElementsAre("4 fecha: «31/02/2026» no es una fecha (dd/mm/aaaa)."))
            << "rows are those of the file, over the broken field too";
    }

    TEST(FicheroReclamaciones, a_quote_becomes_an_acute_accent_and_is_told)
    {
        const auto leidas
            = lee_reclamaciones(pruebas::cabecera + "R1;1;101;21/11/2026;;;;Peña d'Or;1;1;l'any\n");
        EXPECT_EQ(leidas.todas.at(0).lineas.at(0).descripcion, "Peña d´Or");
        EXPECT_THAT(textos(leidas.notas),
            ElementsAre("2 descripcion: el apóstrofo (') se ha cambiado por un acento (´).",
                "2 observaciones_linea: el apóstrofo (') se ha cambiado por un acento (´)."));
        EXPECT_TRUE(leidas.todas[0].valida);
    }

    struct Mala {
        const char* nombre;
        std::string fila;
        const char* error;
    };
    void PrintTo(const Mala& mala, std::ostream* salida) { *salida << mala.nombre; }

    struct FilaMala : testing::TestWithParam<Mala> { };

    TEST_P(FilaMala, is_told_with_its_place_and_reason_and_spoils_its_charge_only)
    {
        const auto leidas = lee_reclamaciones(pruebas::cabecera + "A;1;101;21/11/2026;;;;x;1;1;\n"
            + GetParam().fila + "\nC;1;101;21/11/2026;;;;x;1;1;\n");
        EXPECT_THAT(textos(leidas.errores), ElementsAre(GetParam().error));
        ASSERT_THAT(leidas.todas, SizeIs(3));
        EXPECT_TRUE(leidas.todas[0].valida);
        EXPECT_FALSE(leidas.todas[1].valida);
        EXPECT_TRUE(leidas.todas[2].valida);
    }

    INSTANTIATE_TEST_SUITE_P(filas, FilaMala,
        testing::Values(Mala{ "number", "B;1;101;21/11/2026;;;;x;1,2,3;1;",
                            "3 unidades: «1,2,3» no es un número (como 1.234,56)." },
            Mala{ "letters", "B;1;101;21/11/2026;;;;x;1;uno;",
                "3 costo: «uno» no es un número (como 1.234,56)." },
            Mala{ "empty_number", "B;1;101;21/11/2026;;;;x;;1;",
                "3 unidades: «» no es un número (como 1.234,56)." },
            Mala{ "thousands", "B;1;101;21/11/2026;;;;x;1.23;1;",
                "3 unidades: «1.23» no es un número (como 1.234,56)." },
            Mala{ "five_decimals", "B;1;101;21/11/2026;;;;x;1;0,00001;",
                "3 costo: «0,00001» tiene más de cuatro decimales." },
            Mala{ "beyond_currency", "B;1;101;21/11/2026;;;;x;1;922337203685477,5808;",
                "3 costo: «922337203685477,5808» no cabe en un importe." },
            Mala{ "impossible_date", "B;1;101;31/02/2026;;;;x;1;1;",
                "3 fecha: «31/02/2026» no es una fecha (dd/mm/aaaa)." },
            Mala{ "two_digit_year", "B;1;101;21/11/26;;;;x;1;1;",
                "3 fecha: «21/11/26» no es una fecha (dd/mm/aaaa)." },
            Mala{ "warehouse_range", "B;40000;101;21/11/2026;;;;x;1;1;",
                "3 almacen: «40000» no es un código (un número de 1 a 32767)." },
            Mala{ "no_supplier", "B;1;;21/11/2026;;;;x;1;1;",
                "3 proveedor: «» no es un código (un número de 1 a 2147483647)." },
            Mala{ "negative_article", "B;1;101;21/11/2026;;;-4;x;1;1;",
                "3 articulo: «-4» no es un código (un número de 1 a 2147483647)." },
            Mala{
                "franchise_letter", "B;1;101;21/11/2026;;X;;x;1;1;", "3 franquiciado: «X» ha de ser S o N." },
            Mala{ "no_reference", ";1;101;21/11/2026;;;;x;1;1;",
                "3 referencia: está vacía; es lo que une las líneas de un cargo." },
            Mala{ "too_few_fields", "B;1;101;21/11/2026;;;;x;1;1", "3 : tiene 10 campos y se esperaban 11." },
            Mala{ "too_many_fields", "B;1;101;21/11/2026;;;;x;1;1;;",
                "3 : tiene 12 campos y se esperaban 11." },
            Mala{ "nul", std::string("B;1;101;21/11/2026;;;;x\0y;1;1;", 30),
                "3 descripcion: contiene un carácter nulo." },
            Mala{ "latin1",
                "B;1;101;21/11/2026;Da\xF1"
                "ado;;;x;1;1;",
                "3 observaciones: está en Latin-1 (Windows-1252), no en UTF-8; guarde el fichero como CSV en "
                "UTF-8." },
            Mala{ "surrogate", "B;1;101;21/11/2026;\xED\xA0\x80;;;x;1;1;",
                "3 observaciones: no está en UTF-8; guarde el fichero con esa codificación." }),
        [](const auto& caso) { return caso.param.nombre; });

    TEST(FicheroReclamaciones, a_further_row_that_contradicts_the_first_is_told)
    {
        const auto leidas = lee_reclamaciones(
            pruebas::cabecera + "R1;1;101;21/11/2026;;;;x;1;1;\nR1;1;102;21/11/2026;;;;x;1;1;\n");
        EXPECT_THAT(textos(leidas.errores),
            ElementsAre("3 proveedor: «102» no es lo que dice la primera fila de «R1» («101»)."));
        EXPECT_FALSE(leidas.todas.at(0).valida);
    }

    TEST(FicheroReclamaciones, a_reference_that_comes_back_later_is_told)
    {
        const auto fila = [](const char* referencia) {
            return std::string(referencia) + ";1;101;21/11/2026;;;;x;1;1;\n";
        };
        const auto leidas = lee_reclamaciones(pruebas::cabecera + fila("R1") + fila("R2") + fila("R1"));
        EXPECT_THAT(textos(leidas.errores),
            ElementsAre("4 referencia: «R1» ya ha salido antes; sus filas han de ir seguidas."));
    }

    TEST(FicheroReclamaciones, headings_that_cannot_be_used_refuse_the_file)
    {
        EXPECT_EQ(rechazo(""), "el fichero está vacío.");
        EXPECT_EQ(rechazo("\n\n"), "el fichero está vacío.");
        EXPECT_EQ(rechazo("referencia;almacen\n"), "fila 1: falta la columna «proveedor».");
        EXPECT_EQ(rechazo("referencia;color\n"), "fila 1: no se conoce la columna «color».");
        EXPECT_EQ(rechazo("referencia;almacen;almacen\n"), "fila 1: la columna «almacen» está dos veces.");
    }

    const std::string comillas
        = "las comillas no están bien puestas (un texto con comillas o con «;» va entre comillas, y las de "
          "dentro, dobles).";

    std::string fila(const std::string& referencia, const std::string& observaciones = {})
    {
        return referencia + ";1;101;21/11/2026;" + observaciones + ";;;x;1;1;\n";
    }

    std::vector<std::string> buenas(const std::string& contenido, std::size_t tamano = std::string::npos)
    {
        std::vector<std::string> referencias;
        const auto leidas = lee_reclamaciones(en_trozos(contenido, tamano));
        for (const auto& una : leidas.todas)
            if (una.valida)
                referencias.push_back(una.referencia);
        return referencias;
    }

    TEST(FicheroReclamaciones, quotes_out_of_place_spoil_their_row_and_the_next_line_is_read)
    {
        for (const auto* mala : { "\"a\"b", "\"a", "\"a\nb;\"c\"d", "a\"b" }) {
            const auto contenido
                = pruebas::cabecera + fila("R1") + fila("R2", mala) + fila("R3") + fila("R4");
            const auto leidas = lee_reclamaciones(contenido);
            EXPECT_EQ(textos(leidas.errores).at(0), "3 : " + comillas) << mala;
            const std::vector<std::string> esperadas{ "R1", "R3", "R4" };
            for (std::size_t tamano = 1; tamano <= contenido.size(); ++tamano)
                EXPECT_EQ(buenas(contenido, tamano), esperadas) << mala << tamano;
        }
    }

    TEST(FicheroReclamaciones, a_badly_quoted_row_spoils_the_charge_to_which_it_belongs)
    {
        EXPECT_THAT(buenas(pruebas::cabecera + fila("R1") + fila("R2") + fila("R2", "\"a\"b") + fila("R2")
                        + fila("R3")),
            ElementsAre("R1", "R3"));
    }

    TEST(FicheroReclamaciones, a_badly_quoted_row_of_unknown_reference_spoils_both_its_neighbours)
    {
        const auto leidas = lee_reclamaciones(
            pruebas::cabecera + fila("R1") + fila("R2") + fila("\"R2\"x") + fila("R3") + fila("R4"));
        EXPECT_THAT(textos(leidas.errores),
            ElementsAre("4 : " + comillas
                    + " No se sabe de qué cargo es: ni el anterior ni el siguiente se registran.",
                "5 : «R3» no se registra, porque la fila 4 podría ser suya."));
        EXPECT_THAT(
            buenas(pruebas::cabecera + fila("R1") + fila("R2") + fila("\"R2\"x") + fila("R3") + fila("R4")),
            ElementsAre("R1", "R4"));
        EXPECT_THAT(buenas(pruebas::cabecera + fila("\"R1\"x") + fila("R2") + fila("R3")), ElementsAre("R3"));
    }

    TEST(FicheroReclamaciones, a_file_full_of_bad_quotes_is_given_up)
    {
        std::string contenido = pruebas::cabecera;
        for (int i = 0; i < 101; ++i)
            contenido += fila("R" + std::to_string(i), "\"a\"b");
        EXPECT_EQ(rechazo(contenido),
            "fila 102: con esta son ya 101 las filas con las comillas mal puestas; revise el fichero "
            "entero.");
        EXPECT_EQ(rechazo("referencia;\"a\"b\n"), "fila 1: " + comillas);
    }

    TEST(FicheroReclamaciones, utf_16_is_named_as_such)
    {
        using namespace std::string_literals;
        for (const auto& comienzo : { "\xFF\xFEr\0e\0"s, "\xFE\xFF\0r\0e"s, "r\0e\0"s, "\0r\0e"s })
            EXPECT_EQ(
                rechazo(comienzo), "el fichero está en UTF-16; guárdelo como CSV en UTF-8 y delo otra vez.");
    }

    TEST(FicheroReclamaciones, a_heading_that_a_terminal_would_obey_is_told_without_its_controls)
    {
        EXPECT_EQ(rechazo("\x1b[31mcolor\xC2\x9b;x\n"), "fila 1: no se conoce la columna « [31mcolor ».");
    }

    TEST(FicheroReclamaciones, a_text_longer_than_its_column_is_told)
    {
        const auto largo = [](const std::string& letra, int veces) {
            std::string texto;
            for (int i = 0; i < veces; ++i)
                texto += letra;
            return texto;
        };
        const auto errores_de = [&](const std::string& referencia, const std::string& observaciones,
                                    const std::string& descripcion, const std::string& de_linea) {
            return textos(lee_reclamaciones(pruebas::cabecera + referencia + ";1;101;21/11/2026;"
                + observaciones + ";;;" + descripcion + ";1;1;" + de_linea + "\n")
                              .errores);
        };
        EXPECT_THAT(
            errores_de(largo("é", 60), largo("ñ", 4000), largo("€", 4000), largo("😀", 2000)), IsEmpty());
        EXPECT_THAT(errores_de(largo("é", 61), "", "x", ""),
            ElementsAre("2 referencia: tiene 61 letras y caben 60."));
        EXPECT_THAT(errores_de("R", largo("ñ", 4001), largo("x", 4002), largo("😀", 2001)),
            ElementsAre("2 observaciones: tiene 4001 letras y caben 4000."));
        EXPECT_THAT(errores_de("R", "", largo("x", 4002), largo("😀", 2001)),
            ElementsAre("2 descripcion: tiene 4002 letras y caben 4000.",
                "2 observaciones_linea: tiene 4002 letras y caben 4000."));
    }

    TEST(FicheroReclamaciones, of_a_charge_with_more_lines_than_fit_no_more_are_kept)
    {
        std::string contenido = pruebas::cabecera;
        for (int i = 0; i < 40'000; ++i)
            contenido += fila("R1");
        const auto leidas = lee_reclamaciones(contenido + fila("R2"));
        EXPECT_THAT(textos(leidas.errores),
            ElementsAre("32769 : «R1» tiene más de 32.767 líneas, que no caben en un cargo; repártala en "
                        "varios."));
        EXPECT_EQ(leidas.todas.at(0).lineas.size(), lineas_que_caben);
        EXPECT_TRUE(leidas.todas.at(1).valida);
    }

    TEST(FicheroReclamaciones, of_a_charge_with_many_faults_the_first_are_told)
    {
        std::string contenido = pruebas::cabecera;
        for (int i = 0; i < 1000; ++i)
            contenido += "R1;1;101;21/11/2026;;;;x;uno;1;\n";
        const auto leidas = lee_reclamaciones(contenido);
        ASSERT_THAT(leidas.errores, SizeIs(51));
        EXPECT_EQ(leidas.errores.back().motivo, "hay más errores en «R1»; corrija antes esos.");
    }

    TEST(FicheroReclamaciones, what_a_charge_says_has_one_digest_however_it_is_written)
    {
        const auto de = [](const std::string& filas) {
            return contenido_de(lee_reclamaciones(pruebas::cabecera + filas).todas.at(0));
        };
        const auto uno = de("R1;1;101;21/11/2026;ob;N;;x;1;1.000;y\n");
        EXPECT_EQ(de("R9;01;101;21/11/2026;ob;;;x;1,00;1000,0;y\n"), uno) << "the reference is told apart";
        for (const auto* otro :
            { "R1;2;101;21/11/2026;ob;N;;x;1;1.000;y\n", "R1;1;102;21/11/2026;ob;N;;x;1;1.000;y\n",
                "R1;1;101;20/11/2026;ob;N;;x;1;1.000;y\n", "R1;1;101;21/11/2026;obx;N;;;1;1.000;y\n",
                "R1;1;101;21/11/2026;ob;S;;x;1;1.000;y\n", "R1;1;101;21/11/2026;ob;N;7;x;1;1.000;y\n",
                "R1;1;101;21/11/2026;ob;N;;z;1;1.000;y\n", "R1;1;101;21/11/2026;ob;N;;x;2;1.000;y\n",
                "R1;1;101;21/11/2026;ob;N;;x;1;1.001;y\n", "R1;1;101;21/11/2026;ob;N;;x;1;1.000;\n",
                "R1;1;101;21/11/2026;ob;N;;x;1;1.000;y\nR1;1;101;21/11/2026;ob;N;;x;1;1.000;y\n" })
            EXPECT_NE(de(otro), uno) << otro;
    }

    TEST(FicheroReclamaciones, only_headings_are_no_charges)
    {
        EXPECT_THAT(lee_reclamaciones(pruebas::cabecera).todas, IsEmpty());
    }

}
}
