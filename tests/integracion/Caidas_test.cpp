// The process of a clerk is killed in the middle of his saves, at every statement and at random moments; then
// the database is opened again, checked and worked on: each save is there with its entry, or nothing of it.
// 50 kills in each kind of place; ATIPICOS_PRUEBA_LARGA makes them 2000, which comes to each statement often.
#include "host/comprobacion/Verificacion.hpp"
#include "tests/integracion/Banco.hpp"

#include <gmock/gmock.h>

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

    int caidas() { return std::getenv("ATIPICOS_PRUEBA_LARGA") != nullptr ? 2'000 : 50; }
    constexpr int caidas_por_muestra = 100; ///< then a new company, so that checking it does not take longer

    /// What the process that is killed has told before: saves that were reported to the clerk as done.
    struct Acuse {
        std::atomic<bool> listo = false; ///< the databases are open and the first save begins
        std::atomic<int> nuevos = 0;
        std::atomic<int> cambios = 0;

        static Acuse& compartido()
        {
            void* memoria
                = mmap(nullptr, sizeof(Acuse), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
            if (memoria == MAP_FAILED)
                throw std::runtime_error("no shared memory");
            return *new (memoria) Acuse;
        }
    };

    /// When a process dies: before operation `en` of a save, or, with 0, after so many microseconds of them.
    struct Caida {
        std::size_t en = 0;
        bool de_un_cambio = false; ///< the save is that of a charge that was stored before
        std::chrono::microseconds tras{};
    };

    [[noreturn]] void muere(const bases::Lugar& lugar, const Caida& caida, Acuse& acuse)
    {
        try {
            Banco banco(lugar);
            acuse.listo = true;
            for (bool cambio = false;; cambio = !cambio) {
                static std::string codigo;
                if (caida.en > 0 && cambio == caida.de_un_cambio) {
                    banco.parte->dichas.clear();
                    banco.parte->falla_en = caida.en;
                    banco.parte->al_llegar = [] { static_cast<void>(std::raise(SIGKILL)); };
                }
                const auto guardado = banco.guarda(cambio ? codigo : std::string());
                if (guardado.estado != ResultadoGuardado::Estado::Guardado || !banco.avisos->dichos.empty())
                    _exit(2);
                codigo = guardado.Codigo;
                ++(cambio ? acuse.cambios : acuse.nuevos);
            }
        } catch (const std::exception& error) {
            std::cerr << error.what() << '\n';
            _exit(3);
        }
    }

    struct Caidas : testing::TestWithParam<pruebas::Sede> {
        std::unique_ptr<pruebas::Muestra> muestra;
        Acuse& acuse = Acuse::compartido();
        std::minstd_rand azar{ 20'261'121 };
        int seguros = 0; ///< charges that must be there
        int cambiados = 0; ///< changes that must be there: each leaves the entry of before, which is nobody's
        int al_final = 0; ///< kills whose save was there although it had not been reported
        std::size_t operaciones_de_nuevo = 0;
        std::size_t operaciones_de_cambio = 0;

        void SetUp() override
        {
            if (const auto& falta = GetParam().falta; !falta.empty())
                GTEST_SKIP() << falta;
            Banco banco(GetParam());
            const auto codigo = banco.guarda().Codigo;
            operaciones_de_nuevo = banco.parte->dichas.size();
            banco.parte->dichas.clear();
            banco.guarda(codigo);
            operaciones_de_cambio = banco.parte->dichas.size();
        }

        /// Every second one at a statement, each third one in turn, from the one between both commits of a
        /// new charge on; the others at random.
        Caida elige(int vez)
        {
            if (vez % 2 != 0)
                return { 0, false, std::chrono::microseconds(azar() % 40'000) };
            const auto todas = operaciones_de_nuevo + operaciones_de_cambio;
            const auto lugar = (static_cast<std::size_t>(vez / 2) * 3 + operaciones_de_nuevo - 1) % todas;
            return lugar < operaciones_de_nuevo ? Caida{ lugar + 1, false }
                                                : Caida{ lugar - operaciones_de_nuevo + 1, true };
        }

        void deja_caer(const Caida& caida)
        {
            acuse.listo = false;
            acuse.nuevos = 0;
            acuse.cambios = 0;
            const pid_t hijo = fork();
            if (hijo == 0)
                muere(muestra->lugar(), caida, acuse);
            if (caida.en == 0) {
                while (!acuse.listo && waitpid(hijo, nullptr, WNOHANG) == 0)
                    std::this_thread::sleep_for(std::chrono::microseconds(200));
                std::this_thread::sleep_for(caida.tras);
                kill(hijo, SIGKILL);
            }
            int estado = 0;
            ASSERT_EQ(waitpid(hijo, &estado, 0), hijo);
            ASSERT_TRUE(WIFSIGNALED(estado) && WTERMSIG(estado) == SIGKILL)
                << "it showed an error: " << estado;
            seguros += acuse.nuevos;
            cambiados += acuse.cambios;
        }

        app::Verificacion verifica() const { return app::verifica(bases::abre_bases(muestra->lugar())); }

        void guarda_el_siguiente()
        {
            Banco banco(muestra->lugar());
            ASSERT_EQ(banco.guarda().estado, ResultadoGuardado::Estado::Guardado);
            ASSERT_THAT(banco.titulos(), testing::IsEmpty());
            ++seguros;
        }

        void reabre_comprueba_y_sigue()
        {
            const auto caido = verifica();
            ASSERT_THAT(caido.diferencias, testing::IsEmpty());
            const auto cargos = static_cast<int>(caido.cargos);
            const auto sin_cargo = static_cast<int>(caido.sin_cargo.size());
            ASSERT_GE(cargos, seguros) << "a save that was reported is gone";
            ASSERT_GE(sin_cargo, cambiados) << "a change that was reported is gone";
            ASSERT_LE(cargos - seguros + sin_cargo - cambiados, 1)
                << "more than the one save that was going on";
            al_final += cargos - seguros + sin_cargo - cambiados;
            seguros = cargos;
            cambiados = sin_cargo;
            guarda_el_siguiente();
        }
    };

    TEST_P(Caidas, of_a_save_that_is_killed_there_is_all_or_nothing_and_the_next_one_works)
    {
        const int todas = caidas();
        for (int vez = 0; vez < todas && !HasFatalFailure(); ++vez) {
            SCOPED_TRACE("kill " + std::to_string(vez));
            if (vez % caidas_por_muestra == 0) {
                muestra.reset();
                muestra = GetParam().muestra();
                seguros = cambiados = 0;
            }
            deja_caer(elige(vez));
            if (!HasFatalFailure())
                reabre_comprueba_y_sigue();
        }
        if (!HasFatalFailure())
            std::cout << todas << " kills, half of them at a statement (" << operaciones_de_nuevo
                      << " of a new charge, " << operaciones_de_cambio
                      << " of a changed one): charges without their entry 0, entries without their charge 0; "
                      << al_final << " came after the commit\n";
    }

    INSTANTIATE_TEST_SUITE_P(sedes, Caidas, testing::ValuesIn(pruebas::sedes_sin_odbc()),
        [](const auto& caso) { return caso.param.nombre; });

}
}
