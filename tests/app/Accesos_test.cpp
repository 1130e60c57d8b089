// Which user each login is, and that a command works as that one.
#include "tests/app/Programa.hpp"
#include "tests/support/CitusDePrueba.hpp"
#include "tests/support/ServidorPostgresql.hpp"

#include <gmock/gmock.h>

#include <memory>
#include <unistd.h>

namespace atipicos {
namespace {

    using testing::EndsWith;
    using testing::HasSubstr;

    const std::string una_reclamacion
        = pruebas::cabecera + "R1;4;106;10/02/2026;Piezas rajadas;;1010;Queso con grietas;12,485;9,75;\n";

    TEST(Accesos, are_said_told_and_taken_back)
    {
        const pruebas::Programa programa;
        ASSERT_EQ(programa("crear").estado, 0);
        EXPECT_EQ(programa("accesos").salida, "No se ha dicho de ningún login qué usuario es.\n");
        EXPECT_EQ(programa("accesos ines 12").salida, "«ines» es el usuario 12, Turno de noche.\n");
        EXPECT_EQ(programa("accesos ines 3").salida, "«ines» es el usuario 3, Candelaria Méndez.\n");
        EXPECT_EQ(programa("accesos ines").salida, "«ines» es el usuario 3, Candelaria Méndez.\n");
        EXPECT_THAT(programa("accesos").salida, HasSubstr("ines         3  Candelaria Méndez\n"));
        EXPECT_EQ(programa("accesos ines 7").errores, "atipicos: No existe el usuario 7.\n");
        EXPECT_EQ(programa("accesos ines --quitar").salida, "«ines» ya no es ningún usuario.\n");
        for (const auto* otra : { "accesos ines --quitar", "accesos ines" }) {
            const auto ejecucion = programa(otra);
            EXPECT_EQ(ejecucion.estado, 1);
            EXPECT_EQ(ejecucion.errores, "atipicos: «ines» no es ningún usuario.\n");
        }
        for (const auto* mal : { "accesos --quitar", "accesos ines 3 --quitar" })
            EXPECT_THAT(programa(mal).errores, HasSubstr("--quitar: va con un login, y sin usuario.")) << mal;
    }

    TEST(Accesos, on_a_file_of_somebody_else_are_what_its_owner_has_said)
    {
        const pruebas::Programa programa;
        ASSERT_EQ(programa("crear").estado, 0);
        if (geteuid() != 0)
            GTEST_SKIP() << "only root can be somebody else";
        ASSERT_EQ(std::system(("chmod -R a+rwX '" + programa.carpeta.ruta().string() + "'").c_str()), 0);
        programa.escribe("r.csv", una_reclamacion);
        const auto como_nobody = [&](const std::string& orden) {
            return programa(orden, "chmod a+rw *; setpriv --reuid=nobody --clear-groups");
        };
        EXPECT_THAT(como_nobody("registrar r.csv").errores,
            EndsWith(
                "«nobody» no es ningún usuario de esta empresa. Quien la administra lo dice con: atipicos "
                "accesos nobody N\n"));
        EXPECT_THAT(
            como_nobody("accesos nobody 12").errores, HasSubstr("«nobody» no puede decir qué usuario"));
        ASSERT_EQ(programa("accesos nobody 12").estado, 0);
        EXPECT_THAT(como_nobody("registrar r.csv --usuario 1").errores,
            EndsWith("«nobody» es el usuario 12 y no puede trabajar como el 1.\n"));
        const auto hecha = como_nobody("registrar r.csv");
        EXPECT_EQ(hecha.estado, 0) << hecha.errores;
        EXPECT_THAT(
            programa("mostrar AT260001 --ejercicio 2026 --almacen 4").salida, HasSubstr("Turno de noche"));
    }

    struct AccesosEnServidor : testing::Test {
        pruebas::Programa programa;
        std::unique_ptr<pruebas::ServidorPostgresql> servidor;

        void SetUp() override
        {
            if (const auto falta = pruebas::ServidorPostgresql::falta(); !falta.empty())
                GTEST_SKIP() << falta;
            servidor = std::make_unique<pruebas::ServidorPostgresql>();
            servidor->crea_base("empresa");
            programa.escribe("r.csv", una_reclamacion);
        }
        pruebas::Ejecucion como(const std::string& quien, const std::string& orden) const
        {
            return programa(orden + " --conexion '" + servidor->direccion("empresa", quien) + "'");
        }
    };

    TEST_F(AccesosEnServidor, say_as_whom_a_clerk_records)
    {
        ASSERT_EQ(como("atipicos", "crear").estado, 0);
        std::string dicho;
        ASSERT_EQ(servidor->guion(
                      "empresa", ATIPICOS_FUENTES "/host/sql/permisos_postgresql.sql", "atipicos", dicho),
            0)
            << dicho;
        servidor->psql("empresa",
            "CREATE ROLE \"be goña\" LOGIN IN ROLE atipicos_puesto; CREATE ROLE sara LOGIN IN ROLE "
            "atipicos_suplencia; CREATE ROLE luz LOGIN IN ROLE atipicos_consulta");
        const std::string begona = "be%20go%C3%B1a";
        const auto sin = como(begona, "registrar r.csv");
        EXPECT_EQ(sin.estado, 1);
        EXPECT_EQ(sin.errores,
            "atipicos: «be goña» no es ningún usuario de esta empresa. Quien la administra lo dice con: "
            "atipicos "
            "accesos 'be goña' N\n");
        EXPECT_THAT(como(begona, "accesos 'be goña' 3").errores, HasSubstr("no puede decir qué usuario es"));
        ASSERT_EQ(como("atipicos", "accesos 'be goña' 3").estado, 0);
        EXPECT_EQ(como(begona, "registrar r.csv --usuario 2").errores,
            "atipicos: «be goña» es el usuario 3 y no puede trabajar como el 2.\n");
        EXPECT_EQ(como(begona, "registrar r.csv --usuario 3").estado, 0);
        EXPECT_THAT(como("luz", "listar --desde 01/01/2026 --hasta 31/12/2026").salida,
            HasSubstr("Candelaria Méndez"));
        EXPECT_EQ(como("sara", "eliminar AT260001 --ejercicio 2026 --almacen 4 --si --usuario 12").estado, 0);
        EXPECT_EQ(como("sara", "registrar r.csv --otra-vez R1 --usuario 12").estado, 0);
        EXPECT_THAT(
            como("luz", "listar --desde 01/01/2026 --hasta 31/12/2026").salida, HasSubstr("Turno de noche"));
        EXPECT_THAT(como("luz", "verificar").errores, testing::Not(HasSubstr("Candelaria")));
    }

    TEST_F(AccesosEnServidor, of_several_nodes_say_that_there_is_no_trail)
    {
        servidor->psql("empresa", pruebas::citus_de_prueba);
        const auto creada = como("atipicos", "crear");
        EXPECT_EQ(creada.estado, 0) << creada.errores;
        EXPECT_THAT(creada.salida,
            EndsWith("\nSus tablas están repartidas entre los nodos del servidor: la base de datos no "
                     "lleva el historial de lo que se haga desde ahora.\n"));
        ASSERT_EQ(como("atipicos", "registrar r.csv").estado, 0);
        EXPECT_THAT(como("atipicos", "historial AT260001 --ejercicio 2026 --almacen 4").errores,
            HasSubstr("está repartida entre varios nodos: no lleva el historial desde que lo está."));
        EXPECT_EQ(como("atipicos", "verificar").estado, 0);
        EXPECT_THAT(como("atipicos", "actualizar").salida, testing::Not(HasSubstr("repartidas")));
    }

}
}
