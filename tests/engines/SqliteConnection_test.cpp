#include "engines/sql/Guion.hpp"
#include "engines/sqlite/Connection.hpp"

#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/DiscoPequeno.hpp"
#include "tests/support/ErrorDe.hpp"

#include <gmock/gmock.h>

#include <fstream>
#include <set>

namespace atipicos::sqlite {
namespace {

    using adodb::Categoria;
    using testing::HasSubstr;

    struct Ficheros : testing::Test {
        pruebas::CarpetaTemporal carpeta;

        std::shared_ptr<Connection> crea(const std::string& nombre) const
        {
            auto conexion = Connection::Abrir({ .fichero = carpeta / nombre, .crear = true });
            sql::ejecuta_guion(*conexion, "CREATE TABLE t (Id INT PRIMARY KEY, Fecha DATETIME)");
            return conexion;
        }

        std::pair<Categoria, std::string> al_abrir(Opciones opciones) const
        {
            try {
                static_cast<void>(Connection::Abrir(opciones));
            } catch (const adodb::ErrorBaseDatos& error) {
                return { error.categoria(), error.descripcion() };
            }
            return { Categoria::otra, "opened" };
        }
    };

    std::int32_t cuenta(Connection& conexion)
    {
        auto rs = conexion.CreateRecordset();
        rs->Open("SELECT COUNT(*) AS n FROM t", adodb::CursorType::Static, adodb::LockType::ReadOnly);
        return CLng(rs->Fields("n").Value());
    }

    /// Would take longer than anybody waits for a test.
    constexpr auto interminable
        = "SELECT COUNT(*) AS n FROM t a, t b, t c, t d, t e, t f, t g, t h, t i, t j, t k, t l";

    TEST_F(Ficheros, a_statement_ends_when_nobody_wants_it_any_more_and_the_next_one_runs)
    {
        const auto otra = crea("t.db");
        for (int i = 0; i < 20; ++i)
            otra->Execute("INSERT INTO t (Id) VALUES (" + std::to_string(i) + ")");
        int preguntas = 0;
        bool sigue = true;
        const auto conexion = Connection::Abrir({ .fichero = carpeta / "t.db", .sigue = [&] {
                                                     if (++preguntas > 3)
                                                         sigue = false;
                                                     return sigue;
                                                 } });
        auto rs = conexion->CreateRecordset();
        EXPECT_THAT(pruebas::error_de([&] {
            rs->Open(interminable, adodb::CursorType::ForwardOnly, adodb::LockType::ReadOnly);
        }),
            HasSubstr("(interrupted)"));
        preguntas = -1'000'000;
        sigue = true;
        EXPECT_EQ(cuenta(*conexion), 20);
    }

    TEST_F(Ficheros, a_missing_database_is_named)
    {
        const auto error = al_abrir({ .fichero = carpeta / "no hay.db" });
        EXPECT_EQ(error.first, Categoria::conexion);
        EXPECT_EQ(error.second, "«" + (carpeta / "no hay.db").string() + "»: no existe la base de datos.");
        EXPECT_FALSE(std::filesystem::exists(carpeta / "no hay.db"));
    }

    TEST_F(Ficheros, a_folder_in_its_place_is_named)
    {
        std::filesystem::create_directory(carpeta / "x.db");
        EXPECT_THAT(al_abrir({ .fichero = carpeta / "x.db" }).second,
            HasSubstr("es una carpeta, no una base de datos."));
    }

    TEST_F(Ficheros, a_file_that_is_no_database_is_named)
    {
        std::ofstream(carpeta / "texto.db") << std::string(5000, 'x');
        const auto error = al_abrir({ .fichero = carpeta / "texto.db" });
        EXPECT_EQ(error.first, Categoria::conexion);
        EXPECT_THAT(error.second, HasSubstr("El fichero no es una base de datos o está dañado"));
        EXPECT_THAT(error.second, HasSubstr("texto.db"));
    }

    TEST_F(Ficheros, a_missing_folder_is_named)
    {
        EXPECT_THAT(al_abrir({ .fichero = carpeta / "no hay" / "uno.db", .crear = true }).second,
            HasSubstr("uno.db»: no existe la carpeta en la que crear la base de datos."));
    }

    TEST_F(Ficheros, names_with_reserved_characters_are_opened)
    {
        const auto conexion = crea("a ?#%41ñ'\".db");
        conexion->Execute("INSERT INTO t (Id) VALUES (1)");
        EXPECT_TRUE(std::filesystem::exists(carpeta / "a ?#%41ñ'\".db"));
    }

    TEST_F(Ficheros, a_read_only_database_refuses_to_be_written_and_can_be_read)
    {
        crea("uno.db");
        const auto conexion = Connection::Abrir({ .fichero = carpeta / "uno.db", .solo_lectura = true });
        try {
            conexion->Execute("INSERT INTO t (Id) VALUES (1)");
            FAIL() << "it was written";
        } catch (const adodb::ErrorBaseDatos& error) {
            EXPECT_EQ(error.categoria(), Categoria::solo_lectura);
            EXPECT_THAT(error.descripcion(), HasSubstr("La base de datos es de sólo lectura"));
        }
    }

    std::set<std::string> nombres(const std::filesystem::path& carpeta)
    {
        std::set<std::string> todos;
        for (const auto& entrada : std::filesystem::directory_iterator(carpeta))
            todos.insert(entrada.path().filename().string());
        return todos;
    }

    TEST_F(Ficheros, the_last_one_to_leave_takes_the_log_away_also_when_he_only_read)
    {
        auto quien_escribe = crea("uno.db");
        auto quien_lee = Connection::Abrir({ .fichero = carpeta / "uno.db", .solo_lectura = true });
        EXPECT_EQ(cuenta(*quien_lee), 0);
        quien_escribe->Execute("INSERT INTO t (Id) VALUES (7)");
        quien_escribe.reset();
        EXPECT_EQ(nombres(carpeta.ruta()).size(), 3U) << "what was written is still in the log";
        quien_lee.reset();
        EXPECT_EQ(nombres(carpeta.ruta()), std::set<std::string>{ "uno.db" });
        std::filesystem::copy_file(carpeta / "uno.db", carpeta / "copia.db");
        EXPECT_EQ(cuenta(*Connection::Abrir({ .fichero = carpeta / "copia.db" })), 1);
    }

    TEST_F(Ficheros, a_database_on_a_read_only_disk_is_read_and_nothing_more)
    {
        const pruebas::DiscoPequeno disco(carpeta / "disco");
        if (!disco.montado())
            GTEST_SKIP() << "mounting a small disk needs root";
        crea("uno.db")->Execute("INSERT INTO t (Id) VALUES (7)");
        std::filesystem::copy_file(carpeta / "uno.db", carpeta / "disco" / "uno.db");
        ASSERT_TRUE(disco.protege());
        EXPECT_EQ(
            cuenta(*Connection::Abrir({ .fichero = carpeta / "disco" / "uno.db", .solo_lectura = true })), 1);
        EXPECT_THAT(al_abrir({ .fichero = carpeta / "disco" / "uno.db" }).second,
            HasSubstr("la base de datos o su carpeta es de sólo lectura."));
    }

    TEST_F(Ficheros, a_log_on_a_read_only_disk_is_not_passed_over)
    {
        const pruebas::DiscoPequeno disco(carpeta / "disco");
        if (!disco.montado())
            GTEST_SKIP() << "mounting a small disk needs root";
        const auto abierta = crea("uno.db");
        abierta->Execute("INSERT INTO t (Id) VALUES (7)");
        for (const auto* fichero : { "uno.db", "uno.db-wal" })
            std::filesystem::copy_file(carpeta / fichero, carpeta / "disco" / fichero);
        ASSERT_TRUE(disco.protege());
        const auto protegida
            = Connection::Abrir({ .fichero = carpeta / "disco" / "uno.db", .solo_lectura = true });
        EXPECT_EQ(cuenta(*protegida), 1) << "its last rows are in the log";
        EXPECT_EQ(
            cuenta(*Connection::Abrir({ .fichero = carpeta / "disco" / "uno.db", .solo_lectura = true })), 1)
            << "by two at once";
        EXPECT_EQ(nombres(carpeta / "disco"), (std::set<std::string>{ "uno.db", "uno.db-wal" }));
    }

    TEST_F(Ficheros, commits_are_durable_and_keys_are_real)
    {
        const auto conexion = crea("uno.db");
        auto rs = conexion->CreateRecordset();
        for (const auto& [pragma, valor] : { std::pair{ "PRAGMA journal_mode", Variant("wal") },
                 { "PRAGMA synchronous", Variant(2) }, { "PRAGMA foreign_keys", Variant(1) } }) {
            rs->Open(pragma, adodb::CursorType::Static, adodb::LockType::ReadOnly);
            EXPECT_EQ(rs->Fields(std::size_t{ 0 }).Value(), valor) << pragma;
            rs->Close();
        }
    }

    TEST_F(Ficheros, a_failing_script_names_the_line_of_the_statement)
    {
        const auto conexion = crea("uno.db");
        try {
            sql::ejecuta_guion(*conexion,
                "-- a comment; with a semicolon\nINSERT INTO t (Id)\n VALUES (1);\n\n"
                "INSERT INTO t (Id, Fecha)\n VALUES (2, '31/02/2026');");
            FAIL();
        } catch (const adodb::ErrorBaseDatos& error) {
            EXPECT_EQ(error.descripcion(),
                "línea 5 del guion: La conversión del texto '31/02/2026' en una fecha no es posible.");
        }
    }

    TEST_F(Ficheros, what_follows_a_lost_transaction_is_refused_until_it_is_rolled_back)
    {
        const auto conexion = crea("uno.db");
        conexion->BeginTrans();
        conexion->Execute("INSERT INTO t (Id) VALUES (1)");
        auto rs = conexion->CreateRecordset();
        rs->Open("SELECT * FROM t", adodb::CursorType::Keyset, adodb::LockType::Pessimistic);
        rs->Fields("Id").Value(5);
        EXPECT_THROW(conexion->Execute("INSERT OR ROLLBACK INTO t (Id) VALUES (1)"), adodb::ErrorBaseDatos);
        const auto* motivo = "La transacción se ha perdido por un error anterior: sólo se puede deshacer.";
        EXPECT_EQ(pruebas::error_de([&] { conexion->Execute("INSERT INTO t (Id) VALUES (2)"); }), motivo);
        EXPECT_EQ(pruebas::error_de([&] { rs->Update(); }), motivo);
        EXPECT_EQ(pruebas::error_de([&] { conexion->CommitTrans(); }), motivo);
        EXPECT_EQ(cuenta(*Connection::Abrir({ .fichero = carpeta / "uno.db" })), 0);
        conexion->RollbackTrans();
        conexion->Execute("INSERT INTO t (Id) VALUES (3)");
        EXPECT_EQ(cuenta(*conexion), 1);
    }

    TEST_F(Ficheros, a_full_disk_is_told_and_leaves_nothing_half_written)
    {
        const auto conexion = crea("uno.db");
        conexion->Execute("PRAGMA max_page_count = 4");
        conexion->Execute("CREATE TABLE Textos (x TEXT)");
        conexion->BeginTrans();
        conexion->Execute("INSERT INTO t (Id) VALUES (1)");
        EXPECT_THAT(pruebas::error_de([&] {
            conexion->Execute("INSERT INTO Textos VALUES ('" + std::string(99999, 'x') + "')");
        }),
            HasSubstr("No queda sitio en el disco"));
        EXPECT_NE(pruebas::error_de([&] { conexion->CommitTrans(); }), "no error");
        conexion->RollbackTrans();
        EXPECT_EQ(cuenta(*conexion), 0);
    }

    TEST_F(Ficheros, a_full_disk_on_one_side_loses_the_transaction_of_both)
    {
        const auto pareja = Connection::AbrirPareja({ .fichero = carpeta / "empresa.db", .crear = true });
        pareja.gestion->Execute("CREATE TABLE Cargos (Id INT)");
        pareja.contabilidad->Execute("CREATE TABLE Textos (x TEXT)");
        pareja.gestion->Execute("PRAGMA max_page_count = 4");
        pareja.gestion->BeginTrans();
        pareja.contabilidad->BeginTrans();
        pareja.gestion->Execute("INSERT INTO Cargos VALUES (1)");
        EXPECT_THAT(pruebas::error_de([&] {
            pareja.contabilidad->Execute("INSERT INTO Textos VALUES ('" + std::string(99999, 'x') + "')");
        }),
            HasSubstr("No queda sitio en el disco"));
        const auto* motivo = "La transacción se ha perdido por un error anterior: sólo se puede deshacer.";
        EXPECT_EQ(
            pruebas::error_de([&] { pareja.gestion->Execute("INSERT INTO Cargos VALUES (2)"); }), motivo);
        EXPECT_EQ(pruebas::error_de([&] { pareja.gestion->CommitTrans(); }), motivo);
        EXPECT_EQ(pruebas::error_de([&] { pareja.contabilidad->CommitTrans(); }), motivo);
        pareja.gestion->RollbackTrans();
        pareja.contabilidad->RollbackTrans();
        std::int32_t borradas = -1;
        pareja.gestion->Execute("DELETE FROM Cargos", &borradas);
        EXPECT_EQ(borradas, 0);
    }

    TEST_F(Ficheros, the_date_columns_are_those_of_the_tables_as_they_are_now)
    {
        const auto conexion = crea("uno.db");
        const std::string inserta = "INSERT INTO u VALUES ('01/02/2026')";
        const auto reescrita = [&] { return conexion->reescribe(inserta, Donde::aqui()); };
        EXPECT_EQ(reescrita(), inserta) << "there is no such table yet";
        conexion->Execute("-- with a comment before it\nCREATE TABLE u (Otra AS (1), Fecha DATE)");
        EXPECT_EQ(reescrita(), "INSERT INTO u VALUES ('2026-02-01')");
        conexion->Execute("DROP TABLE u");
        conexion->Execute("CREATE TABLE u (Fecha TEXT)");
        EXPECT_EQ(reescrita(), inserta);
        conexion->BeginTrans();
        conexion->Execute("ALTER TABLE u ADD COLUMN Dia DATETIME");
        EXPECT_THROW(conexion->Execute("INSERT INTO u (Dia) VALUES ('x')"), adodb::ErrorBaseDatos);
        conexion->RollbackTrans();
        EXPECT_EQ(conexion->reescribe("INSERT INTO u (Dia) VALUES ('x')", Donde::aqui()),
            "INSERT INTO u (Dia) VALUES ('x')");
    }

    TEST_F(Ficheros, a_script_may_begin_with_a_mark_and_make_triggers)
    {
        const auto conexion = crea("uno.db");
        sql::ejecuta_guion(*conexion,
            "\xef\xbb\xbf"
            "CREATE TRIGGER doble AFTER INSERT ON t WHEN new.Id < 9 BEGIN"
            " INSERT INTO t (Id) VALUES (CASE WHEN new.Id > 4 THEN 9 ELSE new.Id + 5 END);"
            " DELETE FROM t WHERE Id = 0; END;\n INSERT INTO t (Id) VALUES (1);;");
        EXPECT_EQ(cuenta(*conexion), 2) << "1 and 6";
        EXPECT_EQ(pruebas::error_de([&] {
            conexion->Execute("CREATE TRIGGER x AFTER DELETE ON t BEGIN SELECT 1; END; DELETE FROM t");
        }),
            "Sólo se admite una instrucción en cada ejecución.");
    }

    TEST_F(Ficheros, a_text_with_a_nul_is_refused)
    {
        const auto conexion = crea("uno.db");
        EXPECT_THROW(
            conexion->Execute(std::string("DELETE FROM t\0 WHERE Id = 1", 27)), adodb::ErrorBaseDatos);
        for (int vez = 0; vez < 3; ++vez)
            EXPECT_THROW(
                conexion->Execute(std::string("UPDATE t SET Fecha = 'a\0b'", 27)), adodb::ErrorBaseDatos);
    }

}
}
