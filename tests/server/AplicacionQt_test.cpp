// The Qt of a host that has none: made for the first window or box, in Spanish, and only where there is a
// screen.
#include "server/AplicacionQt.hpp"

#include "runtime/Error.hpp"
#include "server/Avisos.hpp"
#include "server/Clase.hpp"

#include <gmock/gmock.h>

#include <QApplication>
#include <QLocale>
#include <QTimer>
#include <QWidget>

#include <cstdlib>

namespace atipicos::server {
namespace {

    constexpr const char* de_pantallas[] = { "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM" };

    /// Closes the boxes that open from now on.
    void cierra_las_cajas()
    {
        auto* reloj = new QTimer(QCoreApplication::instance());
        QObject::connect(reloj, &QTimer::timeout, reloj, [] {
            if (auto* caja = QApplication::activeModalWidget())
                caja->close();
        });
        reloj->start(1);
    }

    TEST(AplicacionQt, is_made_for_the_first_box_in_spanish_where_there_is_a_screen)
    {
        for (const char* variable : de_pantallas)
            unsetenv(variable);
        EXPECT_FALSE(hay_pantalla());
        EXPECT_EQ(avisos_con_ventanas(), nullptr);
        EXPECT_THROW(aplicacion(), Error);
        setenv("QT_QPA_PLATFORM", "", 1);
        EXPECT_FALSE(hay_pantalla()) << "an empty one names none";
        EXPECT_FALSE(hay_ventanas());

        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        ASSERT_TRUE(hay_pantalla());
        const auto avisos = avisos_con_ventanas();
        ASSERT_NE(avisos, nullptr);
        EXPECT_EQ(QCoreApplication::instance(), nullptr) << "nothing has been shown";
        qAddPreRoutine(cierra_las_cajas);
        EXPECT_EQ(avisos->mostrar({ "¿Sigue?", "Prueba", Icono::pregunta, Botones::SiNo, Respuesta::No }),
            Respuesta::No);
        EXPECT_TRUE(hay_ventanas());
        EXPECT_EQ(QLocale().name(), QStringLiteral("es_ES"));
        EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Cancelar"));
        EXPECT_EQ(QCoreApplication::arguments(), QStringList{ QStringLiteral("QVORComprasAtip") });
        const auto* nuestra = QCoreApplication::instance();
        aplicacion();
        EXPECT_EQ(QCoreApplication::instance(), nuestra);
    }

}
}
