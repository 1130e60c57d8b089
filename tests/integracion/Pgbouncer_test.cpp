// The component through pgbouncer, which gives the sessions of a server to one client after the other: for as
// long as a client is connected, or from one transaction to the next.
#include "tests/support/Pgbouncer.hpp"

#include "host/bases/Acceso.hpp"
#include "host/comprobacion/Verificacion.hpp"
#include "tests/integracion/Banco.hpp"

#include <gmock/gmock.h>

#include <iostream>
#include <sys/wait.h>
#include <unistd.h>

namespace atipicos {
namespace {

    using pruebas::Banco;
    using testing::HasSubstr;

    constexpr int puestos_a_la_vez = 4;
    constexpr int cargos_de_cada_uno = 6;
    constexpr int sesiones_de_pgbouncer = 2;
    constexpr std::int16_t almacen_sin_empezar = 3; ///< whose counter does not exist yet

    struct ConPgbouncer : testing::Test {
        std::unique_ptr<pruebas::Pgbouncer> repartidor;
        bases::Lugar directo{ std::filesystem::path() };

        void SetUp() override
        {
            if (const auto falta = pruebas::Pgbouncer::falta(); !falta.empty())
                GTEST_SKIP() << falta;
            servidor().crea_base("pool");
            directo = bases::Lugar::de_conexion(servidor().direccion("pool"));
            bases::crea_bases(directo, false);
        }
        void TearDown() override
        {
            repartidor.reset();
            if (pruebas::Pgbouncer::falta().empty())
                servidor().borra_base("pool");
        }

        static pruebas::ServidorPostgresql& servidor() { return pruebas::servidor_postgresql(); }
        void reparte(const std::string& modo)
        {
            repartidor = std::make_unique<pruebas::Pgbouncer>(servidor(), modo, sesiones_de_pgbouncer);
        }
        bases::Lugar lugar(const std::string& mas = {}, const std::string& usuario = "atipicos") const
        {
            return bases::Lugar::de_conexion(repartidor->direccion("pool", usuario) + mas);
        }
    };

    /// Saves charges in a process of its own; its status is 0 when all went well.
    pid_t trabaja_en(const bases::Lugar& lugar)
    {
        const pid_t hijo = fork();
        if (hijo != 0)
            return hijo;
        bool bien = true;
        try {
            Banco banco(lugar);
            for (int i = 0; i < cargos_de_cada_uno; ++i)
                bien = banco.guarda({}, almacen_sin_empezar).estado == ResultadoGuardado::Estado::Guardado
                    && bien;
            for (const auto& aviso : banco.avisos->dichos)
                std::cerr << aviso.titulo << ": " << aviso.texto << '\n';
            bien = bien && banco.avisos->dichos.empty();
        } catch (const std::exception& error) {
            std::cerr << error.what() << '\n';
            bien = false;
        }
        _exit(bien ? 0 : 1);
    }

    /// Several workstations at once, and what they leave: every charge with its entry, none twice, no gap.
    void expect_trabajan(const bases::Lugar& lugar, const bases::Lugar& directo)
    {
        std::vector<pid_t> hijos;
        for (int i = 0; i < puestos_a_la_vez; ++i)
            hijos.push_back(trabaja_en(lugar));
        for (const auto hijo : hijos) {
            int estado = 0;
            waitpid(hijo, &estado, 0);
            EXPECT_TRUE(WIFEXITED(estado) && WEXITSTATUS(estado) == 0);
        }
        const auto bases = bases::abre_bases(directo);
        const auto resultado = app::verifica(bases);
        EXPECT_EQ(resultado.cargos, static_cast<std::size_t>(puestos_a_la_vez * cargos_de_cada_uno));
        EXPECT_THAT(resultado.diferencias, testing::IsEmpty());
        const auto rs = bases.orvalin->CreateRecordset();
        rs->Open("SELECT MIN(Codigo) AS primero, MAX(Codigo) AS ultimo FROM Proveedores_Cargos_Atipicos",
            adodb::CursorType::Static, adodb::LockType::ReadOnly);
        EXPECT_EQ(CStr(rs->Fields("primero").Value()), "AT260001");
        EXPECT_EQ(CStr(rs->Fields("ultimo").Value()), "AT260024");
    }

    std::string valor(const bases::Bases& bases, const char* sql)
    {
        const auto rs = bases.orvalin->CreateRecordset();
        rs->Open(sql, adodb::CursorType::Static, adodb::LockType::ReadOnly);
        return CStr(rs->Fields(std::size_t{ 0 }).Value());
    }

    TEST_F(ConPgbouncer, that_gives_a_session_to_each_client_everything_works_as_without)
    {
        reparte("session");
        {
            const auto bases = bases::abre_bases(lugar(), { .solo_lectura = true });
            EXPECT_EQ(valor(bases, "SELECT current_setting('datestyle')"), "ISO, DMY");
            EXPECT_EQ(valor(bases, "SELECT current_setting('search_path')"), "orvalin");
            EXPECT_EQ(valor(bases, "SELECT current_setting('lock_timeout')"), "5s");
            EXPECT_EQ(valor(bases, "SELECT current_setting('statement_timeout')"), "2min");
            EXPECT_EQ(valor(bases, "SELECT current_setting('default_transaction_read_only')"), "on");
        }
        EXPECT_EQ(
            valor(bases::abre_bases(lugar()), "SELECT current_setting('default_transaction_read_only')"),
            "off")
            << "of the client before nothing is left";
        servidor().psql("pool", "DROP ROLE IF EXISTS ana; CREATE ROLE ana LOGIN");
        std::string dicho;
        ASSERT_EQ(
            servidor().guion("pool", ATIPICOS_FUENTES "/host/sql/permisos_postgresql.sql", "atipicos", dicho),
            0)
            << dicho;
        servidor().psql("pool", "GRANT atipicos_puesto TO ana");
        bases::asigna_acceso(bases::abre_bases(directo), { "ana", 1 });
        expect_trabajan(lugar({}, "ana"), directo);
        EXPECT_EQ(servidor().psql("pool", "SELECT DISTINCT Login FROM orvalin.Historial"), "ana\n");
    }

    TEST_F(ConPgbouncer, that_gives_one_for_a_transaction_wants_its_settings_from_the_database)
    {
        reparte("transaction");
        try {
            static_cast<void>(bases::abre_bases(lugar("&preparadas=no")));
            FAIL() << "dates would be read month first";
        } catch (const Error& error) {
            EXPECT_THAT(error.descripcion(),
                HasSubstr("El repartidor de conexiones no ha pasado los ajustes de la sesión, y esta base de "
                          "datos no los tiene."));
        }
    }

    TEST_F(ConPgbouncer,
        that_gives_one_for_a_transaction_works_with_settings_in_the_database_and_nothing_prepared)
    {
        servidor().psql("pool",
            "ALTER DATABASE pool SET search_path TO orvalin; ALTER DATABASE pool SET datestyle TO 'ISO, DMY';"
            "ALTER DATABASE pool SET lock_timeout TO '5s'; ALTER DATABASE pool SET statement_timeout TO "
            "'2min'");
        reparte("transaction");
        expect_trabajan(lugar("&preparadas=no"), directo);
        const auto por_aqui = bases::abre_bases(lugar("&preparadas=no"));
        EXPECT_THAT(app::verifica(por_aqui).diferencias, testing::IsEmpty());
    }

}
}
