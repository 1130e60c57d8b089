#include "host/sql/Literal.hpp"

#include "engines/sqlite/Connection.hpp"
#include "tests/support/CarpetaTemporal.hpp"

#include <gmock/gmock.h>

namespace atipicos::sql {
namespace {

    TEST(Literal, texts_come_back_from_the_database_as_they_were)
    {
        const pruebas::CarpetaTemporal carpeta;
        const auto conexion = sqlite::Connection::Abrir({ .fichero = carpeta / "textos.db", .crear = true });
        for (const std::string texto :
            { "", "'", "''", "O'Higgins", "a\\'b", "\"; DROP TABLE t; --", "ñ € 漢\t\r\n", "/* '", "%_" }) {
            const auto rs = conexion->CreateRecordset();
            rs->Open("SELECT " + literal(texto) + " AS Texto", adodb::CursorType::Static,
                adodb::LockType::ReadOnly);
            ASSERT_FALSE(rs->Eof()) << texto;
            EXPECT_EQ(rs->Fields("Texto").Value(), Variant(texto));
        }
    }

    TEST(Literal, a_nul_would_end_the_statement_and_is_refused)
    {
        EXPECT_THROW(static_cast<void>(literal(std::string_view("a\0b", 3))), Error);
    }

    TEST(Literal, dates_and_amounts_are_written_as_statements_want_them)
    {
        EXPECT_EQ(literal(Date::de_dia(2026, 11, 5).value()), "'05/11/2026'");
        EXPECT_EQ(literal(Currency::de_texto("-1234.5")), "-1234.5");
        EXPECT_EQ(literal(Currency::de_texto("999999999999.99")), "999999999999.99");
        EXPECT_EQ(literal(Currency()), "0");
    }

}
} // namespace atipicos::sql
