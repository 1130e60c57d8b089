// What becomes of a commit whose answer was lost, where the database keeps keys of commits.
#include "tests/engines/ParPostgresql.hpp"
#include "tests/support/Intermediario.hpp"

#include <optional>
#include <thread>

namespace atipicos::postgresql {
namespace {

    using adodb::Categoria;
    using testing::HasSubstr;
    using testing::StartsWith;
    using namespace std::chrono_literals;

    constexpr auto nada_guardado = "Se ha perdido la conexión con el servidor de la base de datos al "
                                   "confirmar. Se ha vuelto a conectar y "
                                   "se ha comprobado: no se ha guardado nada. Repita la operación.";

    struct PostgresqlConfirmacion : ParPostgresql {
        std::optional<pruebas::Intermediario> intermediario;

        void SetUp() override
        {
            ParPostgresql::SetUp();
            if (IsSkipped())
                return;
            gestion->BeginTrans();
            sql::crea_confirmaciones_postgresql(*gestion, "propio");
            gestion->CommitTrans();
            intermediario.emplace(servidor->enchufe());
            abre(por_intermediario());
        }
        void TearDown() override
        {
            suelta();
            intermediario.reset();
            ParPostgresql::TearDown();
        }

        [[nodiscard]] Opciones por_intermediario() const
        {
            auto con = opciones();
            con.direccion += intermediario->por_aqui();
            return con;
        }
        static std::string pide(const std::string& sql) { return servidor->psql("par", sql); }
        static std::string claves() { return pide("SELECT COUNT(*) FROM propio.confirmaciones"); }
    };

    TEST_F(PostgresqlConfirmacion, one_that_was_done_is_done_and_the_next_one_too)
    {
        for (const std::string id : { "1", "2" }) {
            empieza();
            escribe(id);
            gestion->CommitTrans();
            intermediario->pierde_la_proxima_respuesta();
            contabilidad->CommitTrans();
        }
        guarda("3");
        EXPECT_EQ(guardado(), "1 2 3/1 2 3\n");
    }

    TEST_F(PostgresqlConfirmacion, one_that_did_not_arrive_is_told_as_such_and_can_be_repeated)
    {
        guarda("1");
        empieza();
        escribe("2");
        gestion->CommitTrans();
        mata();
        const auto fallo = fallo_de([&] { contabilidad->CommitTrans(); });
        EXPECT_EQ(fallo.categoria, Categoria::conexion);
        EXPECT_EQ(fallo.descripcion, nada_guardado);
        contabilidad->RollbackTrans();
        EXPECT_EQ(guardado(), "1/1\n");
        guarda("2");
        EXPECT_EQ(guardado(), "1 2/1 2\n");
    }

    TEST_F(PostgresqlConfirmacion, a_unit_is_looked_up_as_a_whole)
    {
        const auto guarda_dos = [&](const std::string& a, const std::string& b, const auto& antes_del_fin) {
            sql::Unidad unidad(transacciones);
            guarda(a);
            guarda(b);
            antes_del_fin();
            unidad.confirma();
        };
        guarda_dos("1", "2", [&] { intermediario->pierde_la_proxima_respuesta(); });
        EXPECT_EQ(guardado(), "1 2/1 2\n");
        EXPECT_EQ(fallo_de([&] { guarda_dos("3", "4", [&] { mata(); }); }).descripcion, nada_guardado);
        EXPECT_EQ(guardado(), "1 2/1 2\n");
        guarda_dos("3", "4", [] {});
        EXPECT_EQ(guardado(), "1 2 3 4/1 2 3 4\n");
    }

    TEST_F(PostgresqlConfirmacion, where_nobody_can_be_asked_nobody_knows)
    {
        guarda("1");
        empieza();
        escribe("2");
        gestion->CommitTrans();
        servidor->detiene();
        EXPECT_THAT(fallo_de([&] { contabilidad->CommitTrans(); }).descripcion,
            testing::EndsWith("No se sabe si los datos llegaron a guardarse: compruébelo."));
        servidor->arranca();
        contabilidad->RollbackTrans();
        EXPECT_EQ(guardado(), "1/1\n");
    }

    TEST_F(PostgresqlConfirmacion, a_session_leaves_one_key_and_sweeps_those_of_long_ago)
    {
        for (const std::string id : { "1", "2", "3" })
            guarda(id);
        EXPECT_EQ(claves(), "2\n") << "its own, and that of who has made the table";
        empieza();
        lee(*gestion, "SELECT COUNT(*) FROM Cargos");
        confirma();
        empieza();
        confirma();
        EXPECT_EQ(claves(), "2\n") << "a read and an empty transaction leave none";
        pide("INSERT INTO propio.confirmaciones (clave, momento) VALUES ('vieja', now() - interval '8 days'),"
             " ('de ayer', now() - interval '1 day')");
        suelta();
        abre(por_intermediario());
        guarda("4");
        guarda("5");
        EXPECT_EQ(
            pide("SELECT COUNT(*), COUNT(*) FILTER (WHERE clave = 'de ayer'), COUNT(*) FILTER (WHERE clave ="
                 " 'vieja') FROM propio.confirmaciones"),
            "4|1|0\n");
    }

    TEST_F(PostgresqlConfirmacion, who_has_no_right_to_the_keys_writes_his_own_all_the_same)
    {
        pide("CREATE ROLE puesto LOGIN; GRANT USAGE ON SCHEMA propio, dbo TO puesto;"
             " GRANT SELECT, INSERT ON propio.cargos, dbo.apuntes, dbo.nombres TO puesto");
        auto con = opciones();
        con.direccion = servidor->direccion("par", "puesto") + intermediario->por_aqui();
        abre(con);
        guarda("1");
        empieza();
        escribe("2");
        gestion->CommitTrans();
        intermediario->pierde_la_proxima_respuesta();
        contabilidad->CommitTrans();
        EXPECT_EQ(guardado(), "1 2/1 2\n");
        EXPECT_EQ(al_ejecutar(*gestion, "DELETE FROM Confirmaciones").categoria, Categoria::otra);
        suelta();
        pide("DROP OWNED BY puesto; DROP ROLE puesto");
    }

    // What makes "not there" final: the key is taken by the question.
    TEST_F(PostgresqlConfirmacion, a_transaction_that_comes_late_cannot_be_committed_any_more)
    {
        EXPECT_EQ(pide("SELECT propio.confirmacion_busca('k-7')"), "0\n");
        EXPECT_EQ(pide("SELECT propio.confirmacion_busca('k-7')"), "0\n") << "asked twice it says the same";
        EXPECT_THAT(pide("INSERT INTO propio.cargos VALUES (7); SELECT propio.confirmacion_anota('k-7', '')"),
            HasSubstr("confirmaciones_pkey"));
        EXPECT_EQ(guardado(), "/\n");
        EXPECT_EQ(pide("SELECT propio.confirmacion_anota('k-8', '')"), "\n");
        EXPECT_EQ(pide("SELECT propio.confirmacion_busca('k-8')"), "1\n");
    }

    TEST_F(PostgresqlConfirmacion, one_that_has_not_ended_is_waited_for)
    {
        empieza();
        escribe("9");
        gestion->Execute("SELECT propio.confirmacion_anota('k-9', '')");
        std::string dicho;
        std::jthread quien([&] { dicho = pide("SELECT propio.confirmacion_busca('k-9')"); });
        while (pide("SELECT COUNT(*) FROM pg_locks WHERE NOT granted") != "1\n")
            std::this_thread::sleep_for(10ms);
        confirma();
        quien.join();
        EXPECT_EQ(dicho, "1\n");
    }

    struct PostgresqlReintento : ParPostgresql {
        std::vector<std::string> motivos;
        std::vector<sql::Linea> avisos;

        Opciones con_reintento(std::function<bool()> sigue)
        {
            suelta();
            auto con = opciones();
            con.sigue_intentando = [this, sigue = std::move(sigue)](const sql::Reintento& como) {
                motivos.push_back(como.motivo);
                return sigue();
            };
            con.avisa = [this](sql::Linea que) { avisos.push_back(que); };
            return con;
        }
    };

    TEST_F(PostgresqlReintento, a_server_that_comes_back_meanwhile_is_worked_on_as_if_nothing_had_been)
    {
        abre(con_reintento([&] {
            if (motivos.size() == 2)
                servidor->arranca();
            return motivos.size() < 99;
        }));
        EXPECT_TRUE(motivos.empty()) << "nobody is asked about a line that is there";
        servidor->detiene();
        EXPECT_EQ(lee(*gestion, "SELECT COUNT(*) FROM Cargos"), "0");
        ASSERT_GE(motivos.size(), 2U);
        EXPECT_THAT(motivos.front(), HasSubstr(".s.PGSQL.5432"));
        EXPECT_EQ(avisos, (std::vector{ sql::Linea::perdida, sql::Linea::reanudada }));
        guarda("1");
        EXPECT_EQ(guardado(), "1/1\n");
    }

    TEST_F(PostgresqlReintento, whoever_is_asked_ends_it_and_the_next_operation_tries_anew)
    {
        abre(con_reintento([&] { return motivos.size() % 3 != 0; }));
        servidor->detiene();
        for (int vez = 1; vez <= 2; ++vez) {
            const auto fallo = fallo_de([&] { lee(*gestion, "SELECT COUNT(*) FROM Cargos"); });
            EXPECT_EQ(fallo.categoria, Categoria::conexion);
            EXPECT_THAT(
                fallo.descripcion, StartsWith("No se puede conectar con el servidor de la base de datos ("));
            EXPECT_EQ(motivos.size(), 3U * static_cast<unsigned>(vez));
        }
        servidor->arranca();
        guarda("1");
        EXPECT_EQ(guardado(), "1/1\n");
    }

    TEST_F(PostgresqlReintento, an_operation_that_begins_meanwhile_is_refused)
    {
        std::string dicho;
        abre(con_reintento([&] {
            dicho = fallo_de([&] { lee(*contabilidad, "SELECT COUNT(*) FROM Apuntes"); }).descripcion;
            if (motivos.size() == 1)
                servidor->arranca();
            return true;
        }));
        servidor->detiene();
        EXPECT_EQ(lee(*gestion, "SELECT COUNT(*) FROM Cargos"), "0");
        EXPECT_EQ(
            dicho, "Se está volviendo a conectar con el servidor de la base de datos: espere a que termine.");
    }

    TEST_F(PostgresqlReintento, a_server_that_accepts_and_says_nothing_is_given_up_for_the_next_one)
    {
        pruebas::Intermediario intermediario(servidor->enchufe());
        auto con = con_reintento([] { return true; });
        const auto mudo = intermediario.por_aqui(); // "&host=…&port=…"
        const auto puerto = mudo.substr(mudo.find("port=") + 5);
        con.direccion = "postgresql://atipicos@/par?host=127.0.0.1,"
            + servidor->enchufe().parent_path().string() + "&port=" + puerto.substr(0, puerto.find('&'))
            + ",5432&sslmode=disable&gssencmode=disable" + "&connect_timeout=2";
        abre(con);
        intermediario.calla();
        mata();
        EXPECT_EQ(lee(*gestion, "SELECT COUNT(*) FROM Cargos"), "0");
        EXPECT_FALSE(motivos.empty()) << "it was asked while it waited";
        suelta();
        intermediario.calla(false);
    }

}
}
