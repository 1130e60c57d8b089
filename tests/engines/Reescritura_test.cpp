#include "tests/engines/Reescrita.hpp"

#include <gmock/gmock.h>

#include <array>
#include <cstdlib>
#include <random>

namespace atipicos::sql {
namespace {

    using pruebas::catalogo;
    using pruebas::error_al_reescribir;
    using pruebas::reescrita;

    TEST(Reescritura, isnull_becomes_ifnull_only_as_a_function)
    {
        EXPECT_EQ(reescrita("SELECT ISNULL(a,'') , isnull (b, 0), c ISNULL, 'ISNULL(a,b)' FROM t"),
            "SELECT IFNULL(a,'') , IFNULL (b, 0), c ISNULL, 'ISNULL(a,b)' FROM t");
    }

    TEST(Reescritura, a_dialect_names_the_function_and_the_types_of_new_tables)
    {
        static constexpr std::array<TipoEscrito, 3> tipos{ { { "BIT", "BOOL" }, { "MONEY", "NUMERIC(19,4)" },
            { "NVARCHAR", "VARCHAR", " COLLATE C" } } };
        const Catalogo otro({ .isnull = "NVL", .tipos = tipos });
        EXPECT_EQ(reescribe("SELECT ISNULL(a, b) FROM t", otro), "SELECT NVL(a, b) FROM t");
        EXPECT_EQ(
            reescribe("create table t (Money MONEY NOT NULL, Bit bit, x NVARCHAR(12) NOT NULL, y INT)", otro),
            "create table t (Money NUMERIC(19,4) NOT NULL, Bit BOOL, x VARCHAR(12) COLLATE C NOT NULL, y "
            "INT)");
        EXPECT_EQ(
            reescribe("ALTER TABLE t ADD Importe MONEY", otro), "ALTER TABLE t ADD Importe NUMERIC(19,4)");
        EXPECT_EQ(reescribe("SELECT Money money, x BIT FROM t", otro), "SELECT Money money, x BIT FROM t");
        EXPECT_EQ(reescrita("CREATE TABLE t (x MONEY)"), "CREATE TABLE t (x MONEY)");
    }

    TEST(Reescritura, how_many_rows_are_wanted_is_said_as_the_dialect_says_it)
    {
        const std::string sql = "SELECT n FROM Cargos ORDER BY n OFFSET 20 ROWS FETCH NEXT 7 ROWS ONLY";
        EXPECT_EQ(reescrita(sql), "SELECT n FROM Cargos ORDER BY n LIMIT 20 ,   7  ");
        EXPECT_EQ(reescribe(sql, Catalogo({ .fetch = true })), sql);
        const std::string no_es = "SELECT Offset, Fetch, 'OFFSET 1 ROWS FETCH NEXT 7 ROWS ONLY' FROM Cargos";
        EXPECT_EQ(reescrita(no_es), no_es);
    }

    TEST(Reescritura, three_part_names_of_known_bases_go_to_their_schema)
    {
        EXPECT_EQ(
            reescrita(
                "SELECT * FROM bexmor.dbo.Cuentas c, [Bexmor].[dbo].[Tipos] WHERE x='Bexmor.dbo.Cuentas'"),
            "SELECT * FROM \"Bexmor\".Cuentas c, \"Bexmor\".[Tipos] WHERE x='Bexmor.dbo.Cuentas'");
        EXPECT_EQ(reescrita("SELECT * FROM Otra.dbo.Cuentas"), "SELECT * FROM Otra.dbo.Cuentas");
    }

    TEST(Reescritura, a_second_statement_is_refused)
    {
        const auto* motivo = "Sólo se admite una instrucción en cada ejecución.";
        EXPECT_EQ(error_al_reescribir("DELETE FROM a; DELETE FROM b"), motivo);
        EXPECT_EQ(error_al_reescribir("SELECT 'x' ;;"), motivo);
        EXPECT_EQ(reescrita("DELETE FROM a ; -- the end\n"), "DELETE FROM a ; -- the end\n");
        EXPECT_EQ(reescrita("SELECT ';' FROM a -- ; x"), "SELECT ';' FROM a -- ; x");
        const std::string disparador
            = "CREATE TRIGGER x AFTER INSERT ON a BEGIN DELETE FROM b; SELECT 1; END";
        EXPECT_EQ(reescrita(disparador + ";"), disparador + ";");
        EXPECT_EQ(error_al_reescribir(disparador + "; SELECT 1"), motivo);
    }

    /// Pieces from which statements are thrown together, most of them nonsense.
    constexpr std::array<std::string_view, 40> piezas{ "SELECT", "INSERT", "INTO", "Cargos", "(", ")",
        "Fecha", ",", "VALUES", "'01/02/2026'", "'x''y'", "''", "'", "\"", "[", "]", "--", "/*", "*/", "\n",
        " ", ".", "dbo", "Bexmor", "ISNULL", "=", "BETWEEN", "AND", "NOT", "IN", "UPDATE", "SET", "FROM",
        "JOIN", "pc", "1.5e", "\xc3\xb1", ";", "Hora", "\t" };

    /// The quoted texts of a statement, found by hand: whatever the tokeniser thinks of it.
    std::vector<std::string_view> textos_citados(std::string_view sql)
    {
        std::vector<std::string_view> resultado;
        for (std::size_t i = 0; i < sql.size(); ++i) {
            const auto par = sql.substr(i, 2);
            if (par == "--")
                i = std::min(sql.find('\n', i), sql.size());
            else if (par == "/*")
                i = std::min(sql.find("*/", i + 2), sql.size() - 2) + 1;
            else if (sql[i] == '\'' || sql[i] == '"' || sql[i] == '[') {
                const char cierre = sql[i] == '[' ? ']' : sql[i];
                std::size_t fin = i + 1;
                while (
                    fin < sql.size() && (sql[fin] != cierre || sql.substr(fin + 1, 1) == sql.substr(fin, 1)))
                    fin += sql[fin] == cierre ? 2U : 1U;
                if (sql[i] == '\'')
                    resultado.push_back(sql.substr(i, fin - i));
                i = fin;
            }
        }
        return resultado;
    }

    TEST(Reescritura, a_million_thrown_together_statements_never_crash_nor_change_a_quoted_text)
    {
        const char* pedidas = std::getenv("ATIPICOS_TEXTOS_AL_AZAR");
        const int cuantas = pedidas != nullptr ? std::atoi(pedidas) : 1'000'000;
        std::mt19937 azar(20261121); // NOLINT: the same statements in every run
        const Catalogo con_fechas = catalogo();
        Catalogo sin_fechas;
        sin_fechas.agrega_base("Bexmor", "B.");
        int cambiadas = 0;
        for (int vez = 0; vez < cuantas; ++vez) {
            std::string sql;
            for (auto n = 1 + azar() % 12; n > 0; --n)
                sql += std::string(piezas[azar() % piezas.size()]) + (azar() % 3 == 0 ? "" : " ");
            try {
                static_cast<void>(reescribe(sql, con_fechas));
                const auto otra = reescribe(sql, sin_fechas);
                cambiadas += otra != sql ? 1 : 0;
                ASSERT_EQ(textos_citados(otra), textos_citados(sql)) << sql;
            } catch (const adodb::ErrorBaseDatos&) { // NOLINT(bugprone-empty-catch): refused is fine
            }
        }
        EXPECT_GT(cambiadas, cuantas / 1000) << "the statements must be worth rewriting";
    }

}
}
