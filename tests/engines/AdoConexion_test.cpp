// A connection that the host lends: what is asked of it, number by number, and what the component answers
// when it fails, is closed, is busy or is changed for another.
#include "context/modComun.hpp"
#include "engines/ado/Connection.hpp"
#include "engines/ado/Conversion.hpp"
#include "tests/support/ConexionAjena.hpp"
#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

#include <optional>

namespace atipicos::ado {
namespace {

    using adodb::Categoria;
    using adodb::CursorType;
    using adodb::ErrorBaseDatos;
    using adodb::LockType;
    using automation::Valor;
    using pruebas::valor_decimal;
    using testing::ElementsAre;

    // As ADO publishes them.
    namespace publicada {
        constexpr auto adOpenForwardOnly = "0";
        constexpr auto adOpenKeyset = "1";
        constexpr auto adOpenStatic = "3";
        constexpr auto adLockReadOnly = "1";
        constexpr auto adLockPessimistic = "2";
        constexpr auto adCmdText = "1";
        constexpr std::int32_t adErrObjectClosed = 3704;
        constexpr std::int32_t adErrStillExecuting = 3711;
        constexpr auto rechazada = static_cast<std::int32_t>(0x80010001); // RPC_E_CALL_REJECTED
    }

    struct Ado : testing::Test {
        pruebas::ConexionAjena ajena;
        pruebas::ConexionAjena::Estado& estado = *ajena.estado;
        std::shared_ptr<Connection> conexion = std::make_shared<Connection>(ajena.objeto());

        std::unique_ptr<adodb::Recordset> abiertas() const
        {
            auto rs = conexion->CreateRecordset();
            rs->Open("SELECT *", CursorType::Static, LockType::ReadOnly);
            return rs;
        }
        template <class Uso> static std::optional<ErrorBaseDatos> error_de(Uso uso)
        {
            try {
                uso();
            } catch (const ErrorBaseDatos& error) {
                return error;
            }
            ADD_FAILURE() << "it raised nothing";
            return std::nullopt;
        }
    };

    TEST_F(Ado, recordsets_are_opened_with_the_numbers_that_are_published)
    {
        using namespace publicada;
        const auto abre = [this](CursorType cursor, LockType bloqueo) {
            conexion->CreateRecordset()->Open("SELECT 1", cursor, bloqueo);
            const auto dicha = estado.dichas.front();
            estado.dichas.clear();
            return dicha;
        };
        const auto esperada = [](const std::string& cursor, const std::string& bloqueo) {
            return "Open SELECT 1 cursor " + cursor + " bloqueo " + bloqueo + " opción " + adCmdText;
        };
        EXPECT_EQ(abre(CursorType::Static, LockType::ReadOnly), esperada(adOpenStatic, adLockReadOnly));
        EXPECT_EQ(abre(CursorType::Keyset, LockType::Pessimistic), esperada(adOpenKeyset, adLockPessimistic));
        EXPECT_EQ(
            abre(CursorType::ForwardOnly, LockType::ReadOnly), esperada(adOpenForwardOnly, adLockReadOnly));
    }

    TEST_F(Ado, statements_are_texts_and_their_count_comes_by_reference)
    {
        std::int32_t filas = 99;
        for (const auto& [dada, leida] : { std::pair{ Valor(3), 3 }, { Valor(std::int16_t{ 2 }), 2 },
                 { Valor(4.0), 4 }, { valor_decimal(false, 0, 5), 5 }, { Valor(), 0 }, { Valor(-1), -1 } }) {
            estado.afectadas = dada;
            conexion->Execute("UPDATE Cargos", &filas);
            EXPECT_EQ(filas, leida);
        }
        conexion->Execute("DELETE FROM Cargos");
        EXPECT_EQ(estado.dichas.front(), "Execute UPDATE Cargos (3 argumentos, 1)");
        EXPECT_EQ(estado.dichas.back(), "Execute DELETE FROM Cargos (3 argumentos, 1)");
    }

    TEST_F(Ado, transactions_are_begun_ended_and_undone_by_name)
    {
        conexion->BeginTrans();
        conexion->CommitTrans();
        conexion->BeginTrans();
        conexion->RollbackTrans();
        EXPECT_THAT(estado.dichas, ElementsAre("BeginTrans", "CommitTrans", "BeginTrans", "RollbackTrans"));
    }

    TEST_F(Ado, a_failure_keeps_the_host_s_number_source_and_words_and_names_statement_and_line)
    {
        struct Caso {
            std::uint32_t numero;
            Categoria categoria;
        };
        for (const auto& caso : { Caso{ 0x80040E14, Categoria::instruccion },
                 { 0x80040E2F, Categoria::restriccion }, { 0x80040E31, Categoria::bloqueo },
                 { 0x80040E09, Categoria::solo_lectura }, { 0x80004005, Categoria::otra } }) {
            const auto numero = static_cast<std::int32_t>(caso.numero);
            estado.fallos.clear();
            estado.fallos.emplace("Execute", automation::Fallo(numero, "Proveedor OLE DB", "No se pudo."));
            const auto error = error_de([&] { conexion->Execute("INSERT INTO Cargos"); });
            ASSERT_TRUE(error);
            EXPECT_EQ(error->numero(), numero);
            EXPECT_EQ(error->fuente(), "Proveedor OLE DB");
            EXPECT_EQ(error->descripcion(), "No se pudo.");
            EXPECT_EQ(error->categoria(), caso.categoria);
            EXPECT_EQ(error->instruccion(), "INSERT INTO Cargos");
            EXPECT_EQ(error->donde().linea(), __LINE__ - 7U);
        }
    }

    TEST_F(Ado, a_failure_without_words_is_told_with_its_number)
    {
        estado.fallos.emplace("BeginTrans", automation::Fallo(3246, "", ""));
        EXPECT_EQ(error_de([&] { conexion->BeginTrans(); })->descripcion(),
            "El anfitrión da el error 3246 y no dice por qué.");
    }

    TEST_F(Ado, a_closed_connection_is_told_at_every_call_and_serves_again_once_it_is_open)
    {
        estado.cerrada = true;
        const std::vector<std::function<void()>> usos{
            [this] { conexion->Execute("DELETE FROM Cargos"); },
            [this] { conexion->BeginTrans(); },
            [this] { conexion->CommitTrans(); },
            [this] { conexion->RollbackTrans(); },
            [this] { abiertas(); },
        };
        for (const auto& uso : usos) {
            const auto error = error_de(uso);
            ASSERT_TRUE(error);
            EXPECT_EQ(error->numero(), publicada::adErrObjectClosed);
            EXPECT_EQ(error->descripcion(), "La operación no está permitida si el objeto está cerrado.");
        }
        estado.cerrada = false;
        for (const auto& uso : usos)
            EXPECT_NO_THROW(uso());
    }

    TEST_F(Ado, a_busy_connection_is_told_and_not_asked_again)
    {
        for (const auto numero : { publicada::adErrStillExecuting, publicada::rechazada }) {
            estado.dichas.clear();
            estado.fallos.clear();
            estado.fallos.emplace(
                "Execute", automation::Fallo(numero, "ADODB.Connection", "Hay otra en marcha."));
            estado.fallos.emplace(
                "Open", automation::Fallo(numero, "ADODB.Recordset", "Hay otra en marcha."));
            EXPECT_EQ(error_de([&] { conexion->Execute("UPDATE Cargos"); })->numero(), numero);
            EXPECT_EQ(error_de([&] { abiertas(); })->numero(), numero);
            EXPECT_THAT(estado.dichas, testing::SizeIs(2));
        }
        estado.fallos.clear();
        EXPECT_NO_THROW(conexion->Execute("UPDATE Cargos"));
    }

    TEST_F(Ado, rows_that_are_open_go_on_where_they_were_opened_when_another_connection_is_lent)
    {
        const pruebas::Contexto contexto;
        estado.campos = { "Numero" };
        estado.filas = { { Valor(7) }, { Valor(8) } };
        modComun::set_ConexionOrvalin(std::exchange(conexion, nullptr));
        const auto rs = modComun::CreateRecordset();
        rs->Open("SELECT Numero", CursorType::Keyset, LockType::Pessimistic);
        const pruebas::ConexionAjena otra;
        modComun::set_ConexionOrvalin(std::make_shared<Connection>(otra.objeto()));

        EXPECT_EQ(rs->Fields("Numero").Value(), Variant(7));
        rs->MoveNext();
        EXPECT_EQ(rs->Fields("numero").Value(), Variant(8));
        modComun::ConexionOrvalin()->Execute("UPDATE Cargos");
        rs->Close();
        EXPECT_EQ(estado.abiertas, 0);
        EXPECT_THAT(otra.estado->dichas, ElementsAre("Execute UPDATE Cargos (3 argumentos, 1)"));
    }

    TEST_F(Ado, a_call_ends_well_though_the_host_lends_another_connection_in_the_middle_of_it)
    {
        const pruebas::Contexto contexto;
        auto testigo = std::make_shared<int>();
        const std::weak_ptr<int> vivo = testigo;
        bool vivo_al_final = false;
        auto quita = [testigo = std::move(testigo), &vivo, &vivo_al_final](const automation::Argumentos& a) {
            modComun::set_ConexionOrvalin(nullptr);
            vivo_al_final = !vivo.expired();
            a.escribe(1, 6);
            return Valor();
        };
        modComun::set_ConexionOrvalin(
            std::make_shared<Connection>(automation::Anfitrion::crea({ { "Execute", std::move(quita) } })));
        std::int32_t filas = 0;
        modComun::ConexionOrvalin()->Execute("UPDATE Cargos", &filas);
        EXPECT_EQ(filas, 6);
        EXPECT_TRUE(vivo_al_final) << "the host's object was held while it answered";
        EXPECT_TRUE(vivo.expired()) << "and not longer";
    }

}
}
