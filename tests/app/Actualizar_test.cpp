// `actualizar`, by the real program: the two files of the first version.
#include "tests/app/Programa.hpp"
#include "tests/support/FormatoAnterior.hpp"

#include <gmock/gmock.h>

#include <set>

namespace atipicos {
namespace {

    namespace fs = std::filesystem;

    using testing::EndsWith;
    using testing::HasSubstr;

    /// The sample company with its charges: as it is today in `hoy`, as it was in `datos`.
    struct Actualizar : testing::Test {
        pruebas::Programa programa;
        std::string verificado;

        Actualizar()
        {
            EXPECT_EQ(programa("crear --datos hoy").estado, 0);
            EXPECT_EQ(programa("registrar --datos hoy " + pruebas::muestra).estado, 0);
            verificado = programa("verificar --datos hoy").salida;
            pruebas::hace_formato_anterior(programa.carpeta / "hoy/empresa.db", programa.carpeta / "datos");
        }

        std::set<std::string> entradas() const
        {
            std::set<std::string> nombres;
            for (const auto& entrada : fs::directory_iterator(programa.carpeta / "datos"))
                nombres.insert(entrada.path().filename().string());
            return nombres;
        }
    };

    TEST_F(Actualizar, until_then_every_command_says_what_to_do)
    {
        const auto antes = entradas();
        for (const std::string orden :
            { "verificar", "crear", "copiar x.db", "listar --desde 01/01/2026 --hasta 31/12/2026",
                "mostrar AT260001 --ejercicio 2026 --almacen 4",
                "eliminar AT260001 --ejercicio 2026 --almacen 4 --si",
                "contabilizar AT260001 --ejercicio 2026 --almacen 4", "registrar r.csv" }) {
            programa.escribe("r.csv", "referencia\n");
            const auto ejecucion = programa(orden);
            EXPECT_EQ(ejecucion.estado, 1) << orden;
            EXPECT_EQ(ejecucion.errores,
                "atipicos: «datos»: las bases de datos son de una versión anterior del programa, en dos "
                "ficheros. "
                "Actualícelas con: atipicos actualizar --datos datos\n")
                << orden;
        }
        EXPECT_EQ(entradas(), antes);
    }

    TEST_F(Actualizar, keeps_every_charge_and_is_told)
    {
        const auto hecha = programa("actualizar");
        EXPECT_EQ(hecha.estado, 0);
        EXPECT_EQ(hecha.salida,
            "Actualizada datos de la versión 1 a la 6.\n"
            "El fichero anterior se guarda como datos/orvalin.db.anterior; retírelo cuando ya no lo quiera.\n"
            "El fichero anterior se guarda como datos/bexmor.db.anterior; retírelo cuando ya no lo "
            "quiera.\n");
        EXPECT_EQ(hecha.errores, "");
        EXPECT_EQ(
            entradas(), (std::set<std::string>{ "bexmor.db.anterior", "empresa.db", "orvalin.db.anterior" }));
        EXPECT_EQ(programa("verificar").salida, verificado);
        EXPECT_THAT(programa("registrar " + pruebas::muestra).salida,
            EndsWith("\n0 registradas, 74 ya lo estaban, 0 rechazadas.\n"));
        const std::string lista = "listar --desde 01/01/2025 --hasta 31/12/2026 --formato csv";
        EXPECT_EQ(programa(lista).salida, programa(lista + " --datos hoy").salida);
    }

    TEST_F(Actualizar, done_again_says_that_there_is_nothing_to_do)
    {
        ASSERT_EQ(programa("actualizar").estado, 0);
        const auto antes = programa.lee("datos/empresa.db");
        const auto otra = programa("actualizar");
        EXPECT_EQ(otra.estado, 0);
        EXPECT_EQ(otra.salida, "Ya está al día: datos tiene la versión 6.\n");
        EXPECT_TRUE(programa.lee("datos/empresa.db") == antes);
    }

    TEST_F(Actualizar, goes_on_working_with_charges_that_differ)
    {
        ASSERT_EQ(std::system(("sqlite3 '" + (programa.carpeta / "datos/bexmor.db").string()
                      + "' 'UPDATE Apuntes SET Debe = Debe + 1 WHERE Asiento = 1 AND Linea = 1'")
                                  .c_str()),
            0);
        EXPECT_EQ(programa("actualizar").estado, 0);
        const auto dicho = programa("verificar");
        EXPECT_EQ(dicho.estado, 1);
        EXPECT_THAT(dicho.salida, HasSubstr("no cuadra"));
    }

    TEST_F(Actualizar, of_a_later_version_or_of_nothing_is_refused)
    {
        ASSERT_EQ(std::system(("sqlite3 '" + (programa.carpeta / "hoy/empresa.db").string()
                      + "' 'UPDATE Esquema SET Version = 99'")
                                  .c_str()),
            0);
        const auto posterior = programa("actualizar --datos hoy");
        EXPECT_EQ(posterior.estado, 1);
        EXPECT_EQ(posterior.errores,
            "atipicos: «hoy/empresa.db»: tiene la versión 99 de las tablas y este programa llega hasta la 6. "
            "Use "
            "la última versión del programa.\n");
        const auto nada = programa("actualizar --datos nada");
        EXPECT_EQ(nada.estado, 1);
        EXPECT_THAT(nada.errores, HasSubstr("no hay ninguna base de datos en esta carpeta"));
    }

}
}
