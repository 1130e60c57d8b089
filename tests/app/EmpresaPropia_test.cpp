// A company of one's own, founded in empty tables, in which charges are recorded by the real program.
#include "host/bases/EmpresaPropia.hpp"

#include "tests/app/Programa.hpp"
#include "tests/app/Reclamaciones.hpp"
#include "tests/host/BasesDeMuestra.hpp"
#include "tests/support/ServidorPostgresql.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using pruebas::columna;
    using pruebas::error_de;
    using testing::ElementsAre;
    using testing::EndsWith;
    using testing::HasSubstr;

    bases::DatosEmpresa taller()
    {
        return { "Talleres O'Neill, S.L.", "B38999991", "Calle Ñ, 3", "38001", "El Rosario",
            "Santa Cruz de Tenerife", "Nave norte", "Añaterve Díaz", "IVA", Currency::de_entero(21),
            { "Aceros Órzola, S.A.", "A35999992", "Muelle, 8", "35500", "Arrecife" } };
    }

    struct EmpresaPropia : testing::Test {
        pruebas::Programa programa;

        void funda(std::int16_t anio) const
        {
            const auto bases = bases::abre_bases(programa.carpeta / "datos");
            EXPECT_TRUE(bases::sin_empresas(*bases.orvalin));
            bases::funda_empresa(bases, taller(), anio);
            EXPECT_FALSE(bases::sin_empresas(*bases.orvalin));
        }
    };

    TEST_F(EmpresaPropia, records_posts_and_prints_its_first_charge)
    {
        ASSERT_EQ(programa("crear --vacia").estado, 0);
        funda(2031);
        programa.escribe("r.csv", pruebas::cabecera + "R1;1;1;05/02/2031;Doblada;N;;Chapa;4;25,50;\n");
        const auto registrado = programa("registrar r.csv");
        EXPECT_EQ(registrado.estado, 0) << registrado.errores;
        EXPECT_THAT(registrado.salida, EndsWith("1 registradas, 0 ya lo estaban, 0 rechazadas.\n"));
        const auto verificado = programa("verificar");
        EXPECT_THAT(verificado.salida, EndsWith("sin diferencias.\n")) << verificado.errores;
        const auto cargo = programa("mostrar AT310001 --ejercicio 2031 --almacen 1");
        for (const char* dicho : { "Nave norte", "Aceros Órzola, S.A.", "Añaterve Díaz",
                 "102,00 + impuesto 21,42 (21,00 %) = 123,42", "IVA atípico Aceros Órzola, S.A.", "47700001",
                 "07/03/2031" })
            EXPECT_THAT(cargo.salida, HasSubstr(dicho));
    }

    TEST_F(EmpresaPropia, has_what_was_said_of_it_with_an_accent_for_each_quote)
    {
        ASSERT_EQ(programa("crear --vacia").estado, 0);
        funda(2026);
        const auto bases = bases::abre_bases(programa.carpeta / "datos");
        EXPECT_THAT(
            columna(*bases.orvalin, "SELECT Nombre FROM Empresas"), ElementsAre("Talleres O´Neill, S.L."));
        EXPECT_THAT(columna(*bases.orvalin, "SELECT Domicilio FROM Almacenes"), ElementsAre("Calle Ñ, 3"));
        EXPECT_THAT(columna(*bases.orvalin, "SELECT NIF FROM Proveedores"), ElementsAre("A35999992"));
        EXPECT_THAT(columna(*bases.bexmor, "SELECT Ejercicio FROM Ejercicios ORDER BY Ejercicio"),
            ElementsAre("2025", "2026", "2027"));
        EXPECT_EQ(columna(*bases.bexmor, "SELECT Cuenta FROM Cuentas").size(), 18U);
    }

    TEST(EmpresaPropiaEnServidor, is_founded_as_in_a_folder)
    {
        if (const auto falta = pruebas::ServidorPostgresql::falta(); !falta.empty())
            GTEST_SKIP() << falta;
        const pruebas::ServidorPostgresql servidor;
        servidor.crea_base("propia");
        const auto lugar = bases::Lugar::de_conexion(servidor.direccion("propia"));
        EXPECT_TRUE(bases::crea_bases(lugar, true));
        const auto bases = bases::abre_bases(lugar);
        EXPECT_TRUE(bases::sin_empresas(*bases.orvalin));
        bases::funda_empresa(bases, taller(), 2026);
        EXPECT_THAT(columna(*bases.orvalin, "SELECT Nombre FROM SGD_Usuarios"), ElementsAre("Añaterve Díaz"));
        EXPECT_THAT(columna(*bases.bexmor, "SELECT Fin FROM Ejercicios ORDER BY Ejercicio"),
            ElementsAre("31/12/2025", "31/12/2026", "31/12/2027"));
    }

    TEST_F(EmpresaPropia, is_founded_once_and_whole_or_not_at_all)
    {
        ASSERT_EQ(programa("crear --vacia").estado, 0);
        const auto bases = bases::abre_bases(programa.carpeta / "datos");
        // The last statements of all cannot be done.
        bases.bexmor->Execute(
            "CREATE TRIGGER no BEFORE INSERT ON Ejercicios BEGIN SELECT RAISE(ABORT, 'no'); END");
        EXPECT_NE(error_de([&] { bases::funda_empresa(bases, taller(), 2026); }), "no error");
        EXPECT_TRUE(bases::sin_empresas(*bases.orvalin));
        EXPECT_EQ(columna(*bases.bexmor, "SELECT Codigo FROM Empresas").size(), 0U);
        bases.bexmor->Execute("DROP TRIGGER no");
        bases::funda_empresa(bases, taller(), 2026);
        EXPECT_THAT(error_de([&] { bases::funda_empresa(bases, taller(), 2026); }),
            HasSubstr("ya hay una empresa en esta base de datos."));
    }

}
}
