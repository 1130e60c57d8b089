// Suppliers and articles by the commands of the program, and a charge with those that were added.
#include "tests/app/Programa.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using testing::EndsWith;
    using testing::HasSubstr;
    using testing::Not;

    struct OrdenFichas : testing::Test {
        pruebas::Programa programa;

        OrdenFichas() { EXPECT_EQ(programa("crear").estado, 0); }
    };

    TEST_F(OrdenFichas, what_is_added_can_be_claimed_from_and_is_posted)
    {
        const auto anadido
            = programa("proveedor --nombre 'Mallas Ñoñas' --nif B35999345 --domicilio 'Muelle, "
                       "9' --codigo-postal 35501 --poblacion Arrecife --forma-pago 6 "
                       "--dia-pago 10 --otro-dia-pago 25");
        EXPECT_EQ(anadido.estado, 0) << anadido.errores;
        EXPECT_THAT(
            anadido.salida, testing::MatchesRegex("Añadido el proveedor [0-9]+ \\(Mallas Ñoñas\\)\\.\n"));
        EXPECT_EQ(programa("proveedor 345 --nombre Redes").salida, "Añadido el proveedor 345 (Redes).\n");
        EXPECT_EQ(
            programa("proveedor 345 --nif B1 --forma-pago 6").salida, "Cambiado el proveedor 345 (Redes).\n");
        EXPECT_EQ(programa("proveedor 345").salida,
            "Código  Nombre  NIF  Domicilio  C. postal  Población  Forma de pago  Día  Día\n"
            "------  ------  ---  ---------  ---------  ---------  -------------  ---  ---\n"
            "   345  Redes   B1                                    6  A 60 días\n");
        EXPECT_THAT(programa("proveedor").salida,
            HasSubstr("Arrecife                6  A 60 días                10   25\n"));
        EXPECT_EQ(programa("articulo 7001 --nombre 'Red rota' --cuenta 75900010").salida,
            "Añadido el artículo 7001 (Red rota).\n");
        programa.escribe("r.csv", pruebas::cabecera + "R1;1;345;05/02/2026;Rota;N;7001;;4;25,50;\n");
        const auto registrado = programa("registrar r.csv");
        EXPECT_EQ(registrado.estado, 0) << registrado.errores << registrado.salida;
        const auto cargo = programa("mostrar AT260001 --ejercicio 2026 --almacen 1").salida;
        for (const auto* dicho : { "40000345", "44000345", "75900010", "Red rota", "06/04/2026" })
            EXPECT_THAT(cargo, HasSubstr(dicho));
        EXPECT_THAT(programa("verificar").salida, EndsWith("sin diferencias.\n"));
    }

    TEST_F(OrdenFichas, what_no_charge_names_is_removed_after_a_yes)
    {
        EXPECT_EQ(programa("articulo 7001 --nombre 'Red rota'").estado, 0);
        EXPECT_EQ(programa("articulo 7001 --eliminar").errores,
            "atipicos: No hay un terminal en el que preguntar: repita la orden con --si.\n");
        EXPECT_THAT(programa("articulo").salida, HasSubstr("\n  7001  Red rota\n"));
        EXPECT_EQ(programa("articulo 7001 --eliminar --si").salida, "Eliminado el artículo 7001.\n");
        EXPECT_THAT(programa("articulo").salida, Not(HasSubstr("7001")));
        EXPECT_EQ(
            programa("articulo 7001 --eliminar --si").errores, "atipicos: No existe el artículo 7001.\n");
        EXPECT_EQ(
            programa("proveedor 345 --eliminar --si").errores, "atipicos: No existe el proveedor 345.\n");
    }

    TEST_F(OrdenFichas, what_is_refused_is_told_and_what_is_wrongly_written_too)
    {
        EXPECT_EQ(programa("proveedor 345").errores,
            "atipicos: No existe el proveedor 345. Para añadirlo dé su nombre con --nombre.\n");
        EXPECT_EQ(programa("articulo 7001 --cuenta 75900010").errores,
            "atipicos: No existe el artículo 7001. Para añadirlo dé su nombre con --nombre.\n");
        const auto sin_forma = programa("proveedor 345 --nombre Redes --forma-pago 88");
        EXPECT_EQ(sin_forma.estado, 1);
        EXPECT_EQ(sin_forma.errores, "atipicos: No existe la forma de pago 88.\n");
        for (const auto* orden : { "proveedor", "articulo" }) {
            const auto sin_codigo = programa(std::string(orden) + " --eliminar --si");
            EXPECT_EQ(sin_codigo.estado, 2);
            EXPECT_THAT(sin_codigo.errores, testing::StartsWith("atipicos: Falta CODIGO.\n"));
        }
        EXPECT_EQ(programa("proveedor x").estado, 2);
        EXPECT_EQ(programa("proveedor 345 --dia-pago 99999").estado, 2);
    }

}
}
