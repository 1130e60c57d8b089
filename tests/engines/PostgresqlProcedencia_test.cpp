// Rows of answers that do not say of which table they are, as a server gives them that spreads its tables.
#include "tests/engines/ParPostgresql.hpp"
#include "tests/support/Intermediario.hpp"

#include <optional>

namespace atipicos::postgresql {
namespace {

    using adodb::CursorType;
    using adodb::LockType;

    struct PostgresqlProcedencia : ParPostgresql {
        std::optional<pruebas::Intermediario> intermediario;

        void SetUp() override
        {
            ParPostgresql::SetUp();
            if (IsSkipped())
                return;
            servidor->psql("par",
                "CREATE TABLE propio.marcas (id int PRIMARY KEY, marca propio.si_o_no, corto smallint);"
                "INSERT INTO propio.marcas VALUES (3, 1, 1), (4, 0, 0), (5, NULL, 7);"
                "CREATE TABLE propio.lotes (id int PRIMARY KEY, marca smallint);"
                "INSERT INTO propio.lotes VALUES (3, 1);"
                "CREATE TABLE propio.contador (serie int PRIMARY KEY, numero int NOT NULL);"
                "INSERT INTO propio.contador VALUES (7, 250041), (8, 1);"
                "CREATE TABLE dbo.contador (serie int, numero int, ejercicio int, PRIMARY KEY (ejercicio));"
                "INSERT INTO dbo.contador VALUES (7, 12, 2025)");
            suelta();
            intermediario.emplace(servidor->enchufe());
            intermediario->borra_numeros_de_tabla();
            auto con = opciones();
            con.direccion += intermediario->por_aqui();
            con.bases = { "Bexmor" };
            abre(con);
        }
        void TearDown() override
        {
            suelta();
            intermediario.reset();
            ParPostgresql::TearDown();
        }

        static std::unique_ptr<adodb::Recordset> editable(Connection& conexion, const std::string& sql)
        {
            auto rs = conexion.CreateRecordset();
            rs->Open(sql, CursorType::Keyset, LockType::Pessimistic);
            return rs;
        }
        static void siguiente(Connection& conexion, const std::string& sql)
        {
            const auto rs = editable(conexion, sql);
            auto& numero = rs->Fields("Numero");
            numero.Value(CLng(numero.Value()) + 1);
            rs->Update();
        }
        Variant primero_de(const std::string& sql) const
        {
            auto rs = gestion->CreateRecordset();
            rs->Open(sql, CursorType::Static, LockType::ReadOnly);
            return rs->Fields(std::size_t{ 0 }).Value();
        }
    };

    TEST_F(PostgresqlProcedencia, rows_are_written_back_to_the_table_that_the_statement_names)
    {
        siguiente(*gestion, "SELECT * FROM Contador WHERE Serie =7");
        siguiente(*contabilidad, "SELECT * FROM Contador WHERE Serie =7");
        siguiente(*gestion, "SELECT * FROM Bexmor.dbo.Contador WHERE Serie =7");
        siguiente(*gestion, "SELECT c.* FROM propio.Contador c WHERE c.Serie =7");
        EXPECT_EQ(servidor->psql("par", "SELECT numero FROM propio.contador ORDER BY serie"), "250043\n1\n");
        EXPECT_EQ(servidor->psql("par", "SELECT numero FROM dbo.contador"), "14\n");
    }

    TEST_F(PostgresqlProcedencia, a_new_row_is_added_to_it)
    {
        const auto rs = editable(*gestion, "SELECT * FROM Contador WHERE Serie =9");
        EXPECT_TRUE(rs->Eof());
        rs->AddNew();
        rs->Fields("Serie").Value(9);
        rs->Fields("Numero").Value(260'001);
        rs->Update();
        EXPECT_EQ(servidor->psql("par", "SELECT numero FROM propio.contador WHERE serie = 9"), "260001\n");
    }

    TEST_F(PostgresqlProcedencia, the_own_table_of_a_query_counts_before_those_of_queries_inside_it)
    {
        siguiente(*gestion,
            "SELECT (SELECT COUNT(*) FROM Cargos) AS cuantos, Serie, Numero FROM Contador WHERE Serie =8");
        EXPECT_EQ(servidor->psql("par", "SELECT numero FROM propio.contador WHERE serie = 8"), "2\n");
    }

    TEST_F(PostgresqlProcedencia, rows_of_no_table_cannot_be_written)
    {
        const auto rs = editable(*gestion, "SELECT 1 AS numero FROM generate_series(1, 1)");
        rs->Fields("numero").Value(2);
        try {
            rs->Update();
            ADD_FAILURE() << "no error";
        } catch (const Error& error) {
            EXPECT_EQ(error.descripcion(), "Las filas no son de ninguna tabla en la que escribir.");
        }
    }

    TEST_F(PostgresqlProcedencia, bit_columns_are_found_by_their_names_wherever_they_stand_as_they_are)
    {
        for (const auto* sql :
            { "SELECT Marca FROM Marcas WHERE Id =3", "SELECT m.marca AS otra FROM Marcas m WHERE Id =3",
                "SELECT Marca otra FROM propio.Marcas WHERE Id =3",
                "SELECT DISTINCT MARCA FROM Marcas WHERE Id =3",
                "SELECT m.Marca, c.Serie FROM Contador c INNER JOIN Marcas AS m ON m.Id =3" })
            EXPECT_EQ(primero_de(sql), Variant(true)) << sql;
        EXPECT_EQ(primero_de("SELECT Marca FROM Marcas WHERE Id =4"), Variant(false));
        EXPECT_TRUE(primero_de("SELECT Marca FROM Marcas WHERE Id =5").es_nulo());
        for (const auto* sql : { "SELECT Corto FROM Marcas WHERE Id =3", "SELECT MAX(Marca) FROM Marcas",
                 "SELECT Corto AS Marca FROM Marcas WHERE Id =3", "SELECT Marca + 0 FROM Marcas WHERE Id =3",
                 "SELECT c.Serie - 6 AS Marca FROM Contador c WHERE c.Serie =7",
                 "SELECT l.Marca FROM Lotes l INNER JOIN Marcas m ON m.Id = l.Id" })
            EXPECT_EQ(primero_de(sql), Variant(1)) << sql;
        auto rs = gestion->CreateRecordset();
        rs->Open("SELECT m.*, Corto FROM Marcas m WHERE Id =3", CursorType::ForwardOnly, LockType::ReadOnly);
        EXPECT_EQ(rs->Fields("marca").Value(), Variant(true));
        EXPECT_EQ(rs->Fields("corto").Value(), Variant(1));
    }

}
}
