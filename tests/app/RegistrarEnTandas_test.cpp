// Claims that are committed together: what is printed is what is kept, whatever goes wrong on the way.
#include "tests/app/Programa.hpp"

#include "engines/sqlite/Connection.hpp"
#include "tests/support/ServidorPostgresql.hpp"

#include <gmock/gmock.h>

#include <map>
#include <set>

namespace atipicos {
namespace {

    using testing::EndsWith;
    using testing::HasSubstr;
    using testing::IsEmpty;
    using testing::Not;

    std::string reclamacion(const std::string& referencia, int almacen = 1, const char* fecha = "21/11/2026")
    {
        return referencia + ";" + std::to_string(almacen) + ";101;" + fecha + ";;;;Agua;1;10;\n";
    }

    struct RegistrarEnTandas : testing::Test {
        pruebas::Programa programa;
        RegistrarEnTandas() { EXPECT_EQ(programa("crear").estado, 0); }

        [[nodiscard]] std::shared_ptr<adodb::Connection> base() const
        {
            return sqlite::Connection::Abrir({ .fichero = programa.carpeta / "datos/empresa.db" });
        }

        [[nodiscard]] std::set<std::string> en_la_base() const
        {
            std::set<std::string> todas;
            const auto conexion = base();
            auto rs = conexion->CreateRecordset();
            rs->Open(
                "SELECT Referencia FROM Importaciones", adodb::CursorType::Static, adodb::LockType::ReadOnly);
            for (; !rs->Eof(); rs->MoveNext())
                todas.insert(CStr(rs->Fields(std::size_t{ 0 }).Value()));
            return todas;
        }

        /// The references of the lines of a text that end in so.
        static std::vector<std::string> referencias(const std::string& texto, const std::string& final)
        {
            std::vector<std::string> todas;
            std::istringstream lineas(texto);
            for (std::string linea; std::getline(lineas, linea);)
                if (linea.ends_with(final))
                    todas.push_back(linea.substr(0, linea.find(' ')));
            return todas;
        }
    };

    TEST_F(RegistrarEnTandas, a_claim_that_fails_is_undone_alone)
    {
        std::string fichero = pruebas::cabecera;
        for (int i = 0; i < 12; ++i)
            fichero += reclamacion("R" + std::to_string(i));
        base()->Execute("CREATE TRIGGER no AFTER INSERT ON Importaciones WHEN NEW.Referencia IN ('R5', 'R8')"
                        " BEGIN SELECT RAISE(ABORT, 'no se admite'); END");
        programa.escribe("r.csv", fichero);
        const auto ejecucion = programa("registrar r.csv");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_EQ(ejecucion.errores,
            "[error] r.csv, fila 7: «R5» no se ha registrado: La base de datos no admite el cambio (no se "
            "admite).\n"
            "[error] r.csv, fila 10: «R8» no se ha registrado: La base de datos no admite el cambio (no se "
            "admite).\n");
        EXPECT_THAT(ejecucion.salida, EndsWith("\n10 registradas, 0 ya lo estaban, 2 rechazadas.\n"));
        EXPECT_EQ(en_la_base().size(), 10U);
        EXPECT_THAT(ejecucion.salida, HasSubstr("R11         AT260010"));
        EXPECT_THAT(programa("verificar").salida, EndsWith(": sin diferencias.\n"));
    }

    TEST_F(RegistrarEnTandas, a_commit_that_fails_is_told_for_each_claim_of_it_and_the_others_are_kept)
    {
        // What is found wrong at the end of a transaction only: a reference to a row that there is not.
        base()->Execute("CREATE TABLE Nada (n INT PRIMARY KEY)");
        base()->Execute("CREATE TABLE Tope (n INT REFERENCES Nada (n) DEFERRABLE INITIALLY DEFERRED)");
        base()->Execute("CREATE TRIGGER tope AFTER INSERT ON Importaciones WHEN NEW.Referencia = 'R20'"
                        " BEGIN INSERT INTO Tope VALUES (1); END");
        std::string fichero = pruebas::cabecera;
        std::set<std::string> todas;
        for (int i = 0; i < 40; ++i)
            fichero += reclamacion(*todas.insert("R" + std::to_string(i)).first, 1 + i % 4);
        programa.escribe("r.csv", fichero);
        const auto ejecucion = programa("registrar r.csv");
        EXPECT_EQ(ejecucion.estado, 1);

        const auto hechas = referencias(ejecucion.salida, " registrada");
        const auto guardadas = en_la_base();
        EXPECT_EQ(std::set(hechas.begin(), hechas.end()), guardadas);
        EXPECT_FALSE(guardadas.contains("R20"));
        EXPECT_TRUE(guardadas.contains("R0"));
        EXPECT_TRUE(guardadas.contains("R39"));
        for (const auto& una : todas)
            EXPECT_NE(guardadas.contains(una),
                ejecucion.errores.find("«" + una
                    + "» no se ha registrado: La base de datos no admite el cambio (FOREIGN KEY constraint "
                      "failed).\n")
                    != std::string::npos)
                << una;
        EXPECT_THAT(ejecucion.salida,
            EndsWith("\n" + std::to_string(guardadas.size()) + " registradas, 0 ya lo estaban, "
                + std::to_string(40 - guardadas.size()) + " rechazadas.\n"));
        EXPECT_THAT(programa("verificar").salida, EndsWith(": sin diferencias.\n"));

        base()->Execute("DROP TRIGGER tope");
        EXPECT_EQ(programa("registrar r.csv").estado, 0);
        EXPECT_EQ(en_la_base(), todas);
    }

    TEST_F(RegistrarEnTandas, the_table_of_a_long_file_has_every_claim_once_and_in_its_order)
    {
        std::string fichero = pruebas::cabecera;
        std::vector<std::string> todas;
        for (int i = 0; i < 1003; ++i)
            fichero += reclamacion(todas.emplace_back("R" + std::to_string(i)));
        fichero += reclamacion(todas.emplace_back("Una referencia más larga que las otras").substr(0, 60));
        programa.escribe("r.csv", fichero);
        const auto primera = programa("registrar r.csv");
        EXPECT_EQ(primera.estado, 0) << primera.errores;
        auto esperadas = todas;
        esperadas.back() = "Una";
        EXPECT_EQ(referencias(primera.salida, "  registrada"), esperadas);
        EXPECT_THAT(primera.salida, HasSubstr("\nUna referencia más larga que las otras  AT261004  "));
        EXPECT_EQ(referencias(programa("registrar r.csv").salida, "  ya registrada"), esperadas);
    }

    TEST_F(RegistrarEnTandas, what_was_deleted_meanwhile_is_told)
    {
        programa.escribe("r.csv", pruebas::cabecera + reclamacion("R1") + reclamacion("R2"));
        EXPECT_EQ(programa("registrar r.csv").estado, 0);
        EXPECT_EQ(programa("eliminar AT260001 --ejercicio 2026 --almacen 1 --si").estado, 0);
        const auto otra = programa("registrar r.csv");
        EXPECT_THAT(otra.salida, HasSubstr("R1          AT260001        1"));
        EXPECT_EQ(referencias(otra.salida, "eliminada después"), std::vector<std::string>{ "R1" });
        EXPECT_EQ(referencias(otra.salida, "ya registrada"), std::vector<std::string>{ "R2" });
        EXPECT_THAT(otra.salida, EndsWith("\n0 registradas, 2 ya lo estaban, 0 rechazadas.\n"));
        EXPECT_EQ(otra.errores,
            "[aviso] r.csv, fila 2: el cargo AT260001 de «R1» se eliminó después. Para registrarla otra vez, "
            "dé --otra-vez R1\n");
        const auto nombrada = programa("registrar --otra-vez R1 r.csv");
        EXPECT_THAT(nombrada.salida, EndsWith("\n1 registradas, 1 ya lo estaban, 0 rechazadas.\n"));
        EXPECT_EQ(referencias(nombrada.salida, "  registrada"), std::vector<std::string>{ "R1" });
        EXPECT_EQ(referencias(programa("registrar r.csv").salida, "ya registrada"),
            (std::vector<std::string>{ "R1", "R2" }));
    }

    TEST_F(RegistrarEnTandas, a_pipe_is_read_like_a_file_and_known_again)
    {
        programa.escribe("r.csv", pruebas::cabecera + reclamacion("R1") + reclamacion("R2", 2));
        const auto por_tuberia = programa("registrar tuberia", "mkfifo tuberia; cat r.csv >tuberia &");
        EXPECT_EQ(por_tuberia.estado, 0) << por_tuberia.errores;
        EXPECT_THAT(por_tuberia.salida, EndsWith("\n2 registradas, 0 ya lo estaban, 0 rechazadas.\n"));
        EXPECT_THAT(programa("registrar r.csv").salida,
            EndsWith("\n0 registradas, 2 ya lo estaban, 0 rechazadas.\n"));
    }

    TEST_F(RegistrarEnTandas, a_row_with_bad_quotes_spoils_its_claim_and_no_other)
    {
        programa.escribe("r.csv",
            pruebas::cabecera + reclamacion("R1") + "R2;1;101;21/11/2026;\"a\"b;;;x;1;1;\n"
                + reclamacion("R3") + "R3;;;;;;;\"Gas;1;1;\n" + reclamacion("R4"));
        const auto mal_entrecomillado = programa("registrar r.csv");
        EXPECT_EQ(mal_entrecomillado.estado, 1);
        EXPECT_THAT(mal_entrecomillado.errores,
            testing::StartsWith("[error] r.csv, fila 3: las comillas no están bien puestas"));
        EXPECT_THAT(mal_entrecomillado.errores, HasSubstr("\n[error] r.csv, fila 5: las comillas"));
        EXPECT_EQ(en_la_base(), (std::set<std::string>{ "R1", "R4" }));
    }

    TEST(RegistrarEnTandasEnServidor,
        two_that_go_through_the_warehouses_the_other_way_round_do_not_block_each_other)
    {
        if (const auto falta = pruebas::ServidorPostgresql::falta(); !falta.empty())
            GTEST_SKIP() << falta;
        const pruebas::ServidorPostgresql servidor;
        const pruebas::Programa programa;
        servidor.crea_base("empresa");
        const auto conexion = " --conexion '" + servidor.direccion("empresa") + "' ";
        ASSERT_EQ(programa("crear" + conexion).estado, 0);
        std::string uno = pruebas::cabecera;
        std::string otro = pruebas::cabecera;
        for (int i = 0; i < 120; ++i) {
            uno += reclamacion("U" + std::to_string(i), 1 + i / 3 % 4);
            otro += reclamacion("O" + std::to_string(i), 4 - i / 3 % 4);
        }
        programa.escribe("uno.csv", uno);
        programa.escribe("otro.csv", otro);
        const std::string orden = "cd '" + programa.carpeta.ruta().string()
            + "' && ('" ATIPICOS_PROGRAMA "' registrar uno.csv" + conexion
            + ">u.txt 2>&1 & '" ATIPICOS_PROGRAMA "' registrar otro.csv" + conexion + ">o.txt 2>&1; wait)";
        ASSERT_EQ(std::system(orden.c_str()), 0);
        for (const auto* salida : { "u.txt", "o.txt" })
            EXPECT_THAT(
                programa.lee(salida), EndsWith("\n120 registradas, 0 ya lo estaban, 0 rechazadas.\n"));
        EXPECT_THAT(programa("verificar" + conexion).salida, EndsWith(": sin diferencias.\n"));
    }

}
}
