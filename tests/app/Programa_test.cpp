// The real program, as a person runs it: commands, formats, messages, exit status.
#include "tests/app/Programa.hpp"

#include "engines/sqlite/Connection.hpp"
#include "tests/support/DiscoPequeno.hpp"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sqlite3.h>

#include <algorithm>

namespace atipicos {
namespace {

    using testing::EndsWith;
    using testing::HasSubstr;
    using testing::StartsWith;

    struct ConMuestra : testing::Test {
        pruebas::Programa programa;

        ConMuestra()
        {
            EXPECT_EQ(programa("crear").estado, 0);
            EXPECT_EQ(programa("registrar " + pruebas::muestra).estado, 0);
        }
    };

    TEST(Programa, without_a_command_it_needs_a_display_or_says_that_it_has_no_windows)
    {
        const pruebas::Programa programa;
        const auto ejecucion = programa("", "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM");
        if (ATIPICOS_CON_VENTANAS) {
            EXPECT_EQ(ejecucion.estado, 1);
            EXPECT_EQ(ejecucion.errores,
                "atipicos: No hay pantalla en la que abrir la ventana (DISPLAY no está definida). Las "
                "órdenes "
                "no la necesitan: atipicos --help\n");
        } else {
            EXPECT_EQ(ejecucion.estado, 2);
            EXPECT_EQ(ejecucion.errores,
                "atipicos: Falta la orden; este programa se ha compilado sin ventanas.\n"
                "Vea: atipicos --help\n");
        }
    }

    TEST(Programa, a_display_that_does_not_answer_is_said_in_spanish)
    {
        if (!ATIPICOS_CON_VENTANAS)
            GTEST_SKIP() << "built without windows";
        const pruebas::Programa programa;
        const auto ejecucion = programa("", "env -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM DISPLAY=:9999");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_EQ(ejecucion.errores,
            "atipicos: No se puede abrir la ventana: la pantalla no responde. Compruebe la variable DISPLAY "
            "o "
            "WAYLAND_DISPLAY. Las órdenes no la necesitan: atipicos --help\n");
    }

    TEST(Programa, wrong_usage_is_status_2_in_spanish)
    {
        const pruebas::Programa programa;
        for (const auto& [argumentos, mensaje] :
            { std::pair{ "borrar", "atipicos: No se conoce la orden «borrar».\n" },
                { "listar", "atipicos: Falta --desde.\n" },
                { "listar --desde 31/02/2026 --hasta 01/01/2026",
                    "atipicos: --desde: «31/02/2026» no es una fecha: se escribe dd/mm/aaaa, como "
                    "21/11/2026.\n" },
                { "listar --desde 01/01/26 --hasta 01/01/2026",
                    "atipicos: --desde: «01/01/26» no es una fecha" },
                { "listar --desde 01/01/2026 --hasta 02/01/2026 --almacen 40000",
                    "atipicos: El valor no es un número admitido: --almacen = 40000\n" },
                { "listar --desde 01/01/2026 --hasta 02/01/2026 --almacen 0x1",
                    "atipicos: --almacen: «0x1» no es un número.\n" },
                { "listar --desde 01/01/2026 --hasta 02/01/2026 --proveedor=-3",
                    "atipicos: --proveedor: «-3» no es un número.\n" },
                { "mostrar AT1 --almacen 1 --ejercicio 99999",
                    "atipicos: El valor no es un número admitido: --ejercicio = 99999\n" },
                { "listar --desde 01/01/2026 --hasta 02/01/2026 --formato pdf",
                    "atipicos: --formato: no se conoce el formato «pdf».\n" },
                { "listar --desde 01/01/2026 --hasta 02/01/2026 --formato xlsx",
                    "atipicos: --formato: xlsx necesita --salida FICHERO.\n" },
                { "copiar", "atipicos: Falta DESTINO.\n" },
                { "--datos x borrar", "atipicos: No se conoce la orden «borrar».\n" },
                { "listar --datos= --desde 01/01/2026 --hasta 02/01/2026",
                    "atipicos: Falta el valor de --datos.\n" },
                { "listar --datos '' --desde 01/01/2026 --hasta 02/01/2026",
                    "atipicos: Falta el valor de --datos.\n" },
                { "listar --desde --hasta 02/01/2026", "atipicos: Falta el valor de --desde.\n" },
                { "verificar --conexion", "atipicos: Falta el valor de --conexion.\n" },
                { "crear --vacia=no", "atipicos: La opción --vacia no lleva ningún valor.\n" },
                { "crear --datos uno --datos dos", "atipicos: Se ha dado más de una vez: --datos.\n" },
                { "copiar uno dos tres", "atipicos: No se esperaba: dos tres\n" },
                { "mostrar AT1 --ejercicio 2026 --almacen 1 --formato csv",
                    "atipicos: --formato: no se conoce el formato «csv».\n" },
                { "imprimir AT1 --ejercicio 2026 --salida x.pdf", "atipicos: Falta --almacen.\n" },
                { "imprimir --desde 01/01/2026 --salida x.pdf", "atipicos: Falta --hasta.\n" },
                { "imprimir --salida x.pdf", "atipicos: Falta CODIGO.\n" },
                { "imprimir AT1 --desde 01/01/2026 --hasta 02/01/2026 --salida x.pdf",
                    "atipicos: --desde: no va con códigos ni con --ejercicio.\n" },
                { "imprimir AT1 --ejercicio 2026 --almacen 1",
                    "atipicos: --salida: se da una de las dos, --salida o --carpeta.\n" },
                { "verificar --rapido", "atipicos: No se esperaba: --rapido\n" },
                { "mostrar AT1 --ejercicio 2026", "atipicos: Falta --almacen.\n" } }) {
            const auto ejecucion = programa(argumentos);
            EXPECT_EQ(ejecucion.estado, 2) << argumentos;
            EXPECT_THAT(ejecucion.errores, StartsWith(mensaje)) << argumentos;
            EXPECT_EQ(ejecucion.salida, "") << argumentos;
        }
    }

    TEST(Programa, help_is_status_0_and_spanish)
    {
        const pruebas::Programa programa;
        for (const auto* orden : { "", "crear", "registrar", "listar", "mostrar", "eliminar", "imprimir",
                 "verificar", "contabilizar", "copiar", "actualizar" }) {
            const auto ejecucion = programa(std::string(orden) + " --help");
            EXPECT_EQ(ejecucion.estado, 0);
            EXPECT_THAT(ejecucion.salida, HasSubstr("Uso: atipicos"));
            EXPECT_THAT(ejecucion.salida, testing::Not(HasSubstr("Options")));
            EXPECT_THAT(ejecucion.salida, testing::Not(HasSubstr("REQUIRED")));
            EXPECT_THAT(ejecucion.salida, testing::Not(HasSubstr("Excludes")));
        }
    }

    TEST(Programa, tells_its_version)
    {
        const auto ejecucion = pruebas::Programa()("--version");
        EXPECT_EQ(ejecucion.estado, 0);
        EXPECT_THAT(ejecucion.salida, testing::MatchesRegex("atipicos [0-9]+\\.[0-9]+\\.[0-9]+\n"));
        EXPECT_EQ(ejecucion.errores, "");
    }

    TEST(Programa, what_it_says_of_itself_is_written_or_its_failure_told)
    {
        if (!std::filesystem::exists("/dev/full"))
            GTEST_SKIP() << "this system has no /dev/full";
        const pruebas::Programa programa;
        for (const auto* que : { "--version", "--help", "listar --help" }) {
            const std::string orden = "cd '" + programa.carpeta.ruta().string()
                + "' && '" ATIPICOS_PROGRAMA "' " + que + " >/dev/full 2>lleno.txt";
            EXPECT_EQ(WEXITSTATUS(std::system(orden.c_str())), 1) << que;
            EXPECT_EQ(programa.lee("lleno.txt"), "atipicos: No se pudo escribir todo en la salida.\n") << que;
        }
    }

    TEST(Programa, crear_refuses_a_folder_that_holds_databases_and_leaves_them)
    {
        const pruebas::Programa programa;
        ASSERT_EQ(programa("crear --datos d").estado, 0);
        const auto antes = programa.lee("d/empresa.db");
        const auto ejecucion = programa("crear --datos d");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_THAT(ejecucion.errores, HasSubstr("ya existe"));
        EXPECT_EQ(programa.lee("d/empresa.db"), antes);
    }

    TEST(Programa, an_empty_database_has_no_company_to_work_with)
    {
        const pruebas::Programa programa;
        ASSERT_EQ(programa("crear --vacia").estado, 0);
        const auto ejecucion = programa("listar --desde 01/01/2026 --hasta 31/12/2026");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_EQ(ejecucion.errores, "atipicos: No existe la empresa 1. La base de datos está vacía.\n");
        EXPECT_THAT(programa("verificar").salida, EndsWith("0 previsiones: sin diferencias.\n"));
    }

    TEST(Programa, databases_that_cannot_be_used_are_told_and_nothing_is_made)
    {
        const pruebas::Programa programa;
        for (const auto* orden :
            { "verificar", "listar --desde 01/01/2026 --hasta 31/12/2026", "registrar x.csv" }) {
            const auto ejecucion = programa(orden);
            EXPECT_EQ(ejecucion.estado, 1) << orden;
            EXPECT_THAT(ejecucion.errores, HasSubstr("datos")) << orden;
        }
        EXPECT_FALSE(std::filesystem::exists(programa.carpeta / "datos"));

        ASSERT_EQ(programa("crear").estado, 0);
        programa.escribe("datos/empresa.db", std::string(9000, 'x'));
        const auto ejecucion = programa("verificar");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_THAT(ejecucion.errores, HasSubstr("El fichero no es una base de datos o está dañado"));
    }

    TEST(Programa, a_read_only_disk_is_told_and_nothing_changes)
    {
        const pruebas::Programa programa;
        const pruebas::DiscoPequeno disco(programa.carpeta / "disco");
        if (!disco.montado())
            GTEST_SKIP() << "mounting a small disk needs root";
        ASSERT_EQ(programa("crear --datos disco/d").estado, 0);
        ASSERT_TRUE(disco.protege());
        const auto ejecucion = programa("registrar " + pruebas::muestra + " --datos disco/d");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_EQ(ejecucion.errores,
            "atipicos: «disco/d/empresa.db»: la base de datos o su carpeta es de sólo lectura.\n");
    }

    TEST(Programa, a_database_of_another_version_is_told)
    {
        const pruebas::Programa programa;
        ASSERT_EQ(programa("crear").estado, 0);
        sqlite::Connection::Abrir({ .fichero = programa.carpeta / "datos/empresa.db" })
            ->Execute("UPDATE Esquema SET Version = 99");
        const auto ejecucion = programa("verificar");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_THAT(ejecucion.errores, HasSubstr("empresa.db"));
        EXPECT_THAT(ejecucion.errores, HasSubstr("99"));
    }

    TEST_F(ConMuestra, listar_as_a_table_shows_headings_rows_and_totals)
    {
        const auto ejecucion = programa("listar --desde 01/11/2026 --hasta 30/11/2026 --proveedor 103");
        EXPECT_EQ(ejecucion.estado, 0);
        EXPECT_THAT(ejecucion.salida, StartsWith("Código"));
        EXPECT_THAT(ejecucion.salida, HasSubstr("Ñandú Exportaciones, S.L."));
        EXPECT_THAT(ejecucion.salida, HasSubstr(" cargos, importe "));
    }

    TEST_F(ConMuestra, a_number_with_zeros_before_is_decimal)
    {
        const std::string lista = "listar --desde 01/01/2025 --hasta 31/12/2026 --proveedor ";
        const auto ejecucion = programa(lista + "0103");
        EXPECT_THAT(ejecucion.salida, HasSubstr("Ñandú Exportaciones, S.L."));
        EXPECT_EQ(ejecucion.salida, programa(lista + "103").salida);
    }

    TEST_F(ConMuestra, a_text_that_no_sheet_can_hold_is_told_and_not_left_out)
    {
        programa.escribe("largo.csv",
            "referencia;almacen;proveedor;fecha;observaciones;franquiciado;articulo;descripcion;unidades;"
            "costo;observaciones_linea\nL;1;101;01/02/2024;;;;Agua;1;10;\n");
        ASSERT_EQ(programa("registrar largo.csv").estado, 0);
        // No file gives a text that long, which the column of SQLite takes all the same.
        sqlite::Connection::Abrir({ .fichero = programa.carpeta / "datos/empresa.db" })
            ->Execute("UPDATE Proveedores_Cargos_Atipicos SET Observ = '" + std::string(32768, 'x')
                + "' WHERE Codigo = 'AT240001'");
        const auto ejecucion
            = programa("listar --desde 01/02/2024 --hasta 01/02/2024 --formato xlsx --salida l.xlsx");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_THAT(ejecucion.errores, StartsWith("atipicos: El cargo AT240001 no cabe en una hoja"));
        EXPECT_FALSE(std::filesystem::exists(programa.carpeta / "l.xlsx"));
    }

    TEST_F(ConMuestra, verificar_writes_nothing_into_the_databases)
    {
        const auto todo = [this] {
            std::string contenido;
            for (const auto* base : { "empresa.db", "empresa.db-wal" })
                contenido += programa.lee(std::string("datos/") + base) + '|';
            return contenido;
        };
        const auto antes = todo();
        EXPECT_EQ(programa("verificar").estado, 0);
        EXPECT_TRUE(todo() == antes);
    }

    TEST_F(ConMuestra, every_command_leaves_one_file_and_a_copy_of_it_is_whole)
    {
        for (const auto& orden : std::vector<std::string>{ "listar --desde 01/01/2026 --hasta 31/12/2026",
                 "mostrar AT260001 --ejercicio 2026 --almacen 4", "verificar",
                 "eliminar AT260001 --ejercicio 2026 --almacen 4 --si", "registrar " + pruebas::muestra }) {
            EXPECT_EQ(programa(orden).estado, 0) << orden;
            const std::filesystem::directory_iterator datos(programa.carpeta / "datos");
            EXPECT_EQ(std::distance(datos, std::filesystem::directory_iterator()), 1) << orden;
        }
        std::filesystem::create_directory(programa.carpeta / "copia");
        std::filesystem::copy_file(
            programa.carpeta / "datos/empresa.db", programa.carpeta / "copia/empresa.db");
        EXPECT_EQ(programa("verificar --datos copia").salida, programa("verificar").salida);
    }

    TEST_F(ConMuestra, an_empty_list_says_so_and_is_no_failure)
    {
        const auto ejecucion = programa("listar --desde 01/01/2031 --hasta 31/12/2031");
        EXPECT_EQ(ejecucion.estado, 0);
        EXPECT_EQ(ejecucion.errores, "No hay cargos entre el 01/01/2031 y el 31/12/2031.\n");
    }

    TEST_F(ConMuestra, csv_and_json_hold_the_same_charges_as_typed_values)
    {
        const std::string rango = "listar --desde 01/01/2025 --hasta 31/12/2026 ";
        ASSERT_EQ(programa(rango + "--formato csv --salida l.csv").estado, 0);
        const auto csv = programa.lee("l.csv");
        EXPECT_THAT(csv, StartsWith("Código;Almacén;Nombre del almacén;"));
        const auto json = nlohmann::json::parse(programa(rango + "--formato json").salida);
        EXPECT_EQ(static_cast<std::size_t>(std::count(csv.begin(), csv.end(), '\n')), json.size() + 1);
        EXPECT_TRUE(json.at(0).at("importe").is_number());
        EXPECT_TRUE(json.at(0).at("asiento").is_number_integer());
        EXPECT_EQ(json.at(0).at("fecha").get<std::string>().size(), 10U);
    }

    TEST_F(ConMuestra, xlsx_holds_numbers_as_numbers_and_dates_as_dates)
    {
        ASSERT_EQ(
            programa("listar --desde 01/01/2025 --hasta 31/12/2026 --formato xlsx --salida l.xlsx").estado,
            0);
        ASSERT_EQ(std::system(("cd '" + programa.carpeta.ruta().string()
                      + "' && unzip -p l.xlsx xl/worksheets/sheet1.xml > hoja.xml")
                                  .c_str()),
            0);
        const auto hoja = programa.lee("hoja.xml");
        EXPECT_THAT(hoja, HasSubstr("<c r=\"F2\" s=\"")) << "the date has a format";
        EXPECT_THAT(hoja, testing::Not(HasSubstr("<c r=\"G2\" t=\"s\""))) << "the amount is no text";
        EXPECT_THAT(hoja, HasSubstr("state=\"frozen\""));
    }

    TEST_F(ConMuestra, an_output_that_cannot_be_written_is_told)
    {
        const auto ejecucion
            = programa("listar --desde 01/01/2025 --hasta 31/12/2026 --formato csv --salida no/hay.csv");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_THAT(ejecucion.errores, HasSubstr("No se puede escribir «no/hay.csv»"));
        if (std::filesystem::exists("/dev/full")) {
            const std::string orden = "cd '" + programa.carpeta.ruta().string()
                + "' && '" ATIPICOS_PROGRAMA
                  "' listar --desde 01/01/2025 --hasta 31/12/2026 >/dev/full 2>lleno.txt";
            EXPECT_EQ(WEXITSTATUS(std::system(orden.c_str())), 1);
            EXPECT_EQ(programa.lee("lleno.txt"), "atipicos: No se pudo escribir todo en la salida.\n");
        }
    }

    /// So many charges of 3 February 2025, and last in every list one of 2 January that cannot be read.
    void agrega_cargos(const pruebas::Programa& programa, int cuantos)
    {
        const std::string columnas
            = "INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, "
              "Proveedor, Fecha, Importe, Asiento, EmpContable, EjContable, Usuario, Hora, Observ, "
              "Cod_Compra, "
              "Documento, Impuesto, Impuesto_Importe, Tipo) ";
        const std::string sql = columnas
            + "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
            + std::to_string(cuantos)
            + ") SELECT 1, 2025, 2, 'AT' || (300000 + i), 103, '2025-02-03', 12.5 + i, 0, 0, 0, 1, "
              "'2025-02-03', 'Palé ' || (i * 7919), 0, 0, 7, 0.88, 0 FROM n;"
            + columnas
            + "VALUES (1, 2025, 2, 'AT299999', 103, '2025-01-02', 'nada', 0, 0, 0, 1, '2025-01-02', '', 0, "
              "0, "
              "7, 0, 0)";
        sqlite3* base = nullptr; // not through the engine, which would read the dates
        ASSERT_EQ(sqlite3_open((programa.carpeta / "datos/empresa.db").c_str(), &base), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(base, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(base);
        sqlite3_close(base);
    }

    TEST_F(ConMuestra, a_list_is_written_while_it_is_read_and_ends_with_its_reader)
    {
        agrega_cargos(programa, 20'000);
        const std::string listar = "' listar --desde 01/01/2025 --hasta 31/12/2026 --formato ";
        for (const auto* formato : { "csv", "json", "tabla" }) {
            const std::string orden = "cd '" + programa.carpeta.ruta().string() + "' && ('" ATIPICOS_PROGRAMA
                + listar + formato + " 2>errores.txt; echo $? >estado.txt) | head -2 >salida.txt";
            ASSERT_EQ(std::system(orden.c_str()), 0);
            EXPECT_EQ(programa.lee("errores.txt"), "atipicos: No se pudo escribir todo en la salida.\n")
                << formato;
            EXPECT_EQ(programa.lee("estado.txt"), "1\n") << formato;
            EXPECT_NE(programa.lee("salida.txt"), "") << formato;
        }
        const auto entera = programa("listar --desde 01/01/2025 --hasta 31/12/2026 --formato csv");
        EXPECT_EQ(entera.estado, 1) << "the last charge cannot be read";
        EXPECT_GT(std::count(entera.salida.begin(), entera.salida.end(), '\n'), 20'000);
    }

    TEST_F(ConMuestra, a_book_that_does_not_fit_on_the_disk_is_told_once_and_in_spanish)
    {
        const pruebas::DiscoPequeno disco(programa.carpeta / "disco", "100k");
        if (!disco.montado())
            GTEST_SKIP() << "mounting a small disk needs root";
        agrega_cargos(programa, 20'000);
        const auto ejecucion
            = programa("listar --desde 03/02/2025 --hasta 31/12/2026 --formato xlsx --salida disco/l.xlsx");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_EQ(ejecucion.errores, "atipicos: No se pudo escribir el libro: no queda sitio en el disco.\n");
        EXPECT_TRUE(std::filesystem::is_empty(programa.carpeta / "disco"));
    }

    TEST_F(ConMuestra, mostrar_prints_an_entry_that_balances_from_a_to_e)
    {
        const auto json = nlohmann::json::parse(
            programa("mostrar AT260001 --ejercicio 2026 --almacen 4 --formato json").salida);
        double saldo = 0;
        for (const auto& apunte : json.at("asiento").at("apuntes"))
            saldo += apunte.at("debe").get<double>() - apunte.at("haber").get<double>();
        EXPECT_NEAR(saldo, 0, 1e-9);
        const auto texto = programa("mostrar AT260001 --ejercicio 2026 --almacen 4").salida;
        for (const auto* trozo :
            { "\nA  ", "\nB  ", "\nC  ", "\nD  ", "\nE  ", "Cuadra", "Registro de impuesto", "Previsión" })
            EXPECT_THAT(texto, HasSubstr(trozo));
    }

    TEST_F(ConMuestra, an_unknown_charge_is_told_by_mostrar_and_eliminar)
    {
        for (const auto* orden : { "mostrar", "eliminar --si" }) {
            const auto ejecucion = programa(std::string(orden) + " AT999999 --ejercicio 2026 --almacen 4");
            EXPECT_EQ(ejecucion.estado, 1);
            EXPECT_EQ(ejecucion.errores,
                "atipicos: No existe el cargo AT999999 del ejercicio 2026 en el almacén 4.\n");
        }
        EXPECT_EQ(programa("mostrar \"x' OR '1'='1\" --ejercicio 2026 --almacen 4").estado, 1)
            << "a code is only a code";
    }

    TEST_F(ConMuestra, eliminar_asks_unless_told_not_to_and_leaves_the_entry)
    {
        const auto sin_terminal = programa("eliminar AT260001 --ejercicio 2026 --almacen 4");
        EXPECT_EQ(sin_terminal.estado, 1);
        EXPECT_THAT(sin_terminal.errores, HasSubstr("--si"));
        const auto eliminado = programa("eliminar AT260001 --ejercicio 2026 --almacen 4 --si");
        EXPECT_EQ(eliminado.estado, 0);
        EXPECT_THAT(eliminado.salida, HasSubstr("sigue en Contabilidad"));
        const auto verificado = programa("verificar");
        EXPECT_EQ(verificado.estado, 0);
        EXPECT_THAT(verificado.salida, StartsWith("Asientos sin cargo"));
    }

    TEST_F(ConMuestra, an_unknown_company_or_user_names_those_that_exist)
    {
        const auto empresa = programa("listar --desde 01/01/2026 --hasta 31/12/2026 --empresa 9");
        EXPECT_EQ(empresa.estado, 1);
        EXPECT_THAT(empresa.errores,
            StartsWith("atipicos: No existe la empresa 9. Hay:\n  1  Comercial Drago Sur, S.L.\n"));
        EXPECT_THAT(programa("listar --desde 01/01/2026 --hasta 31/12/2026 --usuario 99").errores,
            StartsWith("atipicos: No existe el usuario 99. Hay:\n"));
    }

    TEST_F(ConMuestra, a_locked_database_is_told_and_nothing_changes)
    {
        const auto otro = sqlite::Connection::Abrir({ .fichero = programa.carpeta / "datos/empresa.db" });
        otro->BeginTrans();
        const auto ejecucion = programa("eliminar AT260001 --ejercicio 2026 --almacen 4 --si");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_THAT(ejecucion.errores, HasSubstr("[error] frmCompras_Atipicos_Visor:cmdEliminar_Click: "));
        EXPECT_THAT(ejecucion.errores, HasSubstr("bloqueada por otro usuario"));
        otro->RollbackTrans();
        EXPECT_EQ(programa("mostrar AT260001 --ejercicio 2026 --almacen 4").estado, 0);
    }

}
}
