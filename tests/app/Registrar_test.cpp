// Recording claims files with the real program: what is bad, what is given twice, what is killed half-way.
#include "tests/app/Programa.hpp"

#include "engines/sqlite/Connection.hpp"
#include "tests/support/DiscoPequeno.hpp"

#include <gmock/gmock.h>

#include <csignal>
#include <fcntl.h>
#include <random>
#include <spawn.h>
#include <string_view>
#include <thread>
#include <unistd.h>
#include <vector>

namespace atipicos {
namespace {

    using testing::EndsWith;
    using testing::HasSubstr;
    using testing::StartsWith;

    struct Registrar : testing::Test {
        pruebas::Programa programa;
        Registrar() { EXPECT_EQ(programa("crear").estado, 0); }

        pruebas::Ejecucion registra(const std::string& contenido, const std::string& opciones = {}) const
        {
            programa.escribe("r.csv", contenido);
            return programa("registrar r.csv " + opciones);
        }

        Variant consulta(const std::string& sql) const
        {
            const auto conexion
                = sqlite::Connection::Abrir({ .fichero = programa.carpeta / "datos/empresa.db" });
            auto rs = conexion->CreateRecordset();
            rs->Open(sql, adodb::CursorType::Static, adodb::LockType::ReadOnly);
            return rs->Fields(std::size_t{ 0 }).Value();
        }
    };

    TEST_F(Registrar, the_sample_file_is_recorded_once_however_often_it_is_given)
    {
        const auto primera = programa("registrar " + pruebas::muestra);
        EXPECT_EQ(primera.estado, 0);
        const auto cargos = CLng(consulta("SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos"));
        EXPECT_GE(cargos, 60);
        EXPECT_GE(CLng(consulta("SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos_Lineas")), 180);
        EXPECT_THAT(primera.salida,
            EndsWith("\n" + std::to_string(cargos) + " registradas, 0 ya lo estaban, 0 rechazadas.\n"));
        EXPECT_EQ(primera.errores, "");

        const auto segunda = programa("registrar " + pruebas::muestra);
        EXPECT_EQ(segunda.estado, 0);
        EXPECT_THAT(segunda.salida,
            EndsWith("\n0 registradas, " + std::to_string(cargos) + " ya lo estaban, 0 rechazadas.\n"));
        EXPECT_EQ(consulta("SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos"), Variant(cargos));
        EXPECT_THAT(programa("verificar").salida, EndsWith(": sin diferencias.\n"));
    }

    TEST_F(Registrar, the_same_contents_under_another_name_are_known_and_recorded_again_only_on_purpose)
    {
        const auto fichero = pruebas::cabecera + "R1;1;101;21/11/2026;;;;Agua;1;10;\n";
        EXPECT_EQ(registra(fichero).estado, 0);
        programa.escribe("otro.csv", fichero);
        EXPECT_THAT(programa("registrar otro.csv").salida, HasSubstr("0 registradas, 1 ya lo estaban"));
        EXPECT_THAT(
            programa("registrar otro.csv --otra-vez R1").salida, HasSubstr("1 registradas, 0 ya lo estaban"));
        EXPECT_THAT(
            programa("registrar otro.csv --otra-vez R1").salida, HasSubstr("1 registradas, 0 ya lo estaban"));
        EXPECT_EQ(consulta("SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos"), Variant(3));
    }

    TEST_F(Registrar, a_bad_charge_is_told_and_the_good_ones_of_the_file_are_recorded)
    {
        const auto ejecucion = registra(pruebas::cabecera
            + "R1;1;101;21/11/2026;;;;Agua;1;10;\n"
              "R2;1;101;21/11/2026;;;;Agua;dos;10;\n"
              "R3;9;999;21/11/2026;;;7777;Agua;1;10;\n"
              "R4;1;101;21/11/2026;;;;Agua;900000000;900000000;\n"
              "R5;2;102;21/11/2026;;S;;Vino;1;10;\n");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_EQ(ejecucion.errores,
            "[error] r.csv, fila 3, columna «unidades»: «dos» no es un número (como 1.234,56).\n"
            "[error] r.csv, fila 4, columna «almacen»: no existe el almacén 9.\n"
            "[error] r.csv, fila 4, columna «proveedor»: no existe el proveedor 999.\n"
            "[error] r.csv, fila 4, columna «articulo»: no existe el artículo 7777.\n"
            "[error] r.csv, fila 5, columna «costo»: unidades por costo no cabe en un importe.\n");
        EXPECT_THAT(ejecucion.salida, EndsWith("\n2 registradas, 0 ya lo estaban, 3 rechazadas.\n"));
        EXPECT_EQ(consulta("SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos"), Variant(2));
        EXPECT_EQ(programa("verificar").estado, 0);
    }

    TEST_F(Registrar, files_that_cannot_be_read_are_told)
    {
        std::filesystem::create_directory(programa.carpeta / "carpeta");
        programa.escribe("vacio.csv", "");
        programa.escribe("falta.csv", "referencia;almacen\n");
        for (const auto& [fichero, mensaje] :
            { std::pair{ "no_hay.csv", "No se puede leer «no_hay.csv»: no existe." },
                { "carpeta", "«carpeta» es una carpeta, no un fichero." },
                { "vacio.csv", "vacio.csv, el fichero está vacío." },
                { "falta.csv", "falta.csv, fila 1: falta la columna «proveedor»." } }) {
            const auto ejecucion = programa(std::string("registrar ") + fichero);
            EXPECT_EQ(ejecucion.estado, 1);
            EXPECT_THAT(ejecucion.errores, StartsWith(std::string("atipicos: ") + mensaje));
        }
    }

    TEST_F(Registrar, a_claim_of_which_insertar_refuses_a_line_is_undone_whole)
    {
        // A zero date cannot be had from a file, and quotes are replaced: a trigger stands for a table that
        // refuses.
        sqlite::Connection::Abrir({ .fichero = programa.carpeta / "datos/empresa.db" })
            ->Execute("CREATE TRIGGER no BEFORE INSERT ON Proveedores_Cargos_Atipicos_Lineas"
                      " WHEN NEW.Num_Linea = 2 BEGIN SELECT RAISE(ABORT, 'línea no admitida'); END");
        const auto ejecucion = registra(pruebas::cabecera
            + "R1;1;101;21/11/2026;;;;Agua;1;10;\nR1;;;;;;;Gas;1;10;\nR2;1;101;21/11/2026;;;;Agua;1;10;\n");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_EQ(ejecucion.errores,
            "[error] r.csv, fila 2: «R1» no se ha registrado: La base de datos no admite el cambio (línea no "
            "admitida).\n");
        EXPECT_THAT(ejecucion.salida, HasSubstr("\nR2          AT260001"));
        EXPECT_THAT(ejecucion.salida, EndsWith("\n1 registradas, 0 ya lo estaban, 1 rechazadas.\n"));
        EXPECT_THAT(programa("verificar").salida,
            EndsWith("Verificación: 1 cargos, 1 líneas, 1 asientos, 5 apuntes, 1 registros de impuesto, 1 "
                     "previsiones: sin diferencias.\n"));
    }

    TEST_F(Registrar, a_charge_that_insertar_refuses_whole_is_not_taken_for_recorded)
    {
        sqlite::Connection::Abrir({ .fichero = programa.carpeta / "datos/empresa.db" })
            ->Execute("CREATE TRIGGER no BEFORE INSERT ON Proveedores_Cargos_Atipicos"
                      " WHEN NEW.Observ = 'mala' BEGIN SELECT RAISE(ABORT, 'cargo no admitido'); END");
        const auto ejecucion = registra(pruebas::cabecera
            + "R1;1;101;21/11/2026;;;;Agua;1;10;\nR2;1;101;21/11/2026;mala;;;Agua;1;10;\n"
              "R3;1;101;21/11/2026;;;;Agua;1;10;\n");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_EQ(ejecucion.errores,
            "[error] r.csv, fila 3: «R2» no se ha registrado: La base de datos no admite el cambio (cargo no "
            "admitido).\n");
        EXPECT_THAT(ejecucion.salida, EndsWith("\n2 registradas, 0 ya lo estaban, 1 rechazadas.\n"));
        EXPECT_EQ(consulta("SELECT COUNT(*) FROM Importaciones"), Variant(2));
        EXPECT_EQ(consulta("SELECT COUNT(*) FROM Importaciones WHERE Referencia = 'R2'"), Variant(0));
    }

    TEST_F(Registrar, a_disk_that_fills_up_is_told_and_what_was_recorded_before_stays_whole)
    {
        const pruebas::DiscoPequeno disco(programa.carpeta / "disco");
        if (!disco.montado())
            GTEST_SKIP() << "mounting a small disk needs root";
        ASSERT_EQ(programa("crear --datos disco/d").estado, 0);
        const auto ejecucion = programa("registrar " + pruebas::muestra + " --datos disco/d");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_THAT(ejecucion.errores,
            testing::MatchesRegex(
                "\\[error\\] reclamaciones.csv, fila [0-9]+: No queda sitio en el disco para "
                "la base de datos[^\n]*\\. Haga sitio y registre el mismo fichero otra vez.\n"
                "atipicos: Quedan [0-9]+ por registrar: registre el mismo fichero otra vez.\n"))
            << "one message, and no claim more is tried";
        EXPECT_THAT(ejecucion.salida, testing::Not(HasSubstr("\n0 registradas")));
        EXPECT_THAT(programa("verificar --datos disco/d").salida, EndsWith(": sin diferencias.\n"));
    }

    TEST_F(Registrar, a_file_without_permission_is_told)
    {
        if (geteuid() == 0)
            GTEST_SKIP() << "root may read everything";
        programa.escribe("r.csv", pruebas::cabecera);
        std::filesystem::permissions(programa.carpeta / "r.csv", std::filesystem::perms::none);
        EXPECT_THAT(programa("registrar r.csv").errores, StartsWith("atipicos: No se puede leer «r.csv»: "));
    }

    TEST_F(Registrar, a_date_in_a_year_that_is_not_open_is_refused_and_kept_without_entry_when_asked_to)
    {
        const auto fichero = pruebas::cabecera + "R1;1;101;21/11/2031;;;;Agua;1;10;\n";
        const auto ejecucion = registra(fichero);
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_EQ(ejecucion.errores,
            "[error] r.csv, fila 2, columna «fecha»: el ejercicio 2031 no está abierto en la empresa "
            "contable 1. Ábralo en contabilidad.\n"
            "[error] r.csv, fila 2: «R1» no se puede contabilizar; para guardarla sin asiento, dé "
            "--sin-asiento.\n");
        EXPECT_EQ(consulta("SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos"), Variant(0));
        EXPECT_EQ(consulta("SELECT COUNT(*) FROM Contador_Proveedores_Cargos_Atipicos"), Variant(0));

        const auto sin_asiento = registra(fichero, "--sin-asiento");
        EXPECT_EQ(sin_asiento.estado, 0);
        EXPECT_THAT(sin_asiento.errores,
            StartsWith("[aviso] r.csv, fila 2, columna «fecha»: «R1» se guarda sin asiento: el ejercicio"));
        EXPECT_EQ(consulta("SELECT Asiento FROM Proveedores_Cargos_Atipicos"), Variant(0));
        EXPECT_EQ(consulta("SELECT COUNT(*) FROM Bexmor_Asientos"), Variant(0));
        EXPECT_THAT(
            programa("verificar").salida, HasSubstr("no tiene asiento y la empresa contabiliza sus cargos."));
    }

    TEST_F(Registrar, what_can_be_posted_is_posted_also_when_it_need_not)
    {
        const auto ejecucion = registra(
            pruebas::cabecera + "R1;1;101;21/11/2031;;;;Agua;1;10;\nR2;2;102;21/11/2026;;;;Vino;1;10;\n",
            "--sin-asiento");
        EXPECT_EQ(ejecucion.estado, 0);
        EXPECT_EQ(
            consulta("SELECT Asiento FROM Proveedores_Cargos_Atipicos WHERE Cod_Almacen = 2"), Variant(1));
    }

    TEST_F(Registrar, a_date_before_2000_is_refused_because_it_cannot_be_numbered)
    {
        const auto ejecucion = registra(pruebas::cabecera + "R1;1;101;31/12/1999;;;;Agua;1;10;\n");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_EQ(ejecucion.errores,
            "[error] r.csv, fila 2, columna «fecha»: los cargos se numeran desde el 01/01/2000 y el "
            "31/12/1999 es anterior.\n");
        EXPECT_EQ(consulta("SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos"), Variant(0));
        EXPECT_EQ(consulta("SELECT COUNT(*) FROM Importaciones"), Variant(0))
            << "it is not taken for recorded";
    }

    TEST_F(Registrar, two_processes_at_once_give_unique_and_consecutive_codes)
    {
        std::string uno = pruebas::cabecera;
        std::string otro = pruebas::cabecera;
        for (int i = 0; i < 40; ++i) {
            uno += "U" + std::to_string(i) + ";1;101;21/11/2026;;;;Agua;1;10;\n";
            otro += "O" + std::to_string(i) + ";1;102;21/11/2026;;;;Vino;2;10;\n";
        }
        programa.escribe("uno.csv", uno);
        programa.escribe("otro.csv", otro);
        const std::string orden = "cd '" + programa.carpeta.ruta().string()
            + "' && ('" ATIPICOS_PROGRAMA "' registrar uno.csv >u.txt 2>&1 & '" ATIPICOS_PROGRAMA
              "' registrar otro.csv >o.txt 2>&1; wait)";
        ASSERT_EQ(std::system(orden.c_str()), 0);
        EXPECT_EQ(consulta("SELECT COUNT(DISTINCT Codigo) FROM Proveedores_Cargos_Atipicos"), Variant(80))
            << programa.lee("u.txt") << programa.lee("o.txt");
        EXPECT_EQ(consulta("SELECT MAX(Codigo) FROM Proveedores_Cargos_Atipicos"), Variant("AT260080"));
        EXPECT_EQ(programa("verificar").estado, 0);
    }

    TEST_F(Registrar, one_file_given_to_two_processes_at_once_is_recorded_once)
    {
        std::string fichero = pruebas::cabecera;
        for (int i = 0; i < 60; ++i)
            fichero += "R" + std::to_string(i) + ";1;101;21/11/2026;;;;Agua;1;10;\n";
        programa.escribe("r.csv", fichero);
        const std::string orden = "cd '" + programa.carpeta.ruta().string()
            + "' && ('" ATIPICOS_PROGRAMA "' registrar r.csv >u.txt 2>&1 & '" ATIPICOS_PROGRAMA
              "' registrar r.csv >o.txt 2>&1; wait)";
        std::system(orden.c_str()); // either may have met the other, which is status 1
        EXPECT_EQ(consulta("SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos"), Variant(60));
        EXPECT_EQ(consulta("SELECT MAX(Vez) FROM Importaciones"), Variant(1));
        for (const auto* salida : { "u.txt", "o.txt" }) {
            EXPECT_THAT(programa.lee(salida), HasSubstr(", 0 rechazadas"));
            EXPECT_THAT(programa.lee(salida), testing::Not(HasSubstr("a medias")));
        }
        EXPECT_EQ(programa("verificar").estado, 0);
    }

    TEST_F(Registrar, what_is_being_recorded_meanwhile_is_no_difference_for_verificar)
    {
        std::string fichero = pruebas::cabecera;
        for (int i = 0; i < 300; ++i)
            fichero += "R" + std::to_string(i) + ";1;101;21/11/2026;;;;Agua;1;10;\n";
        programa.escribe("r.csv", fichero);
        const std::string orden = "cd '" + programa.carpeta.ruta().string()
            + "' && { '" ATIPICOS_PROGRAMA "' registrar r.csv >r.txt 2>&1; echo $? >fin.txt; } &";
        ASSERT_EQ(std::system(orden.c_str()), 0);
        int veces = 0;
        for (; programa.lee("fin.txt").empty(); ++veces) {
            const auto verificado = programa("verificar");
            EXPECT_EQ(verificado.estado, 0) << verificado.salida << verificado.errores;
        }
        EXPECT_GT(veces, 0);
        EXPECT_EQ(programa.lee("fin.txt"), "0\n") << programa.lee("r.txt");
    }

    TEST_F(Registrar, a_reference_recorded_by_another_meanwhile_is_told_and_not_doubled)
    {
        // Stands for another process that comes between the look-up and the save.
        sqlite::Connection::Abrir({ .fichero = programa.carpeta / "datos/empresa.db" })
            ->Execute("CREATE TRIGGER otro AFTER INSERT ON Importaciones WHEN NEW.Referencia = 'R1' BEGIN"
                      " INSERT INTO Importaciones SELECT NEW.Huella, 'R2', 1, NEW.Cod_Empresa,"
                      " NEW.Cod_Ejercicio, NEW.Cod_Almacen, NEW.Codigo, NEW.Contenido; END");
        const auto ejecucion = registra(
            pruebas::cabecera + "R1;1;101;21/11/2026;;;;Agua;1;10;\nR2;1;101;21/11/2026;;;;Agua;1;10;\n");
        EXPECT_EQ(ejecucion.estado, 0);
        EXPECT_EQ(ejecucion.errores,
            "[aviso] r.csv, fila 3: Otro proceso acaba de registrar «R2» como AT260001.\n");
        EXPECT_THAT(ejecucion.salida, EndsWith("\n1 registradas, 1 ya lo estaban, 0 rechazadas.\n"));
        EXPECT_EQ(consulta("SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos"), Variant(1));
    }

    TEST_F(Registrar, a_bad_row_is_refused_again_when_its_reference_was_recorded_before)
    {
        const auto fila = [](const char* referencia) {
            return std::string(referencia) + ";1;101;21/11/2026;;;;Agua;1;10;\n";
        };
        const auto fichero = pruebas::cabecera + fila("R1") + fila("R2") + fila("R1");
        EXPECT_THAT(registra(fichero).salida, EndsWith("\n1 registradas, 0 ya lo estaban, 1 rechazadas.\n"))
            << "also its first part";
        const auto segunda = registra(fichero);
        EXPECT_EQ(segunda.estado, 1);
        EXPECT_THAT(segunda.salida, EndsWith("\n0 registradas, 1 ya lo estaban, 1 rechazadas.\n"));
    }

    /// Starts recording and kills it after so long; returns whether it was still at it.
    bool registra_y_mata(const pruebas::Programa& programa, std::chrono::microseconds cuando)
    {
        const auto datos = (programa.carpeta / "datos").string();
        std::string programa_ruta = ATIPICOS_PROGRAMA;
        std::string orden = "registrar";
        std::string fichero = ATIPICOS_FUENTES "/host/datos/reclamaciones.csv";
        std::string opcion = "--datos=" + datos;
        char* argumentos[]{ programa_ruta.data(), orden.data(), fichero.data(), opcion.data(), nullptr };
        posix_spawn_file_actions_t acciones;
        posix_spawn_file_actions_init(&acciones);
        posix_spawn_file_actions_addopen(&acciones, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&acciones, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        // Killed, it can leave a file of SQLite's among the temporary ones.
        auto temporales = "TMPDIR=" + programa.carpeta.ruta().string();
        std::vector<char*> entorno{ temporales.data() };
        for (char** variable = environ; *variable != nullptr; ++variable)
            if (!std::string_view(*variable).starts_with("TMPDIR="))
                entorno.push_back(*variable);
        entorno.push_back(nullptr);
        pid_t proceso = 0;
        EXPECT_EQ(
            posix_spawn(&proceso, ATIPICOS_PROGRAMA, &acciones, nullptr, argumentos, entorno.data()), 0);
        posix_spawn_file_actions_destroy(&acciones);
        std::this_thread::sleep_for(cuando);
        kill(proceso, SIGKILL);
        int estado = 0;
        waitpid(proceso, &estado, 0);
        return WIFSIGNALED(estado);
    }

    TEST_F(Registrar, killed_at_random_moments_and_started_again_it_records_nothing_twice)
    {
        std::mt19937 azar(20261121); // NOLINT: the moments depend on the machine anyway
        int matadas = 0;
        for (int vez = 0; vez < 12; ++vez)
            matadas += registra_y_mata(programa, std::chrono::milliseconds(20 + azar() % 60)) ? 1 : 0;
        const auto acabada = programa("registrar " + pruebas::muestra);
        EXPECT_EQ(acabada.estado, 0);
        const auto cargos = CLng(consulta("SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos"));
        EXPECT_EQ(consulta("SELECT COUNT(*) FROM Importaciones"), Variant(cargos));
        EXPECT_EQ(consulta("SELECT COUNT(DISTINCT Referencia) FROM Importaciones"), Variant(cargos));
        EXPECT_GT(matadas, 0) << "it was always through before it could be killed";

        const auto verificado = programa("verificar").salida;
        EXPECT_THAT(verificado, EndsWith(": sin diferencias.\n"));
        EXPECT_THAT(verificado, testing::Not(HasSubstr("Asientos sin cargo")));
    }

}
}
