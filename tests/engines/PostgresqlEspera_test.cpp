// A server that does not answer, is not there, or is one of several.
#include "engines/postgresql/Apertura.hpp"
#include "tests/engines/ParPostgresql.hpp"
#include "tests/support/Intermediario.hpp"

#include <array>
#include <chrono>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <optional>
#include <sys/socket.h>

namespace atipicos::postgresql {
namespace {

    using adodb::Categoria;
    using testing::HasSubstr;
    using testing::StartsWith;
    using namespace std::chrono_literals;

    struct PostgresqlEspera : ParPostgresql {
        std::optional<pruebas::Intermediario> intermediario;

        Opciones por_intermediario()
        {
            suelta();
            intermediario.emplace(servidor->enchufe());
            auto con = opciones();
            con.direccion += intermediario->por_aqui();
            return con;
        }
        void TearDown() override
        {
            suelta();
            intermediario.reset();
            ParPostgresql::TearDown();
        }

        template <class Uso> static std::pair<Categoria, std::string> al_esperar(Uso uso)
        {
            try {
                uso();
            } catch (const adodb::ErrorBaseDatos& error) {
                return { error.categoria(), error.descripcion() };
            }
            return { Categoria::otra, "no error" };
        }
    };

    TEST_F(PostgresqlEspera, a_server_that_says_no_more_is_lost_after_the_limit_and_not_after_twice_of_it)
    {
        auto con = por_intermediario();
        con.espera_instruccion = 1s; // and the two in which it would say so itself
        std::vector<sql::Linea> avisos;
        con.avisa = [&](sql::Linea que) { avisos.push_back(que); };
        abre(con);
        empieza();
        escribe("11");
        intermediario->calla();
        const auto antes = std::chrono::steady_clock::now();
        const auto fallo = al_esperar([&] { contabilidad->Execute("DELETE FROM Apuntes"); });
        deshace();
        const auto pasado = std::chrono::steady_clock::now() - antes;
        EXPECT_EQ(fallo.first, Categoria::conexion);
        EXPECT_THAT(fallo.second,
            StartsWith("Se ha perdido la conexión con el servidor de la base de datos (no contesta desde "
                       "hace 3 s)"));
        EXPECT_GE(pasado, 3s);
        EXPECT_LT(pasado, 6s) << "the roll-back does not wait for it again";
        EXPECT_EQ(avisos, std::vector{ sql::Linea::perdida });
        intermediario->calla(false);
        guarda("12");
        EXPECT_EQ(guardado(), "12/12\n");
    }

    TEST_F(PostgresqlEspera, a_line_over_a_network_is_watched_as_the_address_says_or_for_a_minute)
    {
        auto con = por_intermediario();
        const auto vigilada = [&con] {
            const auto linea = Apertura(con, Donde::aqui()).abre(Donde::aqui());
            std::array<int, 4> segundos{};
            std::size_t i = 0;
            for (const int opcion : { TCP_KEEPIDLE, TCP_KEEPINTVL, TCP_KEEPCNT, TCP_USER_TIMEOUT }) {
                socklen_t bytes = sizeof(int);
                EXPECT_EQ(getsockopt(PQsocket(linea.get()), IPPROTO_TCP, opcion, &segundos[i++], &bytes), 0);
            }
            return segundos;
        };
        EXPECT_EQ(vigilada(), (std::array{ 30, 10, 3, 60'000 })) << "the last one in milliseconds";
        con.direccion += "&keepalives_idle=7&keepalives_interval=4&keepalives_count=5&tcp_user_timeout=9000";
        EXPECT_EQ(vigilada(), (std::array{ 7, 4, 5, 9'000 }));
    }

    TEST_F(PostgresqlEspera, who_waits_is_asked_whether_to_go_on_and_can_end_it)
    {
        auto con = por_intermediario();
        std::vector<std::chrono::milliseconds> preguntas;
        con.sigue_esperando = [&](std::chrono::milliseconds callado) {
            preguntas.push_back(callado);
            return preguntas.size() < 3;
        };
        abre(con);
        EXPECT_TRUE(preguntas.empty()) << "of a server that answers nobody is asked";
        intermediario->calla();
        auto fallo = al_esperar([&] { gestion->Execute("DELETE FROM Cargos"); });
        EXPECT_EQ(fallo.first, Categoria::conexion);
        EXPECT_THAT(fallo.second, HasSubstr("(se ha dejado de esperar su respuesta)"));
        ASSERT_EQ(preguntas.size(), 3U);
        EXPECT_TRUE(std::is_sorted(preguntas.begin(), preguntas.end()));
        EXPECT_GE(preguntas.front(), 200ms);
        intermediario->calla(false);
        preguntas.clear();
        gestion->Execute("INSERT INTO Cargos (Id) VALUES (21)");
        EXPECT_EQ(guardado(), "21/\n");
        // A commit of which nobody knows is told as one.
        empieza();
        escribe("22");
        gestion->CommitTrans();
        intermediario->calla();
        fallo = al_esperar([&] { contabilidad->CommitTrans(); });
        EXPECT_THAT(
            fallo.second, testing::EndsWith("No se sabe si los datos llegaron a guardarse: compruébelo."));
        intermediario->calla(false);
        contabilidad->RollbackTrans();
    }

    TEST_F(PostgresqlEspera, an_operation_that_begins_while_it_is_asked_is_refused_and_the_other_one_goes_on)
    {
        auto con = por_intermediario();
        std::vector<std::string> dichos;
        con.sigue_esperando = [&](std::chrono::milliseconds) {
            dichos.push_back(al_esperar([&] { contabilidad->Execute("DELETE FROM Apuntes"); }).second);
            dichos.push_back(al_esperar([&] { lee(*contabilidad, "SELECT COUNT(*) FROM Apuntes"); }).second);
            return true;
        };
        abre(con);
        guarda("25");
        empieza();
        escribe("26");
        gestion->Execute("INSERT INTO Cargos (Id) SELECT 27 FROM pg_sleep(1)");
        ASSERT_FALSE(dichos.empty());
        EXPECT_THAT(dichos,
            testing::Each(
                "Se está esperando a que conteste el servidor de la base de datos: espere a que termine."));
        confirma();
        EXPECT_EQ(guardado(), "25 26 27/25 26\n");
    }

    TEST_F(
        PostgresqlEspera, a_server_that_goes_silent_when_the_line_is_open_and_the_session_is_not_is_given_up)
    {
        auto con = por_intermediario();
        con.direccion += "&target_session_attrs=read-write&connect_timeout=2";
        con.solo_lectura = true; // which is told when the line is open
        intermediario->calla_tras(1);
        const auto fallo = al_esperar([&] { static_cast<void>(Connection::Abrir(con)); });
        EXPECT_EQ(fallo.first, Categoria::conexion);
        EXPECT_THAT(fallo.second, HasSubstr("(no contesta en 2 s)"));
    }

    TEST_F(PostgresqlEspera, a_list_that_is_being_read_can_be_given_up_too)
    {
        auto con = por_intermediario();
        int preguntas = 0;
        con.sigue_esperando = [&](std::chrono::milliseconds) { return ++preguntas < 2; };
        abre(con);
        auto rs = gestion->CreateRecordset();
        rs->Open("SELECT n, repeat('x', 20000) AS y, pg_sleep(CASE n WHEN 5 THEN 1 ELSE 0 END) IS NULL AS x "
                 "FROM generate_series(1, 9) n",
            adodb::CursorType::ForwardOnly, adodb::LockType::ReadOnly);
        const auto fallo = al_esperar([&] {
            for (; !rs->Eof(); rs->MoveNext()) { }
        });
        EXPECT_THAT(fallo.second, HasSubstr("(se ha dejado de esperar su respuesta)"));
        rs->Close();
        gestion->Execute("INSERT INTO Cargos (Id) VALUES (31)");
        EXPECT_EQ(guardado(), "31/\n");
    }

    TEST_F(PostgresqlEspera, a_database_that_is_not_there_is_named_as_such_and_a_server_that_is_not_as_that)
    {
        suelta();
        auto con = opciones();
        con.direccion = servidor->direccion("sin_hacer");
        auto fallo = al_esperar([&] { abre(con); });
        EXPECT_EQ(fallo.first, Categoria::no_existe);
        EXPECT_THAT(fallo.second, StartsWith("La base de datos «sin_hacer» no existe en el servidor ("));
        con.direccion = servidor->direccion("par", "nadie_sin_alta");
        EXPECT_EQ(al_esperar([&] { abre(con); }).first, Categoria::conexion);
        con.direccion = "postgresql://uno@/par?host=/tmp/par/no";
        EXPECT_EQ(al_esperar([&] { abre(con); }).first, Categoria::conexion);
    }

    TEST_F(PostgresqlEspera, an_address_with_several_servers_that_wants_one_to_write_to_serves_who_only_reads)
    {
        suelta();
        auto con = opciones();
        const auto sitio = servidor->enchufe().parent_path().string();
        for (const auto* cual : { "read-write", "primary", "any", "prefer-standby" }) {
            con.direccion
                = "postgresql://atipicos@/par?host=/tmp/par/no," + sitio + "&target_session_attrs=" + cual;
            con.solo_lectura = true;
            abre(con);
            for (int vez = 0; vez < 2; ++vez) { // the second time over a line that was opened again
                EXPECT_EQ(lee(*gestion, "SELECT COUNT(*) FROM Cargos"), "0") << cual;
                EXPECT_EQ(al_esperar([&] { gestion->Execute("INSERT INTO Cargos (Id) VALUES (41)"); }).first,
                    Categoria::solo_lectura)
                    << cual;
                servidor->psql("postgres",
                    "SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity WHERE datname = 'par'");
            }
            con.solo_lectura = false;
            abre(con);
            gestion->Execute("INSERT INTO Cargos (Id) VALUES (42)");
            gestion->Execute("DELETE FROM Cargos");
        }
    }

}
}
