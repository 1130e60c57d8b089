#include "engines/sqlite/Connection.hpp"

#include "tests/support/CarpetaTemporal.hpp"

#include <gmock/gmock.h>

#include <fstream>

namespace atipicos::sqlite {
namespace {

    using adodb::Categoria;
    using testing::HasSubstr;

    struct Ficheros : testing::Test {
        pruebas::CarpetaTemporal carpeta;

        std::shared_ptr<Connection> crea(const std::string& nombre) const
        {
            auto conexion = Connection::Abrir({ .fichero = carpeta / nombre, .crear = true });
            conexion->ejecuta_guion("CREATE TABLE t (Id INT PRIMARY KEY, Fecha DATETIME)");
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

    TEST_F(Ficheros, a_missing_attached_database_is_named)
    {
        crea("uno.db");
        EXPECT_THAT(
            al_abrir({ .fichero = carpeta / "uno.db", .adjuntas = { { "B", carpeta / "dos.db" } } }).second,
            HasSubstr("dos.db»: no existe la base de datos."));
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

    TEST_F(Ficheros, the_attached_database_is_free_for_others_while_a_transaction_is_open)
    {
        const auto contabilidad = crea("dos.db");
        crea("uno.db");
        const auto gestion = Connection::Abrir({ .fichero = carpeta / "uno.db",
            .adjuntas = { { "Bexmor", carpeta / "dos.db" } },
            .espera = std::chrono::milliseconds(0) });
        gestion->BeginTrans();
        gestion->Execute("INSERT INTO t (Id) VALUES (1)");
        contabilidad->BeginTrans();
        contabilidad->Execute("INSERT INTO t (Id) VALUES (7)");
        auto rs = gestion->CreateRecordset();
        rs->Open(
            "SELECT COUNT(*) AS n FROM Bexmor.dbo.t", adodb::CursorType::Static, adodb::LockType::ReadOnly);
        EXPECT_EQ(rs->Fields("n").Value(), Variant(0)) << "reading does not wait, and sees what is committed";
        rs->Close();
        contabilidad->CommitTrans();
        gestion->CommitTrans();
        EXPECT_THROW(gestion->Execute("DELETE FROM Bexmor.dbo.t"), adodb::ErrorBaseDatos);
    }

    TEST_F(Ficheros, the_attached_database_is_read_also_when_nobody_has_it_open)
    {
        crea("dos.db")->Execute("INSERT INTO t (Id, Fecha) VALUES (7, '21/11/2026')");
        crea("uno.db");
        const auto gestion = Connection::Abrir(
            { .fichero = carpeta / "uno.db", .adjuntas = { { "Bexmor", carpeta / "dos.db" } } });
        auto rs = gestion->CreateRecordset();
        rs->Open("SELECT Id FROM Bexmor.dbo.t WHERE Fecha = '21/11/2026'", adodb::CursorType::Static,
            adodb::LockType::ReadOnly);
        EXPECT_EQ(rs->Fields("Id").Value(), Variant(7));
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
            conexion->ejecuta_guion("-- a comment; with a semicolon\nINSERT INTO t (Id)\n VALUES (1);\n\n"
                                    "INSERT INTO t (Id, Fecha)\n VALUES (2, '31/02/2026');");
            FAIL();
        } catch (const adodb::ErrorBaseDatos& error) {
            EXPECT_EQ(error.descripcion(),
                "línea 5 del guion: La conversión del texto '31/02/2026' en una fecha no es posible.");
        }
    }

    TEST_F(Ficheros, a_text_with_a_nul_is_refused)
    {
        const auto conexion = crea("uno.db");
        EXPECT_THROW(
            conexion->Execute(std::string("DELETE FROM t\0 WHERE Id = 1", 27)), adodb::ErrorBaseDatos);
    }

}
}
