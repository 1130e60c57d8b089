// The program while the server that is written to dies and its standby takes its place.
#include "tests/app/Programa.hpp"
#include "tests/support/ServidorConReserva.hpp"
#include "tests/support/ServidorPostgresql.hpp"

#include <gmock/gmock.h>

#include <chrono>
#include <cstdlib>
#include <future>
#include <memory>
#include <thread>

namespace atipicos {
namespace {

    using testing::EndsWith;
    using testing::HasSubstr;
    using testing::Not;
    using namespace std::chrono_literals;

    constexpr int reclamaciones_del_relevo = 400;

    struct RelevoDelPrograma : testing::Test {
        static inline std::unique_ptr<pruebas::ServidorConReserva> servidor;
        pruebas::Programa programa;

        static void TearDownTestSuite() { servidor.reset(); }

        void SetUp() override
        {
            if (const auto falta = pruebas::ServidorPostgresql::falta(); !falta.empty())
                GTEST_SKIP() << falta;
            if (servidor)
                return;
            servidor = std::make_unique<pruebas::ServidorConReserva>();
            servidor->crea_base("empresa");
            ASSERT_EQ(programa("crear" + conexion()).estado, 0);
        }

        static std::string conexion(const std::string& mas = {})
        {
            return " --conexion '" + servidor->direccion("empresa") + mas + "' ";
        }
        static int cuantos(const std::string& sql)
        {
            return std::atoi(servidor->psql("empresa", sql).c_str());
        }
        static int registrados(const std::string& referencia)
        {
            return cuantos(
                "SELECT COUNT(*) FROM orvalin.importaciones WHERE referencia LIKE '" + referencia + "-%'");
        }

        std::string fichero(const std::string& nombre) const
        {
            std::string filas = pruebas::cabecera;
            for (int i = 1; i <= reclamaciones_del_relevo; ++i)
                filas += nombre + "-" + std::to_string(i) + ";" + std::to_string(1 + i % 4)
                    + ";104;17/03/2026;Palé dañado;N;1006;Lata abollada;" + std::to_string(1 + i % 7)
                    + ";2,35;rota\n";
            programa.escribe(nombre + ".csv", filas);
            return nombre + ".csv";
        }
        [[nodiscard]] auto empieza(const std::string& argumentos) const
        {
            return std::async(std::launch::async, [this, argumentos] { return programa(argumentos); });
        }
        /// Whether it comes to that before the command has ended.
        static bool llega_a_haber(
            int cuantas, const std::string& referencia, const std::future<pruebas::Ejecucion>& mientras)
        {
            while (registrados(referencia) < cuantas)
                if (mientras.wait_for(5ms) == std::future_status::ready)
                    return false;
            return true;
        }
    };

    TEST_F(RelevoDelPrograma, who_writes_is_led_to_the_server_that_can_be_written_without_asking_for_it)
    {
        const auto primario = servidor->enchufe_del_primario().parent_path();
        const auto sin_decirlo = " --conexion 'postgresql://atipicos@/empresa?host="
            + servidor->carpeta_de_la_reserva().string() + "," + primario.string() + "' ";
        const auto dicho = programa("accesos ines 3" + sin_decirlo);
        EXPECT_EQ(dicho.estado, 0) << dicho.errores;
        EXPECT_THAT(programa("accesos" + conexion()).salida, HasSubstr("ines"));
    }

    TEST_F(RelevoDelPrograma, registrar_goes_on_at_the_other_server_and_records_each_claim_once)
    {
        const int de_antes = cuantos("SELECT COUNT(*) FROM orvalin.proveedores_cargos_atipicos");
        auto registro = empieza("registrar " + fichero("RELEVO") + conexion());
        ASSERT_TRUE(llega_a_haber(40, "RELEVO", registro)) << registro.get().errores;
        servidor->mata();
        std::this_thread::sleep_for(1s);
        servidor->asciende();
        servidor->repone();
        const auto dicho = registro.get();
        EXPECT_EQ(dicho.estado, 0) << dicho.errores;
        EXPECT_THAT(dicho.salida, EndsWith("400 registradas, 0 ya lo estaban, 0 rechazadas.\n"));
        EXPECT_THAT(dicho.errores,
            HasSubstr("atipicos: Se ha perdido la conexión con el servidor de la base de datos ("));
        EXPECT_THAT(dicho.errores,
            HasSubstr("Se intenta reanudar durante 120 s como mucho; Ctrl-C deja de intentarlo."));
        EXPECT_THAT(dicho.errores, HasSubstr("atipicos: Conexión reanudada a los "));
        EXPECT_THAT(dicho.errores, Not(HasSubstr("[error]")));
        EXPECT_EQ(registrados("RELEVO"), 400);
        EXPECT_EQ(cuantos("SELECT COUNT(*) FROM orvalin.proveedores_cargos_atipicos"), de_antes + 400);
        const auto verificado = programa("verificar" + conexion());
        EXPECT_EQ(verificado.estado, 0) << verificado.salida;
        EXPECT_THAT(programa("registrar RELEVO.csv" + conexion()).salida,
            EndsWith("0 registradas, 400 ya lo estaban, 0 rechazadas.\n"));
    }

    TEST_F(RelevoDelPrograma, verificar_begins_again_at_the_other_server)
    {
        // A lock holds it up in the middle of its reading; the one who holds it dies with the server.
        auto cerrojo = std::async(std::launch::async,
            [] { servidor->psql("empresa", "BEGIN; LOCK TABLE dbo.previsiones; SELECT pg_sleep(60)"); });
        while (cuantos("SELECT COUNT(*) FROM pg_locks WHERE mode = 'AccessExclusiveLock' AND granted"
                       " AND relation = 'dbo.previsiones'::regclass")
            == 0)
            std::this_thread::sleep_for(5ms);
        auto verificacion = empieza("verificar" + conexion());
        while (cuantos("SELECT COUNT(*) FROM pg_locks WHERE NOT granted") == 0)
            std::this_thread::sleep_for(5ms);
        servidor->mata();
        servidor->asciende();
        servidor->repone();
        const auto dicho = verificacion.get();
        cerrojo.get();
        EXPECT_EQ(dicho.estado, 0) << dicho.errores;
        EXPECT_THAT(dicho.salida, HasSubstr(": sin diferencias.\n"));
        EXPECT_THAT(dicho.errores, HasSubstr("Conexión"));
    }

    TEST_F(RelevoDelPrograma, a_server_that_nobody_replaces_is_given_up_after_the_time_that_was_told)
    {
        auto registro = empieza("registrar " + fichero("RELEVADA") + conexion("&reintento=2"));
        ASSERT_TRUE(llega_a_haber(10, "RELEVADA", registro)) << registro.get().errores;
        servidor->mata();
        const auto dicho = registro.get();
        EXPECT_EQ(dicho.estado, 1);
        EXPECT_THAT(dicho.errores, HasSubstr("Se intenta reanudar durante 2 s como mucho"));
        EXPECT_THAT(dicho.errores, HasSubstr("atipicos: Se ha dejado de intentar a los 2 s.\n"));
        EXPECT_THAT(dicho.salida, HasSubstr(" registradas, 0 ya lo estaban, "));
        EXPECT_THAT(dicho.errores, HasSubstr(" por registrar: registre el mismo fichero otra vez.\n"));
        servidor->asciende();
        servidor->repone();
        EXPECT_EQ(programa("registrar RELEVADA.csv" + conexion()).estado, 0);
        EXPECT_EQ(registrados("RELEVADA"), 400);
        EXPECT_EQ(programa("verificar" + conexion()).estado, 0);
    }

}
}
