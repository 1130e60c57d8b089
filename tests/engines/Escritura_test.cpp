#include "engines/odbc/Escritura.hpp"

#include <gtest/gtest.h>

namespace atipicos::odbc {
namespace {

    const Servidor& sql_server() { return servidor(nombre_sql_server); }
    const Servidor& postgresql() { return servidor(nombre_postgresql); }
    const Servidor& sqlite() { return servidor(nombre_sqlite); }

    TEST(Escritura, the_rows_of_a_query_are_locked_as_each_product_wants_it)
    {
        const std::string consulta = "SELECT * FROM Contador WHERE Empresa =1";
        EXPECT_EQ(con_bloqueo(consulta, sql_server()),
            "SELECT * FROM Contador WITH (UPDLOCK, HOLDLOCK, ROWLOCK) WHERE Empresa =1");
        EXPECT_EQ(con_bloqueo("SELECT * FROM Bexmor.dbo.[Contador]", sql_server()),
            "SELECT * FROM Bexmor.dbo.[Contador] WITH (UPDLOCK, HOLDLOCK, ROWLOCK)");
        EXPECT_EQ(con_bloqueo(consulta, postgresql()), consulta + "\nFOR UPDATE");
        EXPECT_EQ(con_bloqueo(consulta, sqlite()), consulta) << "the transaction has the lock";
        EXPECT_EQ(con_bloqueo("SELECT 1", sql_server()), "SELECT 1");
    }

    TEST(Escritura, values_stand_in_statements_as_each_product_reads_them)
    {
        EXPECT_EQ(literal(Variant("d'Or"), postgresql()), "'d''Or'");
        EXPECT_EQ(literal(Variant("ñ"), postgresql()), "'ñ'");
        EXPECT_EQ(literal(Variant("ñ"), sql_server()), "N'ñ'");
        EXPECT_EQ(literal(Variant("n"), sql_server()), "'n'");
        EXPECT_EQ(literal(Variant(true), sql_server()), "1");
        EXPECT_EQ(literal(Variant(-7), sql_server()), "-7");
        EXPECT_EQ(literal(Variant(Nulo{}), sql_server()), "NULL");
        EXPECT_EQ(literal(Variant(Currency::de_texto("-0.0001")), sql_server()), "-0.0001");
        EXPECT_THROW(static_cast<void>(literal(Variant(std::shared_ptr<Objeto>()), sqlite())), Error);
    }

    TEST(Escritura, dates_are_year_month_day_in_every_session)
    {
        const Date dia = *Date::de_dia(2026, 11, 2);
        const Date hora(dia.instante() + std::chrono::hours(9) + std::chrono::seconds(303));
        EXPECT_EQ(literal(Variant(dia), sql_server()), "'2026-11-02T00:00:00'");
        EXPECT_EQ(literal(Variant(hora), sql_server()), "'2026-11-02T09:05:03'");
        EXPECT_EQ(literal(Variant(dia), sqlite()), "'2026-11-02'");
        EXPECT_EQ(literal(Variant(hora), postgresql()), "'2026-11-02 09:05:03'");
    }

    TEST(Escritura, rows_are_written_to_the_table_that_they_come_from)
    {
        const auto tabla = tabla_de("SELECT * FROM Bexmor.dbo.[Contador] WHERE x = 1");
        EXPECT_EQ(tabla.calificada, "Bexmor.dbo.[Contador]");
        EXPECT_EQ(tabla.catalogo, "Bexmor");
        EXPECT_EQ(tabla.esquema, "dbo");
        EXPECT_EQ(tabla.nombre, "Contador");
        const auto con_esquema = tabla_de("SELECT * FROM dbo.Contador c");
        EXPECT_EQ(con_esquema.catalogo, "");
        EXPECT_EQ(con_esquema.esquema, "dbo");
        EXPECT_EQ(con_esquema.nombre, "Contador");
        const auto con_alias = tabla_de("SELECT * FROM \"Bexmor_Contador\" AS Contador WHERE x = 1");
        EXPECT_EQ(con_alias.esquema, "");
        EXPECT_EQ(con_alias.nombre, "Bexmor_Contador");
        EXPECT_EQ(con_alias.calificada, "\"Bexmor_Contador\"");
    }

}
}
