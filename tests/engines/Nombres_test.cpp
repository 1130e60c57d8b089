#include "engines/sql/Reescritura.hpp"

#include <gmock/gmock.h>

namespace atipicos::sql {
namespace {

    /// The accounting side of a file that holds the tables of both products.
    std::string contable(const std::string& sql)
    {
        Catalogo c;
        c.pon_propio("Bexmor_");
        c.agrega_base("Bexmor", "Bexmor_");
        c.agrega_fecha("Bexmor_Asientos", "Dia", 1);
        return reescribe(sql, c);
    }

    /// The management side of the same file.
    std::string de_gestion(const std::string& sql)
    {
        Catalogo c;
        c.agrega_base("Bexmor", "Bexmor_");
        c.agrega_fecha("Bexmor_Asientos", "Dia", 1);
        return reescribe(sql, c);
    }

    /// The accounting side of a server where it has a schema of its own.
    std::string en_esquema(const std::string& sql)
    {
        Catalogo c({ .isnull = "ISNULL" });
        c.pon_propio("dbo.");
        c.agrega_base("Bexmor", "dbo.");
        return reescribe(sql, c);
    }

    TEST(Nombres, plain_names_of_the_second_product_get_its_prefix_and_keep_their_own_as_alias)
    {
        EXPECT_EQ(contable("SELECT Cuentas.Nombre FROM Cuentas WHERE Cuentas.Codigo =7"),
            "SELECT Cuentas.Nombre FROM \"Bexmor_Cuentas\" AS Cuentas WHERE Cuentas.Codigo =7");
        EXPECT_EQ(contable("SELECT a.x FROM [Cuentas] a, Tipos AS t INNER JOIN Otra ON Otra.y = t.z"),
            "SELECT a.x FROM \"Bexmor_Cuentas\" a, \"Bexmor_Tipos\" AS t INNER JOIN \"Bexmor_Otra\" AS Otra "
            "ON "
            "Otra.y = t.z");
        EXPECT_EQ(contable("SELECT x FROM (SELECT MAX(n) AS x FROM Apuntes) q"),
            "SELECT x FROM (SELECT MAX(n) AS x FROM \"Bexmor_Apuntes\" AS Apuntes) q");
    }

    TEST(Nombres, so_do_those_that_are_written_to)
    {
        EXPECT_EQ(contable("INSERT INTO Apuntes (a, b) VALUES (1, 'Apuntes')"),
            "INSERT INTO \"Bexmor_Apuntes\" (a, b) VALUES (1, 'Apuntes')");
        EXPECT_EQ(contable("UPDATE Apuntes SET a = Apuntes.b + 1"),
            "UPDATE \"Bexmor_Apuntes\" AS Apuntes SET a = Apuntes.b + 1");
        EXPECT_EQ(contable("DELETE FROM Apuntes WHERE a IN (SELECT a FROM Asientos)"),
            "DELETE FROM \"Bexmor_Apuntes\" AS Apuntes WHERE a IN (SELECT a FROM \"Bexmor_Asientos\" AS "
            "Asientos)");
    }

    TEST(Nombres, and_those_that_are_made)
    {
        EXPECT_EQ(
            contable("CREATE TABLE Apuntes (a INT REFERENCES Asientos (n) ON UPDATE CASCADE, FOREIGN KEY (a) "
                     "REFERENCES Cuentas (c))"),
            "CREATE TABLE \"Bexmor_Apuntes\" (a INT REFERENCES \"Bexmor_Asientos\" (n) ON UPDATE CASCADE, "
            "FOREIGN KEY "
            "(a) REFERENCES \"Bexmor_Cuentas\" (c))");
        EXPECT_EQ(contable("CREATE UNIQUE INDEX IF NOT EXISTS i ON Apuntes (a)"),
            "CREATE UNIQUE INDEX IF NOT EXISTS \"Bexmor_i\" ON \"Bexmor_Apuntes\" (a)");
        EXPECT_EQ(contable("CREATE TRIGGER d AFTER UPDATE ON Apuntes BEGIN DELETE FROM Asientos; END"),
            "CREATE TRIGGER \"Bexmor_d\" AFTER UPDATE ON \"Bexmor_Apuntes\" BEGIN DELETE FROM "
            "\"Bexmor_Asientos\"; END");
        EXPECT_EQ(contable("DROP TABLE IF EXISTS Apuntes"), "DROP TABLE IF EXISTS \"Bexmor_Apuntes\"");
        EXPECT_EQ(contable("ALTER TABLE Apuntes ADD x INT"), "ALTER TABLE \"Bexmor_Apuntes\" ADD x INT");
    }

    TEST(Nombres, the_first_product_reaches_them_by_three_part_names_and_its_own_stay)
    {
        EXPECT_EQ(de_gestion("SELECT a.x, Asientos.n FROM Empresas a INNER JOIN Bexmor.dbo.Asientos ON "
                             "Asientos.Dia = '21/11/2026' LEFT JOIN [Bexmor].[dbo].[Cuentas] c ON c.x = "
                             "Bexmor.dbo.Asientos.y"),
            "SELECT a.x, Asientos.n FROM Empresas a INNER JOIN \"Bexmor_Asientos\" AS Asientos ON "
            "Asientos.Dia = '2026-11-21' LEFT JOIN \"Bexmor_Cuentas\" c ON c.x = Asientos.y");
        EXPECT_EQ(de_gestion("SELECT x FROM Asientos WHERE Dia = '21/11/2026'"),
            "SELECT x FROM Asientos WHERE Dia = '21/11/2026'")
            << "its own table of that name has no dates";
        EXPECT_EQ(de_gestion("SELECT x FROM Otra.dbo.Asientos"), "SELECT x FROM Otra.dbo.Asientos");
    }

    TEST(Nombres, dates_are_known_by_the_name_in_the_database)
    {
        EXPECT_EQ(contable("INSERT INTO Asientos VALUES (1, '21/11/2026')"),
            "INSERT INTO \"Bexmor_Asientos\" VALUES (1, '2026-11-21')");
        EXPECT_EQ(contable("UPDATE Asientos SET n = 2 WHERE Dia > '21/11/2026'"),
            "UPDATE \"Bexmor_Asientos\" AS Asientos SET n = 2 WHERE Dia > '2026-11-21'");
    }

    TEST(Nombres, a_schema_stands_before_the_name_and_needs_no_alias)
    {
        EXPECT_EQ(en_esquema("SELECT Cuentas.x FROM Cuentas"), "SELECT Cuentas.x FROM dbo.Cuentas");
        EXPECT_EQ(en_esquema("SELECT x FROM Bexmor.dbo.[Cuentas] c"), "SELECT x FROM dbo.[Cuentas] c");
        EXPECT_EQ(en_esquema("CREATE INDEX i ON Cuentas (x)"), "CREATE INDEX i ON dbo.Cuentas (x)");
    }

    TEST(Nombres, a_database_of_its_own_stands_before_the_schema_too)
    {
        Catalogo c({ .transact = true });
        c.pon_propio("Bexmor.dbo.");
        EXPECT_EQ(reescribe("SELECT c.x FROM Cuentas c INNER JOIN dbo.Tipos t ON c.x = t.x", c),
            "SELECT c.x FROM Bexmor.dbo.Cuentas c INNER JOIN Bexmor.dbo.Tipos t ON c.x = t.x");
        for (const auto* sql : { "SELECT x FROM Orvalin.dbo.Cuentas", "SELECT name FROM sys.objects" })
            EXPECT_EQ(reescribe(sql, c), sql);
        EXPECT_EQ(en_esquema("SELECT x FROM dbo.Cuentas"), "SELECT x FROM dbo.Cuentas");
    }

    TEST(Nombres, what_is_no_table_of_the_product_stays)
    {
        for (const auto* sql : { "SELECT 1", "SELECT x FROM sqlite_master",
                 "SELECT x FROM pragma_table_info('Cuentas')", "SELECT x FROM main.Cuentas", "SAVEPOINT s" })
            EXPECT_EQ(contable(sql), sql);
        EXPECT_EQ(contable("WITH q AS (SELECT 1 AS n) SELECT n FROM q, Cuentas"),
            "WITH q AS (SELECT 1 AS n) SELECT n FROM q, \"Bexmor_Cuentas\" AS Cuentas");
        EXPECT_EQ(
            en_esquema("SELECT EXTRACT(YEAR FROM Dia) FROM Asientos WHERE a IS DISTINCT FROM b FOR UPDATE"),
            "SELECT EXTRACT(YEAR FROM Dia) FROM dbo.Asientos WHERE a IS DISTINCT FROM b FOR UPDATE");
        EXPECT_EQ(contable("INSERT INTO t (a) VALUES (1) ON CONFLICT (a) DO UPDATE SET a = 2"),
            "INSERT INTO \"Bexmor_t\" (a) VALUES (1) ON CONFLICT (a) DO UPDATE SET a = 2");
    }

}
}
