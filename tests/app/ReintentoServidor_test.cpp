#include "host/terminal/ReintentoServidor.hpp"

#include "host/terminal/Interrupcion.hpp"

#include <gtest/gtest.h>

#include <csignal>
#include <sstream>

namespace atipicos::app {
namespace {

    using namespace std::chrono_literals;

    struct ReintentoServidor : testing::Test {
        const Interrupcion interrupcion;
        std::ostringstream salida;
        app::ReintentoServidor reintento{ salida };

        bool sigue(std::chrono::milliseconds desde, const std::string& motivo = "nadie escucha")
        {
            return reintento.sigue(desde, 45s, motivo);
        }
        std::string dicho()
        {
            auto texto = salida.str();
            salida.str({});
            return texto;
        }
    };

    constexpr auto perdida = "atipicos: Se ha perdido la conexión con el servidor de la base de datos (nadie "
                             "escucha). Se intenta "
                             "reanudar durante 45 s como mucho; Ctrl-C deja de intentarlo.\n";

    TEST_F(ReintentoServidor, says_at_once_that_the_line_is_lost_then_ever_more_seldom_and_when_it_is_back)
    {
        EXPECT_TRUE(sigue(400ms));
        EXPECT_EQ(dicho(), perdida);
        for (const auto desde : { 900ms, 9'900ms })
            EXPECT_TRUE(sigue(desde));
        EXPECT_EQ(dicho(), "");
        EXPECT_TRUE(sigue(10'100ms));
        EXPECT_TRUE(sigue(20'000ms));
        EXPECT_EQ(dicho(),
            "atipicos: No se puede conectar desde hace 10 s. Se sigue intentando; Ctrl-C deja de "
            "intentarlo.\n");
        EXPECT_TRUE(sigue(21'000ms));
        reintento.reanudada();
        EXPECT_EQ(dicho(),
            "atipicos: No se puede conectar desde hace 21 s. Se sigue intentando; Ctrl-C deja de "
            "intentarlo.\n"
            "atipicos: Conexión reanudada a los 21 s.\n");
        EXPECT_TRUE(sigue(300ms));
        EXPECT_EQ(dicho(), perdida) << "lost once more, it is said once more";
    }

    TEST_F(ReintentoServidor, of_a_line_that_was_opened_at_once_it_says_that_and_no_more)
    {
        EXPECT_TRUE(sigue(250ms, ""));
        reintento.reanudada();
        EXPECT_EQ(dicho(),
            "atipicos: La conexión con el servidor de la base de datos se perdió y se ha reanudado.\n");
    }

    TEST_F(ReintentoServidor, a_server_that_does_not_even_refuse_is_told_after_three_seconds)
    {
        EXPECT_TRUE(sigue(2'900ms, ""));
        EXPECT_EQ(dicho(), "");
        EXPECT_TRUE(sigue(3'000ms, ""));
        EXPECT_EQ(dicho(),
            "atipicos: Se ha perdido la conexión con el servidor de la base de datos. Se intenta reanudar "
            "durante "
            "45 s como mucho; Ctrl-C deja de intentarlo.\n");
    }

    TEST_F(ReintentoServidor, the_limit_ends_it_and_it_is_not_tried_again_by_itself)
    {
        EXPECT_TRUE(sigue(300ms));
        EXPECT_FALSE(reintento.dejado());
        dicho();
        EXPECT_FALSE(sigue(45'000ms, "otra cosa"));
        EXPECT_TRUE(reintento.dejado());
        EXPECT_NE(dicho().find("atipicos: Se ha dejado de intentar a los 45 s.\n"), std::string::npos);
        EXPECT_FALSE(sigue(0ms)) << "the next operation finds it given up";
        EXPECT_EQ(dicho(), "");
        reintento.reanudada();
        EXPECT_FALSE(reintento.dejado());
        EXPECT_TRUE(sigue(100ms));
    }

    TEST_F(ReintentoServidor, a_signal_ends_it)
    {
        EXPECT_TRUE(sigue(300ms));
        dicho();
        std::raise(SIGINT);
        EXPECT_FALSE(sigue(600ms));
        EXPECT_EQ(dicho(), "atipicos: Se ha dejado de intentar a los 0 s.\n");
    }

}
}
