// Rows of a host: they go forward only, give each value once, and hold whatever automation has values for.
#include "engines/ado/Connection.hpp"
#include "engines/ado/Conversion.hpp"
#include "tests/support/ConexionAjena.hpp"
#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos::ado {
namespace {

    using adodb::CursorType;
    using adodb::ErrorBaseDatos;
    using adodb::LockType;
    using automation::Fecha;
    using automation::Moneda;
    using automation::Valor;
    using pruebas::dia;
    using pruebas::dia_y_hora;
    using pruebas::moneda;
    using pruebas::valor_decimal;
    using testing::ElementsAre;

    struct FilasAjenas : testing::Test {
        pruebas::ConexionAjena ajena;
        pruebas::ConexionAjena::Estado& estado = *ajena.estado;
        Connection conexion{ ajena.objeto() };
        std::unique_ptr<adodb::Recordset> rs = conexion.CreateRecordset();

        void abre() const { rs->Open("SELECT *", CursorType::ForwardOnly, LockType::ReadOnly); }
        /// The values of the first row, each of a column of its own.
        std::vector<Variant> leidos(std::vector<Valor> fila)
        {
            estado.campos.resize(fila.size(), "C");
            estado.filas = { std::move(fila) };
            abre();
            std::vector<Variant> todos;
            for (std::size_t i = 0; i < rs->Count(); ++i)
                todos.push_back(rs->Fields(i).Value());
            rs->Close();
            return todos;
        }
        template <class Uso> static std::int32_t numero_de(Uso uso)
        {
            try {
                uso();
            } catch (const ErrorBaseDatos& error) {
                return error.numero();
            }
            return 0;
        }
    };

    TEST_F(FilasAjenas, what_there_may_be_in_a_column)
    {
        Valor simple;
        simple.get().vt = automation::VT_R4;
        simple.get().fltVal = 0.1F;
        Valor largo;
        largo.get().vt = automation::VT_I8;
        largo.get().llVal = 5'000'000'000;
        EXPECT_THAT(leidos({ Valor(), Valor::nulo(), true, std::int16_t{ -4 }, 70'000, 2.5, Moneda{ 12'345 },
                        Fecha{ 46'347 }, Fecha{ 46'347 + (9 * 3600 + 5 * 60 + 3) / 86'400.0 }, Fecha{ 0.5 },
                        "Ñandú €", simple, largo }),
            ElementsAre(Variant(), Variant(Nulo{}), Variant(true), Variant(-4), Variant(70'000), Variant(2.5),
                Variant(moneda("1.2345")), Variant(dia("21/11/2026")),
                Variant(dia_y_hora("21/11/2026", 9, 5, 3)), Variant(Date::de_automatizacion(0.5)),
                Variant("Ñandú €"), Variant(0.1), Variant(5e9)));
    }

    TEST_F(FilasAjenas, a_decimal_is_an_amount_when_four_decimals_hold_it_and_a_double_otherwise)
    {
        constexpr auto mayor = 9'223'372'036'854'775'807U;
        EXPECT_THAT(
            leidos({ valor_decimal(false, 0, 0), valor_decimal(true, 6, 0), valor_decimal(true, 2, 12'345),
                valor_decimal(false, 4, 1), valor_decimal(false, 6, 7'500'000),
                valor_decimal(false, 4, mayor), valor_decimal(true, 4, mayor),
                valor_decimal(false, 6, mayor / 10 * 10), valor_decimal(false, 5, 1'234'567) }),
            ElementsAre(Variant(Currency()), Variant(Currency()), Variant(moneda("-123.45")),
                Variant(moneda("0.0001")), Variant(moneda("7.5")), Variant(moneda("922337203685477.5807")),
                Variant(moneda("-922337203685477.5807")), Variant(moneda("9223372036854.7758")),
                Variant(12.34567)));
        EXPECT_THAT(leidos({ valor_decimal(false, 4, mayor + 1), valor_decimal(true, 0, mayor),
                        valor_decimal(false, 0, 0, 1), valor_decimal(false, 20, 0, 1) }),
            ElementsAre(Variant(922'337'203'685'477.5808), Variant(-9'223'372'036'854'775'807.0),
                Variant(18'446'744'073'709'551'616.0), Variant(0.18446744073709551616)));
    }

    TEST_F(FilasAjenas, texts_are_appended_and_what_is_missing_appends_nothing)
    {
        estado.campos = { "A", "B", "C", "D" };
        estado.filas = { { "Palé", Valor::nulo(), Valor(), valor_decimal(false, 1, 25) } };
        abre();
        std::string todo = ">";
        for (std::size_t i = 0; i < 4; ++i)
            rs->Fields(i).anexa_texto(todo);
        EXPECT_EQ(todo, ">Palé2,5");
    }

    TEST_F(FilasAjenas, rows_are_read_to_their_end_and_never_beyond_it)
    {
        estado.campos = { "Codigo" };
        estado.filas = { { "AT250001" }, { Valor::nulo() }, { "AT250003" } };
        std::vector<Variant> todos;
        for (abre(); !rs->Eof(); rs->MoveNext())
            todos.push_back(rs->Fields("codigo").Value());
        EXPECT_THAT(todos, ElementsAre(Variant("AT250001"), Variant(Nulo{}), Variant("AT250003")));
        EXPECT_EQ(numero_de([&] { rs->MoveNext(); }), 3021);
        EXPECT_EQ(numero_de([&] { static_cast<void>(rs->Fields(0).Value()); }), 3021);
        rs->Close();
        EXPECT_THAT(estado.dichas,
            ElementsAre("Open SELECT * cursor 0 bloqueo 1 opción 1", "MoveNext", "MoveNext", "MoveNext",
                "MoveNext", "Close"));
    }

    TEST_F(FilasAjenas, the_end_may_be_told_in_any_way_that_means_yes_or_no)
    {
        estado.campos = { "Codigo" };
        estado.filas = { { "AT250001" } };
        for (const auto& logico : std::vector<std::function<Valor(bool)>>{
                 [](bool v) { return Valor(static_cast<std::int16_t>(v ? -1 : 0)); },
                 [](bool v) { return Valor(v ? 1.0 : 0.0); }, [](bool v) { return Valor(v ? 1 : 0); } }) {
            estado.logico = logico;
            abre();
            EXPECT_FALSE(rs->Eof());
            rs->MoveNext();
            EXPECT_TRUE(rs->Eof());
        }
    }

    TEST_F(FilasAjenas, a_query_without_rows_is_at_its_end_and_has_its_columns)
    {
        estado.campos = { "Codigo", "Observ" };
        abre();
        EXPECT_TRUE(rs->Eof());
        EXPECT_EQ(rs->Count(), 2U);
        EXPECT_EQ(rs->Fields("OBSERV").Name(), "Observ");
        EXPECT_EQ(numero_de([&] { rs->Fields("Importe"); }), -2147217900);
        EXPECT_EQ(numero_de([&] { rs->Fields(2); }), -2147217900);
    }

    TEST_F(FilasAjenas, a_value_that_is_none_is_an_error_of_the_database_at_the_line_that_asked)
    {
        estado.campos = { "Codigo" };
        estado.filas = { { Valor(automation::Anfitrion::crea({}).get()) } };
        abre();
        try {
            static_cast<void>(rs->Fields(0).Value());
            FAIL() << "it raised nothing";
        } catch (const ErrorBaseDatos& error) {
            EXPECT_EQ(error.numero(), 13);
            EXPECT_EQ(error.descripcion(), "No coinciden los tipos");
            EXPECT_EQ(error.instruccion(), "SELECT *");
            EXPECT_EQ(error.donde().linea(), __LINE__ - 6U);
        }
        estado.logico = [](bool) { return Valor::nulo(); };
        try {
            abre();
            FAIL() << "it raised nothing";
        } catch (const ErrorBaseDatos& error) {
            EXPECT_EQ(error.numero(), 94);
            EXPECT_THAT(error.donde().fichero(), testing::EndsWith("AdoFilas_test.cpp"));
        }
    }

    TEST_F(FilasAjenas, rows_that_cannot_be_looked_at_are_closed_at_once)
    {
        estado.campos = { "Codigo" };
        estado.filas = { { "AT250001" } };
        estado.fallos.emplace(
            "EOF", automation::Fallo(-2147467259, "Proveedor", "Se ha perdido la conexión."));
        EXPECT_EQ(numero_de([&] { abre(); }), -2147467259);
        EXPECT_EQ(estado.abiertas, 0);
        EXPECT_TRUE(rs->Eof());
        EXPECT_EQ(rs->Count(), 0U);
        EXPECT_EQ(numero_de([&] { rs->MoveNext(); }), -2147467259) << "they are not open";
        EXPECT_THAT(estado.dichas, testing::SizeIs(2)) << "opened and closed, and nothing after it";
    }

    TEST_F(FilasAjenas, rows_that_the_host_closed_raise_once_and_are_let_go_in_silence)
    {
        estado.campos = { "Codigo" };
        estado.filas = { { "AT250001" }, { "AT250002" } };
        abre();
        estado.cerrada = true;
        EXPECT_EQ(numero_de([&] { rs->MoveNext(); }), 3704);
        EXPECT_EQ(numero_de([&] { rs->Close(); }), 3704);
        EXPECT_EQ(numero_de([&] { rs->Close(); }), -2147467259) << "it is closed here in any case";
        estado.cerrada = false;
        abre();
        estado.cerrada = true;
        EXPECT_NO_THROW(rs.reset());
        EXPECT_EQ(estado.dichas.back(), "Close");
    }

    TEST_F(FilasAjenas, rows_that_are_closed_are_at_their_end)
    {
        estado.campos = { "Codigo" };
        estado.filas = { { "AT250001" } };
        abre();
        EXPECT_FALSE(rs->Eof());
        rs->Close();
        EXPECT_TRUE(rs->Eof());
        EXPECT_EQ(rs->Count(), 0U);
    }

    TEST_F(FilasAjenas, opening_again_closes_what_was_open)
    {
        abre();
        abre();
        EXPECT_EQ(estado.abiertas, 1);
        rs.reset();
        EXPECT_EQ(estado.abiertas, 0);
    }

    TEST_F(FilasAjenas, a_new_row_is_given_its_values_in_their_kinds)
    {
        estado.campos = { "Numero", "Importe", "Fecha", "Codigo", "Observ", "Marca" };
        rs->Open("SELECT *", CursorType::Keyset, LockType::Pessimistic);
        rs->AddNew();
        rs->Fields("Numero").Value(std::int32_t{ 7 });
        rs->Fields("Importe").Value(moneda("1.5"));
        rs->Fields("Fecha").Value(dia("21/11/2026"));
        rs->Fields("Codigo").Value("AT250001");
        rs->Fields("Observ").Value(Nulo{});
        rs->Fields("Marca").Value(true);
        rs->Update();
        EXPECT_THAT(estado.dichas,
            ElementsAre("Open SELECT * cursor 1 bloqueo 2 opción 1", "AddNew", "Value Numero tipo 3",
                "Value Importe tipo 6", "Value Fecha tipo 7", "Value Codigo tipo 8", "Value Observ tipo 1",
                "Value Marca tipo 11", "Update"));
        estado.fallos.emplace("Update", automation::Fallo(-2147217871, "Proveedor", "Bloqueada."));
        EXPECT_EQ(numero_de([&] { rs->Update(); }), -2147217871);
    }

}
}
