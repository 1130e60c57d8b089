// Statements taken apart into shapes and values: which literals travel, and that they say what they said.
#include "engines/sql/Forma.hpp"

#include "engines/sql/Reescritura.hpp"
#include "platform/adodb/Connection.hpp"
#include "tests/support/EnLiteral.hpp"

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <random>

namespace atipicos::sql {
namespace {

    Catalogo catalogo_con_prefijo()
    {
        Catalogo c;
        c.agrega_fecha("Cargos", "Fecha", 1);
        c.agrega_fecha("Bexmor_Asientos", "Dia");
        c.agrega_base("Bexmor", "Bexmor_");
        return c;
    }

    /// The shape and the values of a statement; "-" when it has none.
    std::string forma_y_valores(const std::string& sql, Numeros numeros = Numeros::segun_valor)
    {
        Esqueleto esqueleto(numeros);
        if (!esqueleto.lee(sql))
            return "-";
        const auto plantilla = forma_de(sql, esqueleto.literales(), numeros, catalogo_con_prefijo());
        if (!plantilla)
            return "-";
        std::string texto = plantilla->forma.texto;
        for (const auto& valor : plantilla->forma.valores) {
            std::string sitio;
            const auto contenido = contenido_de(esqueleto.literales()[valor.literal], valor.es_fecha, sitio);
            texto += "|" + std::string(contenido.value_or("no date"));
        }
        return texto;
    }

    std::string con_tipo(const std::string& sql) { return forma_y_valores(sql, Numeros::con_tipo); }

    TEST(Forma, the_values_of_an_insert_travel_each_standing_alone)
    {
        EXPECT_EQ(forma_y_valores("INSERT INTO t (a, b) VALUES (7, 'x'), (-2.5, NULL)"),
            "INSERT INTO t (a, b) VALUES (?, ?), (?, NULL)|7|x|-2.5");
        EXPECT_EQ(con_tipo("INSERT INTO t VALUES (7, -2.5, 'it''s')"),
            "INSERT INTO t VALUES ($1, $2, $3)|7|-2.5|it's");
        EXPECT_EQ(forma_y_valores("INSERT INTO t VALUES (f(7, 'x'), 1 + 2, 'a' || 'b', (3), - 4, 5)"),
            "INSERT INTO t VALUES (f(7, 'x'), 1 + 2, 'a' || 'b', (3), - 4, ?)|5");
        EXPECT_EQ(forma_y_valores("INSERT INTO Bexmor.dbo.t (a) VALUES ('x')"),
            "INSERT INTO \"Bexmor_t\" (a) VALUES (?)|x");
        EXPECT_EQ(forma_y_valores("INSERT INTO t (a, b) VALUES (7, (SELECT ISNULL(MAX(b), 0) + 1 FROM t "
                                  "WHERE a =7 AND b < 9)), "
                                  "(8, (SELECT 5 FROM u WHERE c ='x' AND f(3) = 4 OR d IN (6, 2)))"),
            "INSERT INTO t (a, b) VALUES (?, (SELECT IFNULL(MAX(b), 0) + 1 FROM t WHERE a =? AND b < ?)), "
            "(?, (SELECT 5 FROM u WHERE c =? AND f(3) = 4 OR d IN (?, ?)))|7|7|9|8|x|6|2");
        EXPECT_EQ(
            forma_y_valores("INSERT INTO t (a) VALUES (1) ON CONFLICT (a) DO UPDATE SET b = 2 WHERE c = 3"),
            "INSERT INTO t (a) VALUES (?) ON CONFLICT (a) DO UPDATE SET b = 2 WHERE c = 3|1");
    }

    TEST(Forma, the_values_that_an_update_sets_travel)
    {
        EXPECT_EQ(forma_y_valores("UPDATE t SET a = 5, b = 'x', c = c + 1, d = (2), e = -3 WHERE f = 9"),
            "UPDATE t SET a = ?, b = ?, c = c + 1, d = (2), e = ? WHERE f = ?|5|x|-3|9");
        EXPECT_EQ(forma_y_valores("UPDATE t SET (a, b) = (5, 6)"), "UPDATE t SET (a, b) = (5, 6)");
    }

    TEST(Forma, what_is_compared_with_a_column_travels)
    {
        EXPECT_EQ(forma_y_valores(
                      "SELECT * FROM t WHERE a =5 AND t.b = 'x' AND NOT c <> 7 OR (d >= 2.5 AND 'y' < e)"),
            "SELECT * FROM t WHERE a =? AND t.b = ? AND NOT c <> ? OR (d >= ? AND ? < e)|5|x|7|2.5|y");
        EXPECT_EQ(forma_y_valores(
                      "DELETE FROM t WHERE a IN (5, 'x') AND b NOT IN (7) AND c BETWEEN 3 AND d AND e NOT "
                      "BETWEEN f AND 4 ORDER BY 2"),
            "DELETE FROM t WHERE a IN (?, ?) AND b NOT IN (?) AND c BETWEEN ? AND d AND e NOT BETWEEN f AND "
            "? "
            "ORDER BY 2|5|x|7|3|4");
        EXPECT_EQ(forma_y_valores(
                      "SELECT * FROM t LEFT JOIN u ON u.a =5 AND u.b = t.b WHERE t.c IN (SELECT 8 FROM v "
                      "WHERE d = 9)"),
            "SELECT * FROM t LEFT JOIN u ON u.a =? AND u.b = t.b WHERE t.c IN (SELECT 8 FROM v WHERE d = "
            "?)|5|9");
    }

    TEST(Forma, everything_else_stays_in_the_text)
    {
        for (const std::string sql :
            { "SELECT 5, 'x' AS n, a = 5 FROM t GROUP BY 2, a = 5 ORDER BY 2 LIMIT 3",
                "SELECT * FROM t WHERE a = 5 + 2 AND b + 2 = 5 AND f(b) = 5 AND f(b = 5) AND c = -(5)",
                "SELECT * FROM t WHERE a LIKE 'x%' AND b ISNULL AND c IS NOT 5 AND 5 = 5 AND (a, b) = (5, "
                "6)",
                "SELECT * FROM t WHERE a = 5 COLLATE NOCASE AND a = b = 5 AND a IN (5, 2 + 3) AND a IN (5, "
                "b)",
                "SELECT * FROM t WHERE CASE WHEN a = 5 THEN 6 ELSE 7 END = 8 AND a BETWEEN 5 + 1 AND 6 * 2",
                "SELECT * FROM t HAVING a = 5", "SELECT * FROM (SELECT a = 5 FROM t) AS x",
                "INSERT INTO t (a) SELECT 5, 'x' FROM u", "INSERT OR IGNORE INTO t VALUES (5)" })
            EXPECT_EQ(forma_y_valores(sql), sql);
        EXPECT_EQ(forma_y_valores("SELECT * FROM t WHERE a = 5 )) ("), "SELECT * FROM t WHERE a = ? )) (|5");
    }

    TEST(Forma, only_queries_and_changes_of_rows_have_one)
    {
        for (const std::string sql : { "CREATE TABLE t (a INT DEFAULT 5)", "PRAGMA user_version = 5", "BEGIN",
                 "WITH x AS (SELECT 5) SELECT * FROM x", "REPLACE INTO t VALUES (5)", "" })
            EXPECT_EQ(forma_y_valores(sql), "-") << sql;
    }

    TEST(Forma, sqlite_is_told_0_and_1_in_the_text_where_it_weighs_them)
    {
        EXPECT_EQ(
            forma_y_valores(
                "SELECT * FROM t WHERE a = 0 AND b = 1 AND c = -1 AND d IN (1, 2) AND e < 1 AND f = '1'"),
            "SELECT * FROM t WHERE a = 0 AND b = 1 AND c = -1 AND d IN (1, ?) AND e < ? AND f = ?|2|1|1");
        EXPECT_EQ(forma_y_valores("UPDATE t SET a = 0, b = 1 WHERE c = 10"),
            "UPDATE t SET a = ?, b = ? WHERE c = ?|0|1|10");
    }

    TEST(Forma, a_server_that_plans_by_the_limits_of_a_range_is_told_them_in_the_text)
    {
        EXPECT_EQ(con_tipo("SELECT * FROM t WHERE a = 0 AND b <> 'x' AND c IN (2)"),
            "SELECT * FROM t WHERE a = $1 AND b <> $2 AND c IN ($3)|0|x|2");
        EXPECT_EQ(con_tipo("SELECT * FROM t WHERE a = 0 AND b > 'x' AND c BETWEEN 3 AND 4"),
            "SELECT * FROM t WHERE a = $1 AND b > 'x' AND c BETWEEN 3 AND 4|0");
        EXPECT_EQ(con_tipo("UPDATE t SET a = 1 WHERE b < 2 AND EXISTS (SELECT 1 FROM u WHERE c <= 3)"),
            "UPDATE t SET a = $1 WHERE b < $2 AND EXISTS (SELECT 1 FROM u WHERE c <= $3)|1|2|3")
            << "a change finds its rows by a key";
    }

    TEST(Forma, dates_travel_as_the_database_keeps_them)
    {
        EXPECT_EQ(forma_y_valores("INSERT INTO Cargos VALUES ('21/11/2026', '21/11/2026')"),
            "INSERT INTO Cargos VALUES (?, ?)|21/11/2026|2026-11-21");
        EXPECT_EQ(forma_y_valores("UPDATE Cargos SET Fecha = '21/11/2026 9:05:03' WHERE '' <= Fecha"),
            "UPDATE Cargos SET Fecha = ? WHERE ? <= Fecha|2026-11-21 09:05:03|1900-01-01");
        EXPECT_EQ(forma_y_valores("INSERT INTO Bexmor.dbo.Asientos (Dia) VALUES ('1:00:00')"),
            "INSERT INTO \"Bexmor_Asientos\" (Dia) VALUES (?)|1900-01-01 01:00:00");
        EXPECT_EQ(
            forma_y_valores("INSERT INTO Cargos (n, Fecha) SELECT n, '21/11/2026' FROM x WHERE a = 'x'"),
            "INSERT INTO Cargos (n, Fecha) SELECT n, '2026-11-21' FROM x WHERE a = ?|x");
        EXPECT_EQ(forma_y_valores("SELECT * FROM Cargos WHERE '21/11/2026' BETWEEN Fecha AND Fecha"),
            "SELECT * FROM Cargos WHERE '2026-11-21' BETWEEN Fecha AND Fecha");
    }

    TEST(Forma, the_first_statement_of_a_shape_raises_the_errors_of_the_rewriting)
    {
        try {
            static_cast<void>(forma_y_valores("UPDATE Cargos SET Fecha = '31/02/2026'"));
            FAIL();
        } catch (const adodb::ErrorBaseDatos& error) {
            EXPECT_EQ(
                error.descripcion(), "La conversión del texto '31/02/2026' en una fecha no es posible.");
        }
    }

    TEST(Forma, a_value_that_is_no_date_has_no_content_where_one_is_wanted)
    {
        std::string sitio;
        EXPECT_EQ(contenido_de({ "'31/02/2026'" }, true, sitio), std::nullopt);
        EXPECT_EQ(contenido_de({ "'it''''s'", Literal::Clase::texto, true }, false, sitio), "it''s");
        EXPECT_EQ(contenido_de({ "''" }, false, sitio), "");
        EXPECT_EQ(contenido_de({ "-07", Literal::Clase::entero }, true, sitio), "-07")
            << "a number is no text";
    }

    TEST(Forma, numbers_are_those_that_the_compiler_reads)
    {
        const auto entero = [](std::string_view texto) {
            return entero_de({ texto, Literal::Clase::entero });
        };
        const auto real = [](std::string_view texto) { return real_de({ texto, Literal::Clase::decimal }); };
        EXPECT_EQ(entero("-007"), -7);
        EXPECT_EQ(entero("999999999999999999"), 999999999999999999);
        EXPECT_EQ(real("12345678901.2345"), 12345678901.2345);
        EXPECT_EQ(real("-99999999999.9999"), -99999999999.9999);
        EXPECT_EQ(real("0.0001"), 0.0001);
        EXPECT_TRUE(std::signbit(real("-0.0")));
        std::mt19937_64 azar(20261121); // NOLINT: the same numbers in every run
        for (int vez = 0; vez < 50'000; ++vez) {
            const auto enteras = std::to_string(azar() % 100'000'000'000 / (1 + azar() % 10'000));
            const auto texto
                = enteras + "." + std::to_string(10'000 + azar() % 10'000).substr(1 + azar() % 4);
            ASSERT_EQ(real(texto), std::strtod(texto.c_str(), nullptr)) << texto;
        }
    }

    /// Pieces from which statements are thrown together, most of them nonsense.
    constexpr std::array<std::string_view, 52> piezas_de_forma{ "SELECT", "INSERT", "INTO", "Cargos", "(",
        ")", "Fecha", ",", "VALUES", "'01/02/2026'", "'x''y'", "''", "'", "\"", "[", "]", "--", "/*", "*/",
        "\n", " ", ".", "dbo", "Bexmor", "ISNULL", "=", "BETWEEN", "AND", "NOT", "IN", "UPDATE", "SET",
        "FROM", "JOIN", "pc", "1.5e", "\xc3\xb1", ";", "1", "-5", "2.50", "WHERE", "ON", "DELETE", "<", "OR",
        "-", "a", "7", "'z'", "CASE", "LIMIT" };

    std::string al_azar(std::mt19937& azar)
    {
        static constexpr std::array<std::string_view, 6> comienzos{ "INSERT INTO Cargos VALUES (",
            "UPDATE Cargos SET a =", "SELECT * FROM Cargos WHERE Fecha =",
            "DELETE FROM Cargos pc WHERE pc.a IN (", "INSERT INTO Bexmor.dbo.Asientos (Dia, n) VALUES (",
            "" };
        std::string sql(comienzos[azar() % comienzos.size()]);
        for (auto n = 1 + azar() % 12; n > 0; --n)
            sql += std::string(piezas_de_forma[azar() % piezas_de_forma.size()])
                + (azar() % 3 == 0 ? "" : " ");
        return sql;
    }

    TEST(Forma, values_put_back_into_their_shape_are_the_rewritten_statement)
    {
        const char* pedidas = std::getenv("ATIPICOS_TEXTOS_AL_AZAR");
        const int cuantas = pedidas != nullptr ? std::atoi(pedidas) : 100'000;
        std::mt19937 azar(20261121); // NOLINT: the same statements in every run
        const Catalogo con_fechas = catalogo_con_prefijo();
        int con_valores = 0;
        for (int vez = 0; vez < cuantas; ++vez) {
            const auto numeros = vez % 2 == 0 ? Numeros::con_tipo : Numeros::segun_valor;
            const auto sql = al_azar(azar);
            Esqueleto esqueleto(numeros);
            if (!esqueleto.lee(sql))
                continue;
            try {
                const auto plantilla = forma_de(sql, esqueleto.literales(), numeros, con_fechas);
                if (!plantilla)
                    continue;
                con_valores += plantilla->forma.valores.empty() ? 0 : 1;
                ASSERT_EQ(
                    pruebas::en_literal(plantilla->forma, esqueleto.literales()), reescribe(sql, con_fechas))
                    << sql;
            } catch (const adodb::ErrorBaseDatos& error) {
                ASSERT_THROW(static_cast<void>(reescribe(sql, con_fechas)), adodb::ErrorBaseDatos)
                    << error.descripcion();
            }
        }
        EXPECT_GT(con_valores, cuantas / 100) << "the statements must be worth it";
    }

}
}
