#include "host/terminal/MsgBoxConsola.hpp"

#include <gtest/gtest.h>

#include <sstream>

namespace atipicos::app {
namespace {

    TEST(MsgBoxConsola, writes_icon_title_and_text_and_answers_with_the_default_button)
    {
        std::ostringstream salida;
        MsgBoxConsola avisos(salida);
        EXPECT_EQ(avisos.mostrar({ "¿Seguro?", "Confirmar", Icono::pregunta, Botones::SiNo, Respuesta::No }),
            Respuesta::No);
        EXPECT_EQ(avisos.mostrar({ "[7] roto", "clsX:Y", Icono::critico }), Respuesta::Aceptar);
        EXPECT_EQ(salida.str(), "[pregunta] Confirmar: ¿Seguro?\n[error] clsX:Y: [7] roto\n");
    }

    TEST(MsgBoxConsola, breaks_lines_where_the_text_does)
    {
        std::ostringstream salida;
        MsgBoxConsola avisos(salida);
        avisos.mostrar({ "uno\r\ndos\rtres", "t", Icono::informacion });
        EXPECT_EQ(salida.str(), "[información] t: uno\ndos\ntres\n");
    }

    TEST(MsgBoxConsola, counts_errors_and_warnings)
    {
        std::ostringstream salida;
        MsgBoxConsola avisos(salida);
        for (const auto icono : { Icono::critico, Icono::exclamacion, Icono::informacion, Icono::pregunta })
            avisos.mostrar({ "x", "t", icono });
        EXPECT_EQ(avisos.errores(), 2);
    }

}
}
