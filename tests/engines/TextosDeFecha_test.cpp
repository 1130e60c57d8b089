// The texts that are dates, seen in what becomes of them.
#include "engines/sql/TextosDeFecha.hpp"

#include "tests/engines/Reescrita.hpp"

namespace atipicos::sql {
namespace {

    using pruebas::error_al_reescribir;
    using pruebas::reescrita;

    TEST(TextosDeFecha, dates_that_an_insert_puts_into_date_columns)
    {
        EXPECT_EQ(
            reescrita(
                "INSERT INTO Cargos (Codigo, Fecha, Observ, Hora) VALUES ('AT1', '21/11/2026','21/11/2026', "
                "'9:05:03')"),
            "INSERT INTO Cargos (Codigo, Fecha, Observ, Hora) VALUES ('AT1', '2026-11-21','21/11/2026', "
            "'1900-01-01 09:05:03')");
        EXPECT_EQ(
            reescrita("INSERT INTO Cargos(Fecha, n) VALUES('01/02/2026', f(1, '01/02/2026')), (NULL, 2), "
                      "('02/02/2026', 3)"),
            "INSERT INTO Cargos(Fecha, n) VALUES('2026-02-01', f(1, '01/02/2026')), (NULL, 2), "
            "('2026-02-02', 3)");
        EXPECT_EQ(reescrita("INSERT INTO Bexmor.dbo.Asientos (n, Dia) SELECT n, '01/02/2026' FROM x WHERE "
                            "a='01/02/2026'"),
            "INSERT INTO \"Bexmor\".Asientos (n, Dia) SELECT n, '2026-02-01' FROM x WHERE a='01/02/2026'");
    }

    TEST(TextosDeFecha, dates_that_an_insert_puts_by_place_or_from_several_selects)
    {
        EXPECT_EQ(reescrita("INSERT INTO Cargos VALUES ('01/02/2026', '01/02/2026')"),
            "INSERT INTO Cargos VALUES ('01/02/2026', '2026-02-01')");
        EXPECT_EQ(
            reescrita("INSERT INTO Cargos (n, Fecha) SELECT (SELECT '01/02/2026'), '01/02/2026' UNION ALL "
                      "SELECT '01/02/2026', '' AS x"),
            "INSERT INTO Cargos (n, Fecha) SELECT (SELECT '01/02/2026'), '2026-02-01' UNION ALL "
            "SELECT '01/02/2026', '1900-01-01' AS x");
    }

    TEST(TextosDeFecha, a_text_or_a_column_inside_an_expression_stays)
    {
        for (const std::string sql : { "SELECT 1 FROM Cargos WHERE Observ || Fecha = '01/01/2026'",
                 "SELECT 1 FROM Cargos WHERE Fecha = '01/01/2026' || ''",
                 "SELECT 1 FROM Cargos WHERE Fecha = 'x' + '01/01/2026'",
                 "SELECT 1 FROM Cargos WHERE '01/01/2026' < Fecha || Observ",
                 "SELECT 1 FROM Cargos WHERE Fecha = '01/01/20267" })
            EXPECT_EQ(reescrita(sql), sql);
    }

    TEST(TextosDeFecha, dates_between_columns_and_in_joins_within_parentheses)
    {
        EXPECT_EQ(
            reescrita("SELECT 1 FROM (Cargos c INNER JOIN Otra o ON 1=1) WHERE c.Fecha BETWEEN o.Dia AND "
                      "'01/02/2026' AND o.Dia BETWEEN c.Fecha AND '01/02/2026'"),
            "SELECT 1 FROM (Cargos c INNER JOIN Otra o ON 1=1) WHERE c.Fecha BETWEEN o.Dia AND "
            "'2026-02-01' AND o.Dia BETWEEN c.Fecha AND '01/02/2026'");
        EXPECT_EQ(reescrita("SELECT 1 FROM Cargos WHERE Fecha IN (NULL, Hora, '01/02/2026')"),
            "SELECT 1 FROM Cargos WHERE Fecha IN (NULL, Hora, '2026-02-01')");
    }

    TEST(TextosDeFecha, dates_that_an_update_sets)
    {
        EXPECT_EQ(
            reescrita(" UPDATE Cargos  SET Proveedor = 1, Fecha = '21/11/2026', Observ ='21/11/2026', Hora "
                      "='21/11/2026 "
                      "9:05:03' WHERE Codigo ='01/01/2026'"),
            " UPDATE Cargos  SET Proveedor = 1, Fecha = '2026-11-21', Observ ='21/11/2026', Hora "
            "='2026-11-21 "
            "09:05:03' WHERE Codigo ='01/01/2026'");
    }

    TEST(TextosDeFecha, dates_compared_with_date_columns_under_any_alias)
    {
        EXPECT_EQ(
            reescrita(
                "SELECT * FROM Cargos pc LEFT JOIN Otra o ON o.Fecha = '01/01/2026' WHERE pc.Fecha BETWEEN "
                "'01/01/2026' AND '31/12/2026' AND o.Fecha='01/01/2026' AND '02/01/2026' <= PC.fecha"),
            "SELECT * FROM Cargos pc LEFT JOIN Otra o ON o.Fecha = '01/01/2026' WHERE pc.Fecha BETWEEN "
            "'2026-01-01' AND '2026-12-31' AND o.Fecha='01/01/2026' AND '2026-01-02' <= PC.fecha");
        EXPECT_EQ(reescrita("SELECT * FROM Cargos AS c WHERE c.Fecha NOT IN ('01/01/2026', '02/01/2026') OR "
                            "Hora<>'1:00:00'"),
            "SELECT * FROM Cargos AS c WHERE c.Fecha NOT IN ('2026-01-01', '2026-01-02') OR "
            "Hora<>'1900-01-01 01:00:00'");
        EXPECT_EQ(reescrita("DELETE FROM Cargos WHERE [Fecha] < '01/01/2026' AND Cargos.Fecha NOT BETWEEN "
                            "'01/01/2020' AND ''"),
            "DELETE FROM Cargos WHERE [Fecha] < '2026-01-01' AND Cargos.Fecha NOT BETWEEN '2020-01-01' AND "
            "'1900-01-01'");
    }

    TEST(TextosDeFecha, a_date_asked_to_lie_between_two_date_columns)
    {
        EXPECT_EQ(
            reescrita(
                "SELECT 1 FROM Cargos WHERE '01/02/2026' BETWEEN Fecha AND Hora AND 'x' BETWEEN a AND Fecha"),
            "SELECT 1 FROM Cargos WHERE '2026-02-01' BETWEEN Fecha AND Hora AND 'x' BETWEEN a AND Fecha");
    }

    TEST(TextosDeFecha, a_date_asked_not_to_lie_between_two_date_columns)
    {
        EXPECT_EQ(reescrita("SELECT 1 FROM Cargos WHERE '01/02/2026' NOT BETWEEN Fecha AND Hora"),
            "SELECT 1 FROM Cargos WHERE '2026-02-01' NOT BETWEEN Fecha AND Hora");
        EXPECT_EQ(reescrita("SELECT 1 FROM Cargos WHERE NOT '01/02/2026' BETWEEN Fecha AND Hora"),
            "SELECT 1 FROM Cargos WHERE NOT '2026-02-01' BETWEEN Fecha AND Hora");
    }

    TEST(TextosDeFecha, what_is_no_date_is_refused_where_a_date_is_wanted)
    {
        EXPECT_EQ(error_al_reescribir("SELECT * FROM Cargos WHERE Fecha = '31/02/2026'"),
            "La conversión del texto '31/02/2026' en una fecha no es posible.");
        EXPECT_EQ(error_al_reescribir("UPDATE Cargos SET Fecha='it''s'"),
            "La conversión del texto 'it''s' en una fecha no es posible.");
    }

}
}
