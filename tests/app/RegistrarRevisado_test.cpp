// What `registrar` refuses, by the real program on both engines: it says why, and nothing of it is left.
#include "host/bases/Bases.hpp"
#include "host/sql/Guiones.hpp"
#include "tests/app/Programa.hpp"
#include "tests/integracion/Volcado.hpp"
#include "tests/support/ServidorPostgresql.hpp"

#include <gmock/gmock.h>

#include <memory>

namespace atipicos {
namespace {

    using testing::EndsWith;
    using testing::HasSubstr;
    using testing::Not;
    using testing::StartsWith;

    struct Motor {
        const char* nombre;
        bool con_servidor;
    };
    void PrintTo(const Motor& motor, std::ostream* salida) { *salida << motor.nombre; }

    struct RegistrarRevisado : testing::TestWithParam<Motor> {
        static inline std::unique_ptr<pruebas::ServidorPostgresql> servidor;
        pruebas::Programa programa;

        static void TearDownTestSuite() { servidor.reset(); }

        void SetUp() override
        {
            if (GetParam().con_servidor) {
                if (const auto falta = pruebas::ServidorPostgresql::falta(); !falta.empty())
                    GTEST_SKIP() << falta;
                if (!servidor)
                    servidor = std::make_unique<pruebas::ServidorPostgresql>();
                servidor->crea_base("empresa");
            }
            ASSERT_EQ(programa("crear" + donde()).estado, 0);
            EXPECT_EQ(registra("R0;2;103;11/03/2026;Antes;;;Queso;3;7;\n").estado, 0);
        }
        void TearDown() override
        {
            if (GetParam().con_servidor && servidor)
                servidor->borra_base("empresa");
        }

        [[nodiscard]] std::string donde() const
        {
            return GetParam().con_servidor ? " --conexion '" + servidor->direccion("empresa") + "'"
                                           : " --datos d";
        }
        [[nodiscard]] bases::Bases bases() const
        {
            return bases::abre_bases(GetParam().con_servidor
                    ? bases::Lugar::de_conexion(servidor->direccion("empresa"))
                    : bases::Lugar(programa.carpeta / "d"));
        }

        [[nodiscard]] pruebas::Ejecucion registra(
            const std::string& filas, const std::string& opciones = {}) const
        {
            programa.escribe("r.csv", pruebas::cabecera + filas);
            return programa("registrar r.csv " + opciones + donde());
        }
        [[nodiscard]] std::string verificado() const { return programa("verificar" + donde()).salida; }

        /// Every row of both products.
        [[nodiscard]] std::vector<std::string> contenido() const
        {
            const auto abiertas = bases();
            auto filas = pruebas::vuelca(*abiertas.orvalin, guiones::orvalin());
            const auto otras = pruebas::vuelca(*abiertas.bexmor, guiones::bexmor());
            filas.insert(filas.end(), otras.begin(), otras.end());
            return filas;
        }
        [[nodiscard]] std::string valor(const std::string& sql) const
        {
            const auto abiertas = bases();
            auto rs = abiertas.orvalin->CreateRecordset();
            rs->Open(sql, adodb::CursorType::Static, adodb::LockType::ReadOnly);
            return CStr(rs->Fields(std::size_t{ 0 }).Value());
        }

        /// A table that refuses a row, as no file can make it do.
        void no_admite(const std::string& tabla, const std::string& que) const
        {
            if (GetParam().con_servidor)
                servidor->psql(
                    "empresa", "ALTER TABLE " + tabla + " ADD CONSTRAINT tope CHECK (NOT (" + que + "))");
            else
                bases().orvalin->Execute("CREATE TRIGGER tope_" + tabla.substr(tabla.find('.') + 1)
                    + " BEFORE INSERT ON "
                    + (tabla.starts_with("dbo.") ? "Bexmor_" + tabla.substr(4) : tabla.substr(8))
                    + " WHEN NEW." + que + " BEGIN SELECT RAISE(ABORT, 'no se admite'); END");
        }
    };

    struct Rehusada {
        const char* nombre;
        const char* gestion; ///< done before
        const char* contabilidad;
        std::string filas;
        std::string error; ///< begins so
    };

    std::vector<Rehusada> malas()
    {
        std::string muchas;
        for (int i = 0; i < 32'768; ++i)
            muchas += "M;1;101;21/01/2026;;;;x;1;1;\n";
        const std::string no_cuadran
            = "[error] r.csv, fila 2, columna «proveedor»: las condiciones de pago del "
              "proveedor 104 ";
        return { { "long remarks", nullptr, nullptr,
                     "M;1;101;21/01/2026;" + std::string(4001, 'x') + ";;;x;1;10;\n",
                     "[error] r.csv, fila 2, columna «observaciones»: tiene 4001 letras y caben 4000.\n" },
            { "long line remarks", nullptr, nullptr,
                "M;1;101;21/01/2026;;;;x;1;10;" + std::string(4001, 'x') + "\n",
                "[error] r.csv, fila 2, columna «observaciones_linea»: tiene 4001 letras y caben 4000.\n" },
            { "long reference", nullptr, nullptr, std::string(61, 'x') + ";1;101;21/01/2026;;;;x;1;10;\n",
                "[error] r.csv, fila 2, columna «referencia»: tiene 61 letras y caben 60.\n" },
            { "year not open", nullptr, nullptr, "M;1;101;10/02/2028;;;;x;1;10;\n",
                "[error] r.csv, fila 2, columna «fecha»: el ejercicio 2028 no está abierto en la empresa "
                "contable 1. Ábralo en contabilidad.\n" },
            { "outside its year", nullptr, "UPDATE Ejercicios SET Fin ='30/06/2026' WHERE Ejercicio =2026",
                "M;3;101;01/07/2026;;;;x;1;10;\n",
                "[error] r.csv, fila 2, columna «fecha»: la fecha 01/07/2026 está fuera del ejercicio 2026 "
                "de la "
                "empresa contable 2.\n" },
            { "no accounting company", nullptr, nullptr, "M;5;101;10/02/2026;;;;x;1;10;\n",
                "[error] r.csv, fila 2, columna «almacen»: el almacén 5 no tiene empresa contable.\n" },
            { "accounting company that is not there", "UPDATE Almacenes SET EmpContable =9 WHERE Codigo =4",
                nullptr, "M;4;101;10/02/2026;;;;x;1;10;\n",
                "[error] r.csv, fila 2, columna «almacen»: no existe la empresa contable 9, que es la del "
                "almacén "
                "4.\n" },
            { "beyond an entry", nullptr, nullptr, "M;1;101;10/02/2026;;;;x;1000000;1000000;\n",
                "[error] r.csv, fila 2, columna «costo»: El importe 1.000.000.000.000,00 es demasiado "
                "grande." },
            { "beyond an entry with its tax", nullptr, nullptr, "M;1;101;10/02/2026;;;;x;1000000;990000;\n",
                "[error] r.csv, fila 2, columna «costo»: El importe 1.059.300.000.000,00 es demasiado "
                "grande." },
            { "too many lines", nullptr, nullptr, muchas,
                "[error] r.csv, fila 32769: «M» tiene más de 32.767 líneas" },
            { "rows apart", nullptr, nullptr,
                "M;1;101;10/02/2026;;;;x;1;10;\nR0;2;103;11/03/2026;Antes;;;Queso;3;7;\n"
                "M;1;101;10/02/2026;;;;x;2;1000;\n",
                "[error] r.csv, fila 4, columna «referencia»: «M» ya ha salido antes" },
            { "debtor account", "UPDATE Proveedores SET Cta_Deudor ='44999999' WHERE Codigo =101", nullptr,
                "M;1;101;10/02/2026;;;;x;1;10;\n",
                "[error] r.csv, fila 2, columna «proveedor»: la cuenta 44999999 no existe en el plan de la "
                "empresa contable 1, ejercicio 2026. Dela de alta en contabilidad.\n" },
            { "short-term account of a franchise",
                "UPDATE Proveedores SET Cta_DeudaCortoPlazo ='52999999' WHERE Codigo =101", nullptr,
                "M;1;101;10/02/2026;;S;;x;1;10;\n",
                "[error] r.csv, fila 2, columna «proveedor»: la cuenta 52999999 no existe" },
            { "income account of the article",
                "UPDATE Articulos SET CtaIngresosAtipicos ='75999999' WHERE Codigo =1003", nullptr,
                "M;1;101;10/02/2026;;;;x;1;10;\nM;;;;;;1003;x;1;10;\n",
                "[error] r.csv, fila 3, columna «articulo»: la cuenta 75999999 no existe" },
            { "income account of the warehouse",
                "UPDATE Almacenes SET CtaIngresosAtipicos ='' WHERE Codigo =1", nullptr,
                "M;1;101;10/02/2026;;;;x;1;10;\n",
                "[error] r.csv, fila 2, columna «almacen»: la cuenta vacía no existe" },
            { "tax account", nullptr, "UPDATE Tipos_Impuesto SET Imp_CtaRep ='47799999'",
                "M;1;101;10/02/2026;;;;x;1;10;\n", "[error] r.csv, fila 2: la cuenta 47799999 no existe" },
            { "no root", "UPDATE Parametros SET Valor ='' WHERE Clave ='Raiz_ProveedoresDeudor'", nullptr,
                "M;1;101;10/02/2026;;;;x;1;10;\n",
                "[error] r.csv, fila 2, columna «proveedor»: No hay raíz con la que formar la cuenta" },
            { "pay days", "UPDATE Proveedores SET DiaPago_1 =0, DiaPago_2 =15 WHERE Codigo =104",
                "UPDATE Formas_Pago SET PrimerVto =20, RestoVtos =16 WHERE Codigo =3",
                "M;1;104;21/01/2026;;;;x;1;100;\n",
                no_cuadran + "no dan previsiones: No coinciden los tipos." },
            { "no instalments", nullptr, "UPDATE Formas_Pago SET NroVtos =0 WHERE Codigo =3",
                "M;1;104;21/01/2026;;;;x;1;100;\n", no_cuadran + "no dan previsiones: División por cero." },
            { "forecasts that do not add up", "UPDATE Empresas SET DecimalesImporte =3",
                "UPDATE Formas_Pago SET NroVtos =1 WHERE Codigo =3", "M;1;104;21/01/2026;;;;x;1;10,05;\n",
                no_cuadran + "dan previsiones por 10,75 y el cargo suma 10,7540." },
            { "recorded before with other contents", nullptr, nullptr,
                "R0;2;103;11/03/2026;Después;;;Queso;3;7;\n",
                "[error] r.csv, fila 2: «R0» ya se registró como AT260001 (ejercicio 2026, almacén 2) con "
                "otro "
                "contenido." } };
    }

    TEST_P(RegistrarRevisado, each_of_these_is_told_and_leaves_both_products_as_they_were)
    {
        const auto bien = contenido();
        for (const auto& mala : malas()) {
            SCOPED_TRACE(mala.nombre);
            {
                const auto abiertas = bases();
                for (auto [conexion, sql] :
                    { std::pair{ abiertas.orvalin, mala.gestion }, { abiertas.bexmor, mala.contabilidad } })
                    if (sql != nullptr)
                        conexion->Execute(sql);
            }
            const auto antes = contenido();
            for (const auto* opcion : { "", "--comprobar" }) {
                const auto ejecucion = registra(mala.filas, opcion);
                EXPECT_EQ(ejecucion.estado, 1);
                EXPECT_THAT(ejecucion.errores, StartsWith(mala.error));
                EXPECT_EQ(contenido(), antes);
            }
            TearDown(); // each with a company of its own
            std::filesystem::remove_all(programa.carpeta / "d");
            SetUp();
            ASSERT_EQ(contenido().size(), bien.size());
        }
    }

    TEST_P(RegistrarRevisado, what_comes_up_in_the_middle_of_a_save_undoes_it_whole)
    {
        no_admite("orvalin.Proveedores_Cargos_Atipicos_Lineas", "Precio = 77");
        no_admite("dbo.Previsiones", "Numero = 3"); // when the entry is there already
        const auto antes = contenido();
        const auto ejecucion = registra("M1;1;101;10/02/2026;;;;x;1;10;\nM1;;;;;;;y;1;77;\n"
                                        "M2;1;104;11/02/2026;;;;x;1;100;\n");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_THAT(ejecucion.errores, StartsWith("[error] r.csv, fila 2: «M1» no se ha registrado: "));
        EXPECT_THAT(ejecucion.errores, HasSubstr("\n[error] r.csv, fila 4: «M2» no se ha registrado: "));
        EXPECT_THAT(ejecucion.errores, Not(HasSubstr("frmCompras")));
        EXPECT_EQ(ejecucion.salida, "0 registradas, 0 ya lo estaban, 2 rechazadas.\n");
        EXPECT_EQ(contenido(), antes) << "no number is used either";
    }

    TEST_P(RegistrarRevisado, the_good_ones_of_a_file_are_recorded_and_corrected_ones_when_it_comes_again)
    {
        const std::string buena = "Z1;1;101;10/02/2026;;;;x;1;10;\n";
        const auto primera = registra(buena + "Z2;1;9999;10/02/2026;;;;x;1;10;\n");
        EXPECT_EQ(primera.estado, 1);
        EXPECT_THAT(primera.salida, EndsWith("\n1 registradas, 0 ya lo estaban, 1 rechazadas.\n"));
        const auto corregida = registra(buena + "Z2;1;102;10/02/2026;;;;x;1;10;\n");
        EXPECT_EQ(corregida.estado, 0) << corregida.errores;
        EXPECT_THAT(corregida.salida, EndsWith("\n1 registradas, 1 ya lo estaban, 0 rechazadas.\n"));
        EXPECT_EQ(valor("SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos"), "3");
        EXPECT_THAT(verificado(), EndsWith(": sin diferencias.\n"));
    }

    TEST_P(RegistrarRevisado, a_reference_is_recorded_again_when_it_is_named)
    {
        const std::string otra = "R0;2;103;12/03/2026;Otra vez;;;Queso;4;7;\n";
        const std::string dos = otra + "\"R,1\";1;101;10/02/2026;;;;x;1;10;\n";
        const auto antes = contenido();
        const auto falta = registra(otra, "--otra-vez R0,R9");
        EXPECT_EQ(falta.estado, 1);
        EXPECT_EQ(falta.errores, "atipicos: --otra-vez: «R9» no está en r.csv. No se ha registrado nada.\n");
        EXPECT_EQ(contenido(), antes);
        EXPECT_EQ(registra(otra, "--otra-vez").estado, 2) << "of which?";

        EXPECT_THAT(registra(dos, "--otra-vez 'R\\,1,R0'").salida,
            EndsWith("\n2 registradas, 0 ya lo estaban, 0 rechazadas.\n"));
        EXPECT_THAT(registra(dos).salida, EndsWith("\n0 registradas, 2 ya lo estaban, 0 rechazadas.\n"));
        EXPECT_EQ(valor("SELECT MAX(Vez) FROM Importaciones WHERE Referencia ='R0'"), "2");
        EXPECT_THAT(registra(dos, "--otra-vez R0 --otra-vez 'R\\,1'").salida,
            EndsWith("\n2 registradas, 0 ya lo estaban, 0 rechazadas.\n"));
        EXPECT_THAT(registra("R0;2;103;11/03/2026;Antes;;;Queso;3;7;\n").salida,
            EndsWith("\n0 registradas, 1 ya lo estaban, 0 rechazadas.\n"))
            << "as it was the first time";
    }

    TEST_P(RegistrarRevisado, checking_only_says_what_would_be_done_and_writes_nothing)
    {
        const auto antes = contenido();
        const auto ejecucion
            = registra("R0;2;103;11/03/2026;Antes;;;Queso;3;7;\nM1;1;101;10/02/2026;;;;x;1;10;\n"
                       "M2;5;101;10/02/2026;;;;x;1;10;\nM3;1;101;10/02/2026;;;;x;1;10;\n",
                "--comprobar");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_EQ(ejecucion.salida,
            "4 reclamaciones: 2 se pueden registrar, 1 ya lo están, 1 tienen errores. No se ha escrito "
            "nada.\n");
        EXPECT_EQ(registra("M1;1;101;10/02/2026;;;;x;1;10;\n", "--comprobar").estado, 0);
        EXPECT_EQ(registra("M2;5;101;10/02/2026;;;;x;1;10;\n", "--comprobar --sin-asiento").estado, 0);
        EXPECT_EQ(contenido(), antes);
    }

    TEST_P(RegistrarRevisado, terms_that_propose_nothing_are_told_at_the_end)
    {
        const auto ejecucion = registra("M1;1;113;10/02/2026;;;;x;1;10;\nM2;1;101;10/02/2026;;;;x;1;10;\n"
                                        "M3;1;113;10/02/2026;;;;x;1;10;\n");
        EXPECT_EQ(ejecucion.estado, 0);
        EXPECT_THAT(ejecucion.salida,
            EndsWith("\nSin previsiones de pago, porque las condiciones del proveedor no las dan: M1, M3.\n"
                     "3 registradas, 0 ya lo estaban, 0 rechazadas.\n"));
        EXPECT_THAT(verificado(), EndsWith(": sin diferencias.\n"));
    }

    TEST_P(RegistrarRevisado, quotes_in_the_catalogues_end_no_statement)
    {
        {
            const auto abiertas = bases();
            abiertas.orvalin->Execute("UPDATE Articulos SET Nombre ='Caja d''anís' WHERE Codigo =1001");
            abiertas.orvalin->Execute(
                "UPDATE Articulos SET Nombre ='x'', 7, 999.5, (SELECT MAX(Nombre) FROM SGD_Usuarios)) --'"
                " WHERE Codigo =1002");
            abiertas.orvalin->Execute("UPDATE Proveedores SET Nombre ='D''Alcoi' WHERE Codigo =104");
            abiertas.bexmor->Execute("UPDATE Empresas SET CuentaBancoPago ='57''0001' WHERE Codigo =1");
        }
        const auto ejecucion = registra("M1;1;104;10/02/2026;;;1001;;1;10;\nM1;;;;;;1002;;2;5;\n");
        EXPECT_EQ(ejecucion.estado, 0) << ejecucion.errores;
        EXPECT_EQ(
            valor("SELECT Descripcion FROM Proveedores_Cargos_Atipicos_Lineas WHERE Cod_Articulo =1001"),
            "Caja d´anís");
        EXPECT_EQ(
            valor("SELECT Descripcion FROM Proveedores_Cargos_Atipicos_Lineas WHERE Cod_Articulo =1002"),
            "x´, 7, 999.5, (SELECT MAX(Nombre) FROM SGD_Usuarios)) --");
        EXPECT_EQ(
            valor("SELECT Unidades FROM Proveedores_Cargos_Atipicos_Lineas WHERE Cod_Articulo =1002"), "2");
        EXPECT_EQ(valor("SELECT COUNT(*) FROM Bexmor.dbo.Apuntes WHERE Concepto LIKE '%D´Alcoi'"), "3");
        EXPECT_EQ(valor("SELECT COUNT(*) FROM Bexmor.dbo.Previsiones WHERE Asiento =2"), "3");
        EXPECT_THAT(verificado(), EndsWith(": sin diferencias.\n"));
    }

    TEST_P(RegistrarRevisado, controls_of_a_file_do_not_reach_the_terminal)
    {
        const auto ejecucion
            = registra("M\x1b[2J;1;101;10/02/2026;;;;x;1;1\x1b[31m;\n"
                       "N\xC2\x9b;1;101;\x07;;;;x;1;1;\n\x1b]0;1;101;10/02/2026;;;;x;1;1;\n");
        EXPECT_EQ(ejecucion.estado, 1);
        for (const auto& texto : { ejecucion.errores, ejecucion.salida })
            EXPECT_EQ(texto.find_first_of(std::string("\x1b\x07")), std::string::npos) << texto;
        EXPECT_THAT(ejecucion.errores, Not(HasSubstr("\xC2\x9b")));
        EXPECT_THAT(ejecucion.salida, EndsWith("\n1 registradas, 0 ya lo estaban, 2 rechazadas.\n"));
    }

    TEST_P(RegistrarRevisado, a_charge_whose_forecasts_cannot_be_proposed_is_not_posted_later_either)
    {
        bases().orvalin->Execute("UPDATE Proveedores SET DiaPago_1 =0, DiaPago_2 =15 WHERE Codigo =101");
        EXPECT_EQ(registra("M1;1;101;21/01/2026;;;;x;1;100;\n", "--sin-asiento").estado, 0);
        const auto antes = contenido();
        const auto ejecucion = programa("contabilizar AT260001 --ejercicio 2026 --almacen 1" + donde());
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_EQ(ejecucion.errores,
            "atipicos: No se ha contabilizado nada: las condiciones de pago del proveedor 101 no dan "
            "previsiones: "
            "No coinciden los tipos. Revise su forma de pago y sus días de pago.\n");
        EXPECT_EQ(contenido(), antes);
    }

    INSTANTIATE_TEST_SUITE_P(motores, RegistrarRevisado,
        testing::Values(Motor{ "sqlite", false }, Motor{ "postgresql", true }),
        [](const auto& caso) { return caso.param.nombre; });

}
}
