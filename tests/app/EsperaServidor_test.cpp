#include "host/terminal/EsperaServidor.hpp"

#include "host/terminal/Interrupcion.hpp"

#include <gtest/gtest.h>

#include <csignal>
#include <sstream>

namespace atipicos::app {
namespace {

    using namespace std::chrono_literals;

    std::string dice(int segundos)
    {
        return "atipicos: El servidor de la base de datos no contesta desde hace " + std::to_string(segundos)
            + " s. Se le espera; Ctrl-C deja de esperar.\n";
    }

    TEST(EsperaServidor, ends_a_long_wait_when_a_signal_has_come_and_not_a_short_one)
    {
        const Interrupcion interrupcion;
        std::ostringstream salida;
        EsperaServidor espera(salida);
        std::raise(SIGINT);
        EXPECT_TRUE(espera(2'900ms));
        EXPECT_FALSE(espera(3'000ms));
        EXPECT_EQ(salida.str(), "");
    }

    TEST(EsperaServidor, of_a_driver_it_says_what_ends_it_and_does_not_hold_its_tongue_after_a_signal)
    {
        const Interrupcion interrupcion;
        std::ostringstream salida;
        EsperaServidor espera(salida, EsperaServidor::Quien::controlador);
        std::raise(SIGINT);
        EXPECT_TRUE(espera(2'900ms));
        EXPECT_TRUE(espera(7'500ms));
        EXPECT_EQ(salida.str(),
            "atipicos: El servidor de la base de datos no contesta desde hace 7 s. Se le espera; pulsar "
            "Ctrl-C "
            "dos veces termina el programa.\n");
    }

    TEST(EsperaServidor, says_nothing_of_an_ordinary_wait_and_then_ever_more_seldom)
    {
        const Interrupcion interrupcion; // and no signal of a test before it
        std::ostringstream salida;
        EsperaServidor espera(salida);
        for (const auto callado : { 250ms, 2'900ms })
            EXPECT_TRUE(espera(callado));
        EXPECT_EQ(salida.str(), "");
        for (const auto callado : { 3'100ms, 4'000ms, 6'150ms, 6'250ms, 12'000ms, 12'600ms })
            EXPECT_TRUE(espera(callado));
        EXPECT_EQ(salida.str(), dice(3) + dice(6) + dice(12));
        salida.str({});
        EXPECT_TRUE(espera(500ms)); // it has answered since
        EXPECT_TRUE(espera(3'300ms));
        EXPECT_EQ(salida.str(), dice(3));
    }

}
}
