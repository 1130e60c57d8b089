#include "tests/support/Ventanas.hpp"

#include "tests/support/Aborto.hpp"
#include "tests/support/CarpetaTemporal.hpp"

#include <QApplication>
#include <QtTest>

#include <iostream>
#include <map>
#include <string>
#include <utility>

namespace atipicos::prueba {

namespace {

    using Clases = std::map<std::string, std::function<std::unique_ptr<QObject>()>>;

    Clases& clases()
    {
        static Clases todas;
        return todas;
    }

}

ClaseDeVentanas::ClaseDeVentanas(const char* nombre, std::function<std::unique_ptr<QObject>()> nueva)
{
    clases().emplace(nombre, std::move(nueva));
}

}

int main(int argc, char** argv)
{
    using atipicos::prueba::clases;
    const auto clase = argc < 2 ? clases().end() : clases().find(argv[1]);
    if (clase == clases().end()) {
        std::cerr << "The classes of this program:\n";
        for (const auto& [nombre, nueva] : clases())
            std::cerr << "  " << nombre << '\n';
        return EXIT_FAILURE;
    }
    // Settings and drafts of its own: others run beside it.
    const atipicos::pruebas::CarpetaTemporal hogar;
    for (const auto* lugar : { "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME" })
        qputenv(lugar, QByteArray::fromStdString(hogar.ruta().string()));
    argv[1] = argv[0]; // the rest is for QTest
    const QApplication aplicacion(--argc, ++argv);
    atipicos::pruebas::di_donde_al_abortar([&] { return clase->first; });
    const auto pruebas = clase->second();
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(pruebas.get(), argc, argv);
}
