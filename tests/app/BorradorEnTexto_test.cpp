#include "host/sesion/BorradorEnTexto.hpp"

#include "runtime/Error.hpp"
#include "tests/app/BorradorDePrueba.hpp"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace atipicos {
namespace {

    using namespace app;
    using namespace pruebas;
    using testing::HasSubstr;
    using testing::StartsWith;

    const DuenoDeBorradores dueno{ "/srv/datos de Güímar", 3, 7 };

    std::string motivo_de(const std::string& texto, const DuenoDeBorradores& de = dueno)
    {
        try {
            static_cast<void>(lee_borrador(texto, de));
            return "it was read";
        } catch (const Error& error) {
            return error.descripcion();
        }
    }

    std::string texto_normal()
    {
        return borrador_en_texto(borrador_distinto(), dia_y_hora("21/11/2026", 9, 5, 3), dueno);
    }

    TEST(BorradorEnTexto, what_is_written_is_read_back_to_the_last_decimal_and_line_break)
    {
        const auto leido = lee_borrador(texto_normal(), dueno);
        EXPECT_TRUE(leido.borrador == borrador_distinto());
        EXPECT_EQ(leido.momento, dia_y_hora("21/11/2026", 9, 5, 3));
        auto sin_en_curso = borrador_distinto();
        sin_en_curso.HayEnCurso = false;
        sin_en_curso.EnCurso = {};
        sin_en_curso.FilaEnCambio = 0;
        const auto otra_vez = lee_borrador(borrador_en_texto(sin_en_curso, leido.momento, dueno), dueno);
        EXPECT_TRUE(otra_vez.borrador == sin_en_curso);
    }

    TEST(BorradorEnTexto, a_person_can_read_it)
    {
        EXPECT_THAT(texto_normal(), HasSubstr("\n  \"formato\": 1,\n"));
        EXPECT_THAT(texto_normal(), HasSubstr("\"unidades\": \"12.4851\""));
        EXPECT_THAT(texto_normal(), HasSubstr("\"descripcion\": \"Vino tinto\""));
    }

    TEST(BorradorEnTexto, it_belongs_to_one_company_one_user_and_one_place)
    {
        const auto ajeno = "es de otra empresa, de otro usuario o de otra base de datos";
        EXPECT_EQ(motivo_de(texto_normal(), { dueno.lugar, 4, 7 }), ajeno);
        EXPECT_EQ(motivo_de(texto_normal(), { dueno.lugar, 3, 8 }), ajeno);
        EXPECT_EQ(motivo_de(texto_normal(), { "/srv/otros", 3, 7 }), ajeno);
    }

    TEST(BorradorEnTexto, whatever_is_cut_or_missing_is_damaged_and_never_half_read)
    {
        const auto entero = texto_normal();
        for (std::size_t largo = 0; largo + 2 < entero.size(); ++largo)
            EXPECT_EQ(motivo_de(entero.substr(0, largo)), "está dañado") << largo;
        const auto json = nlohmann::json::parse(entero);
        for (const auto& [clave, valor] : json.items()) {
            if (clave == "que_es")
                continue;
            auto sin_ella = json;
            sin_ella.erase(clave);
            EXPECT_EQ(motivo_de(sin_ella.dump()), "está dañado") << clave;
            auto otra_cosa = json;
            otra_cosa[clave] = { { "otra", "cosa" } };
            EXPECT_THAT(motivo_de(otra_cosa.dump()), testing::Ne("it was read")) << clave;
        }
        auto de_otra = json;
        de_otra["formato"] = 2;
        EXPECT_EQ(motivo_de(de_otra.dump()), "es de otra versión del programa");
        for (const auto& [clave, valor] : { std::pair{ "hora", 24 }, { "minuto", 60 }, { "segundo", -1 } }) {
            auto sin_hora = json;
            sin_hora["momento"][clave] = valor;
            EXPECT_EQ(motivo_de(sin_hora.dump()), "no dice de cuándo es") << clave;
        }
        auto sin_numero = json;
        sin_numero["lineas"][1]["costo"] = "dos";
        EXPECT_NE(motivo_de(sin_numero.dump()), "it was read");
    }

    TEST(BorradorEnTexto, bytes_that_are_no_letters_do_not_keep_the_rest_from_being_kept)
    {
        Borrador borrador;
        borrador.Observaciones = "Pal\xe9";
        borrador.Proveedor = 104;
        const auto leido = lee_borrador(borrador_en_texto(borrador, dia("21/11/2026"), dueno), dueno);
        EXPECT_EQ(leido.borrador.Proveedor, 104);
        EXPECT_THAT(leido.borrador.Observaciones, StartsWith("Pal"));
    }

}
}
