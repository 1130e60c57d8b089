// The server that is written to is killed again and again while eight workstations save charges, and its
// synchronous standby takes its place: what was told to be saved is there, once, with its entry. 3 kills;
// ATIPICOS_PRUEBA_LARGA makes them 50.
#include "host/comprobacion/Verificacion.hpp"
#include "tests/integracion/Banco.hpp"
#include "tests/support/ServidorConReserva.hpp"

#include <gmock/gmock.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <new>
#include <random>
#include <sys/mman.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace atipicos {
namespace {

    using pruebas::Banco;
    using namespace std::chrono_literals;

    constexpr std::size_t puestos_del_relevo = 8;
    constexpr std::array<std::int16_t, 4> almacenes_del_relevo{ 1, 2, 3, 4 };

    int muertes() { return std::getenv("ATIPICOS_PRUEBA_LARGA") != nullptr ? 50 : 3; }

    /// What each workstation has been told; it saves one charge after the other, by number.
    struct PuestoEnRelevo {
        std::atomic<int> dichos = 0; ///< saves that were reported as done, one after the other
        std::atomic<int> sin_guardar = 0; ///< that were told to have left nothing, and were repeated
        std::atomic<int> sin_saber = 0; ///< of which nobody could say
        std::atomic<bool> listo = false;
    };

    struct Oficina {
        std::array<PuestoEnRelevo, puestos_del_relevo> puestos;
        std::atomic<bool> cierra = false;

        static Oficina& compartida()
        {
            void* memoria
                = mmap(nullptr, sizeof(Oficina), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
            if (memoria == MAP_FAILED)
                throw std::runtime_error("no shared memory");
            return *new (memoria) Oficina;
        }
    };

    std::string observaciones_de(std::size_t puesto, int numero)
    {
        return "Puesto " + std::to_string(puesto) + ", palé " + std::to_string(numero);
    }

    bool dice(const Banco& banco, const char* que)
    {
        return std::any_of(banco.avisos->dichos.begin(), banco.avisos->dichos.end(),
            [&](const Mensaje& uno) { return uno.texto.find(que) != std::string::npos; });
    }

    /// Saves one until it is told to be saved, as a person does who is told to repeat it.
    void guarda_uno(Banco& banco, PuestoEnRelevo& puesto, std::size_t cual, int numero)
    {
        for (;;) {
            banco.avisos->dichos.clear();
            const auto guardado = banco.guarda(
                {}, almacenes_del_relevo[cual % almacenes_del_relevo.size()], observaciones_de(cual, numero));
            if (guardado.estado == ResultadoGuardado::Estado::Guardado && banco.avisos->dichos.empty())
                return;
            if (dice(banco, "No se sabe si")) { // he looks it up, as he is told to
                ++puesto.sin_saber;
                if (CLng(banco.consulta("SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos WHERE Observ ='"
                        + observaciones_de(cual, numero) + "'"))
                    > 0)
                    return;
                continue;
            }
            if (!dice(banco, "no se ha guardado nada") && !dice(banco, "Se ha perdido la conexión"))
                throw std::runtime_error("another error: "
                    + (banco.avisos->dichos.empty() ? "" : banco.avisos->dichos.front().texto));
            ++puesto.sin_guardar;
        }
    }

    [[noreturn]] void trabaja_el_puesto(const bases::Lugar& lugar, Oficina& oficina, std::size_t cual)
    {
        try {
            auto& puesto = oficina.puestos[cual];
            Banco banco(bases::abre_bases(lugar,
                { .espera = std::chrono::seconds(30),
                    .sigue_intentando = [](const sql::Reintento&) { return true; } }));
            puesto.listo = true;
            while (!oficina.cierra) {
                guarda_uno(banco, puesto, cual, puesto.dichos + 1);
                ++puesto.dichos;
            }
            _exit(0);
        } catch (const std::exception& error) {
            std::cerr << "workstation " << cual << ": " << error.what() << '\n';
            _exit(3);
        }
    }

    struct Relevo : testing::Test {
        std::unique_ptr<pruebas::ServidorConReserva> servidor;
        Oficina& oficina = Oficina::compartida();
        std::minstd_rand azar{ 20'261'122 };
        std::vector<pid_t> procesos;

        void SetUp() override
        {
            if (const auto falta = pruebas::ServidorPostgresql::falta(); !falta.empty())
                GTEST_SKIP() << falta;
            servidor = std::make_unique<pruebas::ServidorConReserva>();
            servidor->crea_base("empresa");
            bases::crea_bases(lugar(), false);
        }
        void TearDown() override
        {
            for (const auto proceso : procesos)
                kill(proceso, SIGKILL);
        }

        [[nodiscard]] bases::Lugar lugar() const
        {
            return bases::Lugar::de_conexion(servidor->direccion("empresa"));
        }
        void abre_la_oficina()
        {
            for (std::size_t cual = 0; cual < puestos_del_relevo; ++cual) {
                const pid_t hijo = fork();
                if (hijo == 0)
                    trabaja_el_puesto(lugar(), oficina, cual);
                procesos.push_back(hijo);
            }
            for (auto& puesto : oficina.puestos)
                while (!puesto.listo)
                    std::this_thread::sleep_for(5ms);
        }
        void cierra_la_oficina()
        {
            oficina.cierra = true;
            for (const auto proceso : std::exchange(procesos, {})) {
                int estado = -1;
                waitpid(proceso, &estado, 0);
                EXPECT_TRUE(WIFEXITED(estado) && WEXITSTATUS(estado) == 0) << "a workstation ended by itself";
            }
        }
        [[nodiscard]] int dichos() const
        {
            int todos = 0;
            for (const auto& puesto : oficina.puestos)
                todos += puesto.dichos;
            return todos;
        }
        /// The other takes its place, and it comes back as its standby.
        void muere_y_se_releva()
        {
            const int antes = dichos();
            while (dichos() < antes + 8) // they have work at hand
                std::this_thread::sleep_for(2ms);
            std::this_thread::sleep_for(std::chrono::microseconds(azar() % 50'000));
            servidor->mata();
            servidor->asciende();
            servidor->repone();
        }
        [[nodiscard]] int cuantos(const std::string& sql) const
        {
            return std::atoi(servidor->psql("empresa", sql).c_str());
        }
    };

    TEST_F(Relevo,
        of_what_eight_workstations_were_told_nothing_is_lost_nothing_is_there_twice_and_all_has_its_entry)
    {
        const int todas = muertes();
        const int de_antes = cuantos("SELECT COUNT(*) FROM orvalin.proveedores_cargos_atipicos");
        abre_la_oficina();
        for (int vez = 0; vez < todas; ++vez)
            muere_y_se_releva();
        cierra_la_oficina();

        int perdidos = 0;
        int sin_guardar = 0;
        int sin_saber = 0;
        const std::string tabla = "orvalin.proveedores_cargos_atipicos";
        for (std::size_t cual = 0; cual < puestos_del_relevo; ++cual) {
            const auto& puesto = oficina.puestos[cual];
            sin_guardar += puesto.sin_guardar;
            sin_saber += puesto.sin_saber;
            perdidos += puesto.dichos
                - cuantos("SELECT COUNT(DISTINCT observ) FROM " + tabla + " WHERE observ LIKE 'Puesto "
                    + std::to_string(cual) + ",%'");
        }
        const int repetidos = cuantos(
            "SELECT COUNT(*) - COUNT(DISTINCT observ) FROM " + tabla + " WHERE observ LIKE 'Puesto %'");
        const int guardados = cuantos("SELECT COUNT(*) FROM " + tabla) - de_antes;
        const auto verificado = app::verifica(bases::abre_bases(lugar()));
        EXPECT_EQ(perdidos, 0);
        EXPECT_EQ(repetidos, 0);
        EXPECT_EQ(guardados, dichos());
        EXPECT_THAT(verificado.diferencias, testing::IsEmpty());
        EXPECT_THAT(verificado.sin_asiento, testing::IsEmpty());
        EXPECT_EQ(sin_saber, 0);
        std::cout << todas << " servidores muertos, " << puestos_del_relevo << " puestos, " << guardados
                  << " cargos guardados; " << sin_guardar
                  << " repetidos porque se dijo que no se habían guardado.\n"
                  << "Dichos y perdidos: " << perdidos << ". Dos veces: " << repetidos
                  << ". Sin asiento: " << verificado.sin_asiento.size() << ". Sin saber: " << sin_saber
                  << ".\n";
    }

}
}
