#include "host/terminal/Interrupcion.hpp"

#include <gtest/gtest.h>

#include <poll.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace atipicos::app {
namespace {

    bool se_puede_leer(int descriptor)
    {
        pollfd uno{ descriptor, POLLIN, 0 };
        return poll(&uno, 1, 0) == 1;
    }

    TEST(Interrupcion, notes_the_first_signal_and_gives_up_what_asks)
    {
        for (const int senal : { SIGINT, SIGTERM, SIGHUP }) {
            const Interrupcion interrupcion;
            EXPECT_EQ(Interrupcion::senal(), 0);
            EXPECT_NO_THROW(Interrupcion::comprueba());
            EXPECT_FALSE(se_puede_leer(Interrupcion::descriptor()));
            std::raise(senal);
            EXPECT_EQ(Interrupcion::senal(), senal);
            EXPECT_EQ(Interrupcion::estado(), 128 + senal);
            EXPECT_THROW(Interrupcion::comprueba(), Interrumpido);
            EXPECT_TRUE(se_puede_leer(Interrupcion::descriptor()));
        }
    }

    TEST(Interrupcion, leaves_signals_as_they_were)
    {
        struct sigaction antes { };
        struct sigaction despues { };
        sigaction(SIGTERM, nullptr, &antes);
        {
            const Interrupcion interrupcion;
        }
        sigaction(SIGTERM, nullptr, &despues);
        EXPECT_EQ(antes.sa_handler, despues.sa_handler);
    }

    TEST(Interrupcion, leaves_a_signal_ignored_that_was)
    {
        auto* const antes = std::signal(SIGHUP, SIG_IGN);
        {
            const Interrupcion interrupcion;
            std::raise(SIGHUP);
            EXPECT_EQ(Interrupcion::senal(), 0);
        }
        std::signal(SIGHUP, antes);
    }

    /// How a process ends that gets a signal twice, so long after one another.
    int estado_tras_dos(std::chrono::milliseconds despues)
    {
        const pid_t hijo = fork();
        if (hijo == 0) {
            const Interrupcion interrupcion;
            std::raise(SIGINT);
            std::this_thread::sleep_for(despues);
            std::raise(SIGTERM);
            _exit(Interrupcion::senal());
        }
        int estado = 0;
        waitpid(hijo, &estado, 0);
        return estado;
    }

    TEST(Interrupcion, a_second_signal_ends_the_program_unless_it_comes_with_the_first)
    {
        // A process that is not given its turn between the two takes them for separate ones.
        int juntas = estado_tras_dos(std::chrono::milliseconds(0));
        for (int vez = 0; WIFSIGNALED(juntas) && vez < 20; ++vez)
            juntas = estado_tras_dos(std::chrono::milliseconds(0));
        EXPECT_TRUE(WIFEXITED(juntas));
        EXPECT_EQ(WEXITSTATUS(juntas), SIGINT);
        const int separadas = estado_tras_dos(std::chrono::milliseconds(350));
        EXPECT_TRUE(WIFSIGNALED(separadas));
        EXPECT_EQ(WTERMSIG(separadas), SIGTERM);
    }

    TEST(Interrupcion, ends_the_wait_for_what_a_person_types)
    {
        int tuberia[2];
        ASSERT_EQ(pipe(tuberia), 0);
        const int entrada = dup(STDIN_FILENO);
        dup2(tuberia[0], STDIN_FILENO);
        {
            const Interrupcion interrupcion;
            ASSERT_EQ(write(tuberia[1], "s\n", 2), 2);
            EXPECT_NO_THROW(Interrupcion::espera_entrada());
            char leido[2];
            ASSERT_EQ(read(STDIN_FILENO, leido, 2), 2);
            std::raise(SIGINT);
            EXPECT_THROW(Interrupcion::espera_entrada(), Interrumpido);
        }
        dup2(entrada, STDIN_FILENO);
        for (const int uno : { entrada, tuberia[0], tuberia[1] })
            close(uno);
    }

}
}
