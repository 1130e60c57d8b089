// What FreeTDS makes of a connection string, of a refusal and of silence, seen from the other end of the
// line.
#include "engines/odbc/Connection.hpp"
#include "tests/support/ServidorTds.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <thread>
#include <vector>

namespace atipicos::odbc {
namespace {

    using adodb::Categoria;
    using adodb::ErrorBaseDatos;
    using testing::HasSubstr;
    using testing::Not;
    using testing::StartsWith;
    using namespace std::chrono_literals;

    struct FreeTds : testing::Test {
        std::unique_ptr<pruebas::ServidorTds> servidor;

        void SetUp() override
        {
            if (const auto falta = pruebas::ServidorTds::falta(); !falta.empty())
                GTEST_SKIP() << falta;
            servidor = std::make_unique<pruebas::ServidorTds>();
        }

        Opciones opciones(const std::string& usuario = "begona") const
        {
            Cadena cadena(servidor->cadena());
            cadena.pon("UID", usuario);
            return { .cadena = cadena.texto(), .clave = "una clave" };
        }

        template <class Uso> static std::pair<Categoria, std::string> fallo_de_tds(Uso uso)
        {
            try {
                uso();
            } catch (const ErrorBaseDatos& error) {
                return { error.categoria(), error.descripcion() };
            }
            return { Categoria::otra, "no error" };
        }
    };

    TEST_F(FreeTds, passwords_and_users_arrive_letter_by_letter)
    {
        for (const std::string texto : { "llana1", "a;b", "a}b", "{ab", "a=b", "ab}", "a;b}c{d=e f", "a}}b",
                 "{a;b}", "a;b}", " con blancos ", "begoña", "ñandú1", "a€b", "clave 😀", "Ļ;PWD=otra" }) {
            auto con = opciones(texto);
            con.clave = texto + "1";
            EXPECT_NO_THROW(static_cast<void>(Connection::Abrir(con))) << texto;
            const auto entrada = servidor->entradas().back();
            EXPECT_EQ(entrada.usuario, texto);
            EXPECT_EQ(entrada.clave, texto + "1");
        }
    }

    TEST_F(FreeTds, what_it_cannot_be_given_is_refused_before_anything_is_sent)
    {
        auto con = opciones();
        con.clave = "secreta};x";
        const auto fallo = fallo_de_tds([&] { static_cast<void>(Connection::Abrir(con)); });
        EXPECT_THAT(fallo.second, StartsWith("El controlador FreeTDS no admite «};»"));
        EXPECT_THAT(fallo.second, Not(HasSubstr("secreta")));
        EXPECT_TRUE(servidor->entradas().empty());
    }

    TEST_F(FreeTds, a_database_that_is_not_there_is_no_lost_line)
    {
        servidor->falla("USE Orvalin", 911);
        auto con = opciones();
        con.al_abrir = [](const Servidor&) { return std::vector<std::string>{ "USE Orvalin" }; };
        std::vector<sql::Linea> avisos;
        con.avisa = [&](sql::Linea que) { avisos.push_back(que); };
        auto fallo = fallo_de_tds([&] { static_cast<void>(Connection::Abrir(con)); });
        EXPECT_EQ(fallo.first, Categoria::no_existe);
        EXPECT_THAT(fallo.second, StartsWith("La base de datos no existe en el servidor, o este usuario"));
        EXPECT_TRUE(avisos.empty());
        servidor->falla("", 4060);
        con.cadena += ";DATABASE=Orvalin";
        fallo = fallo_de_tds([&] { static_cast<void>(Connection::Abrir(con)); });
        EXPECT_EQ(fallo.first, Categoria::no_existe);
        EXPECT_EQ(servidor->entradas().back().base, "Orvalin");
        servidor->falla("", 18456);
        EXPECT_EQ(
            fallo_de_tds([&] { static_cast<void>(Connection::Abrir(con)); }).first, Categoria::conexion);
    }

    TEST_F(FreeTds, while_a_server_is_silent_whoever_wants_to_know_is_told_and_never_afterwards)
    {
        auto con = opciones();
        con.sesion.espera_instruccion = 6s;
        std::vector<std::chrono::milliseconds> dichos;
        std::atomic<bool> callado = true;
        con.avisa_espera = [&](std::chrono::milliseconds desde) {
            EXPECT_TRUE(callado);
            dichos.push_back(desde);
        };
        const auto conexion = Connection::Abrir(con);
        conexion->Execute("UPDATE t");
        dichos.clear();
        servidor->calla_ante("DELETE");
        EXPECT_EQ(fallo_de_tds([&] { conexion->Execute("DELETE FROM t"); }).first, Categoria::conexion);
        callado = false;
        EXPECT_GE(dichos.size(), 5U);
        EXPECT_TRUE(std::is_sorted(dichos.begin(), dichos.end()));
        ASSERT_FALSE(dichos.empty());
        EXPECT_GE(dichos.back(), 4s);
        std::this_thread::sleep_for(1'200ms);
    }

    TEST_F(FreeTds, a_server_that_says_no_more_is_lost_when_the_limit_says_so)
    {
        auto con = opciones();
        con.sesion.espera_instruccion = 4s;
        const auto pareja
            = Connection::AbrirPareja(con, [](adodb::Connection&) { return std::vector<std::string>{}; });
        pareja.gestion->BeginTrans();
        pareja.contabilidad->BeginTrans();
        servidor->calla_ante("DELETE");
        const auto antes = std::chrono::steady_clock::now();
        EXPECT_EQ(fallo_de_tds([&] { pareja.gestion->Execute("DELETE FROM t"); }).first, Categoria::conexion);
        pareja.contabilidad->RollbackTrans();
        pareja.gestion->RollbackTrans();
        const auto todo = std::chrono::steady_clock::now() - antes;
        EXPECT_GE(todo, 3s); // a limit, measured with a wide margin: twice of it would be 8
        EXPECT_LT(todo, 7s);
        servidor->calla_ante("nothing");
        EXPECT_NO_THROW(pareja.gestion->Execute("DELETE FROM t"));
    }

}
}
