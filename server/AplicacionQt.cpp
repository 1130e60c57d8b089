#include "server/AplicacionQt.hpp"

#include "runtime/Error.hpp"
#include "server/Clase.hpp"

#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>

#include <cstdlib>

namespace atipicos::server {

namespace {

    constexpr std::int32_t sin_pantalla = 1001;

    bool abiertas = false; ///< windows of ours: they, and what Qt keeps of them, outlive any of our objects

    void crea_aplicacion()
    {
        static int argc = 1;
        static char nombre[] = "QVORComprasAtip";
        static char* argv[] = { nombre, nullptr };
        static auto* const nuestra = new QApplication(argc, argv); // never destroyed
        QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
        auto* textos = new QTranslator(nuestra);
        // Beside Qt's libraries; where those are part of this one, in it.
        if (textos->load(QStringLiteral("qtbase_es"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))
            || textos->load(QStringLiteral(":/atipicos/qtbase_es.qm")))
            QApplication::installTranslator(textos);
    }

}

bool hay_pantalla()
{
    if (QCoreApplication::instance() != nullptr)
        return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
#ifdef _WIN32
    return true;
#else
    for (const auto* variable : { "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM" })
        if (const char* valor = std::getenv(variable); valor != nullptr && *valor != '\0')
            return true;
    return false;
#endif
}

void aplicacion()
{
    if (!hay_pantalla())
        throw Error(sin_pantalla, "QVORComprasAtip", "No hay pantalla en la que abrir la ventana.");
    if (QCoreApplication::instance() == nullptr)
        crea_aplicacion();
    abiertas = true;
}

bool hay_ventanas() noexcept { return abiertas; }

} // namespace atipicos::server
