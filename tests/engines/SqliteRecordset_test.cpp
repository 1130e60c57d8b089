#include "engines/sql/Guion.hpp"
#include "engines/sqlite/Connection.hpp"

#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/ErrorDe.hpp"

#include <gmock/gmock.h>

namespace atipicos::sqlite {
namespace {

    using adodb::CursorType;
    using adodb::ErrorBaseDatos;
    using adodb::LockType;

    struct Filas : testing::Test {
        pruebas::CarpetaTemporal carpeta;
        std::shared_ptr<Connection> conexion = abre();

        Filas()
        {
            sql::ejecuta_guion(*conexion,
                "CREATE TABLE t (Id INT PRIMARY KEY, Fecha DATETIME, Dinero MONEY, Texto NVARCHAR(9));"
                "INSERT INTO t (Id, Fecha, Dinero, Texto) VALUES (1, '21/11/2026', 12.5, 'uno'),"
                " (2, NULL, NULL, NULL), (3, '22/11/2026 9:05:03', -3, 'tres')");
        }

        std::shared_ptr<Connection> abre() const
        {
            return Connection::Abrir(
                { .fichero = carpeta / "uno.db", .crear = true, .espera = std::chrono::milliseconds(0) });
        }

        std::unique_ptr<adodb::Recordset> lee(
            const std::string& sql, CursorType cursor = CursorType::ForwardOnly) const
        {
            auto rs = conexion->CreateRecordset();
            rs->Open(sql, cursor, LockType::ReadOnly);
            return rs;
        }

        std::unique_ptr<adodb::Recordset> edita(const std::string& sql) const
        {
            auto rs = conexion->CreateRecordset();
            rs->Open(sql, CursorType::Keyset, LockType::Pessimistic);
            return rs;
        }

        std::string textos(const std::string& sql) const ///< the first column, one value after the other
        {
            std::string junto;
            for (auto rs = lee(sql); !rs->Eof(); rs->MoveNext())
                rs->Fields(std::size_t{ 0 }).anexa_texto(junto += "|");
            return junto;
        }
    };

    TEST_F(Filas, rows_left_unread_do_not_stand_in_the_way_of_a_write_after_another_user)
    {
        const auto otra = abre();
        const auto abiertas = lee("SELECT Id FROM t ORDER BY Id");
        otra->Execute("INSERT INTO t (Id) VALUES (10)");
        conexion->Execute("INSERT INTO t (Id) VALUES (11)");
        const auto tambien = lee("SELECT Id FROM t ORDER BY Id");
        otra->Execute("INSERT INTO t (Id) VALUES (12)");
        conexion->BeginTrans();
        conexion->Execute("INSERT INTO t (Id) VALUES (13)");
        conexion->CommitTrans();
        EXPECT_EQ(textos("SELECT Id FROM t ORDER BY Id"), "|1|2|3|10|11|12|13");
    }

    TEST_F(Filas, rows_being_read_are_those_of_the_moment_they_were_asked_for)
    {
        const auto rs = lee("SELECT * FROM t ORDER BY Id", CursorType::Static);
        const auto& id = rs->Fields("Id");
        const auto& dinero = rs->Fields("Dinero");
        EXPECT_EQ(id.Value(), Variant(1));
        conexion->Execute("UPDATE t SET Dinero = 99, Id = Id + 50");
        EXPECT_EQ(id.Value(), Variant(1)) << "the same field goes on reading the same row";
        EXPECT_EQ(dinero.Value(), Variant(Currency::de_texto("12.5")));
        rs->MoveNext();
        EXPECT_EQ(dinero.Value(), Variant(Nulo{}));
        rs->MoveNext();
        EXPECT_EQ(CStr(rs->Fields("Fecha").Value()), "22/11/2026 9:05:03");
        rs->MoveNext();
        EXPECT_TRUE(rs->Eof());
        EXPECT_EQ(textos("SELECT Id FROM t ORDER BY Id"), "|51|52|53");
    }

    TEST_F(Filas, the_appended_text_is_that_of_the_value_in_memory_or_not)
    {
        const std::string consulta = "SELECT Fecha, Dinero, Texto, 2.5 AS n FROM t WHERE Id = 1";
        const auto leida = lee(consulta);
        const auto editada = edita(consulta);
        for (const auto* campo : { "Fecha", "Dinero", "Texto", "n" }) {
            std::string una;
            std::string otra;
            leida->Fields(campo).anexa_texto(una);
            editada->Fields(campo).anexa_texto(otra);
            EXPECT_EQ(una, otra) << campo;
            EXPECT_EQ(una, CStr(leida->Fields(campo).Value()));
        }
    }

    TEST_F(Filas, a_closed_recordset_says_so_and_opens_again)
    {
        const auto rs = lee("SELECT * FROM t");
        rs->Close();
        EXPECT_TRUE(rs->Eof());
        EXPECT_EQ(pruebas::error_de([&] { static_cast<void>(rs->Fields("Id")); }),
            "El conjunto de filas está cerrado.");
        EXPECT_EQ(pruebas::error_de([&] { rs->MoveNext(); }), "El conjunto de filas está cerrado.");
        EXPECT_EQ(pruebas::error_de([&] { rs->Update(); }), "El conjunto de filas está cerrado.");
        rs->Open("SELECT * FROM t", CursorType::Static, LockType::ReadOnly);
        EXPECT_EQ(pruebas::error_de([&] { rs->Open("SELECT 1", CursorType::Static, LockType::ReadOnly); }),
            "El conjunto de filas ya está abierto.");
    }

    TEST_F(Filas, past_the_end_there_is_no_value_to_read_nor_to_change)
    {
        const auto rs = edita("SELECT * FROM t WHERE Id = 99");
        EXPECT_TRUE(rs->Eof());
        EXPECT_EQ(pruebas::error_de([&] { static_cast<void>(rs->Fields("Id").Value()); }),
            "No hay ninguna fila de la que leer el campo «Id».");
        EXPECT_THROW(rs->Fields("Id").Value(1), ErrorBaseDatos);
        EXPECT_EQ(pruebas::error_de([&] { rs->Update(); }), "No hay ninguna fila que guardar.");
    }

    TEST_F(Filas, dates_money_and_texts_are_written_as_statements_write_them)
    {
        auto rs = edita("SELECT * FROM [main].[t] WHERE Id = 3");
        rs->Fields("Fecha").Value("");
        rs->Fields("Dinero").Value(Currency::de_texto("-0.0001"));
        rs->Fields("Texto").Value("d'Or €");
        rs->Update();
        rs->Close();
        EXPECT_EQ(textos("SELECT Fecha || ' ' || Texto FROM t WHERE Dinero = -0.0001"), "|1900-01-01 d'Or €");
        rs = edita("SELECT * FROM t WHERE Id = 3");
        rs->Fields("Fecha").Value(*Date::de_dia(2026, 2, 1));
        EXPECT_EQ(pruebas::error_de([&] { rs->Fields("Fecha").Value("31/02/2026"); }),
            "La conversión del texto '31/02/2026' en una fecha no es posible.");
        rs->Update();
        EXPECT_EQ(textos("SELECT Fecha || '' FROM t WHERE Id = 3"), "|2026-02-01");
    }

    TEST_F(Filas, several_rows_are_changed_one_after_the_other)
    {
        conexion->BeginTrans();
        auto rs = edita("SELECT * FROM t ORDER BY Id");
        for (; !rs->Eof(); rs->MoveNext()) {
            rs->Fields("Texto").Value("f");
            rs->Update();
        }
        rs->AddNew();
        rs->Fields("Id").Value(4);
        EXPECT_EQ(rs->Fields("Texto").Value(), Variant(Nulo{})) << "a new row begins all null";
        rs->Update();
        rs->Fields("Texto").Value("g");
        rs->Update();
        conexion->CommitTrans();
        EXPECT_EQ(textos("SELECT Texto FROM t ORDER BY Id"), "|f|f|f|g");
    }

    TEST_F(Filas, a_row_without_its_key_or_gone_is_not_written)
    {
        auto rs = edita("SELECT Texto FROM t WHERE Id = 1");
        rs->Fields("Texto").Value("x");
        EXPECT_EQ(pruebas::error_de([&] { rs->Update(); }),
            "La fila no se puede guardar: falta el campo clave «Id».");
        rs->Close();
        conexion->BeginTrans();
        rs = edita("SELECT * FROM t WHERE Id = 1");
        conexion->Execute("DELETE FROM t WHERE Id = 1");
        rs->Fields("Texto").Value("x");
        EXPECT_EQ(pruebas::error_de([&] { rs->Update(); }),
            "La fila no se puede guardar: ya no está en la tabla «t».");
        rs->AddNew();
        EXPECT_NO_THROW(rs->Update()) << "a row of nothing but defaults";
        conexion->RollbackTrans();
    }

    TEST_F(Filas, a_refused_update_is_the_errors_of_the_line_that_asked_for_it)
    {
        const auto rs = edita("SELECT * FROM t WHERE Id = 1");
        rs->Fields("Id").Value(2);
        try {
            rs->Update();
            FAIL() << "two rows with one key";
        } catch (const ErrorBaseDatos& error) {
            EXPECT_EQ(error.categoria(), adodb::Categoria::restriccion);
            EXPECT_EQ(error.donde().linea(), __LINE__ - 4U);
        }
        rs->Close();
        EXPECT_EQ(textos("SELECT Texto FROM t WHERE Id = 1"), "|uno");
        EXPECT_NO_THROW(abre()->Execute("DELETE FROM t")) << "nothing stays locked";
    }

}
}
