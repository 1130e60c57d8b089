#pragma once

#include <QObject>

#include <functional>
#include <memory>

/// The program of a folder's window tests: PROGRAM CLASS [options of QTest] runs one class.
namespace atipicos::prueba {

/// Makes a class of tests known to the program, under its name.
class ClaseDeVentanas {
public:
    ClaseDeVentanas(const char* nombre, std::function<std::unique_ptr<QObject>()> nueva);
};

}

/// Stands at the end of the source of each class, instead of a main function.
#define ATIPICOS_PRUEBA_VENTANAS(Clase)                                                                      \
    static const atipicos::prueba::ClaseDeVentanas clase_##Clase(                                            \
        #Clase, [] { return std::make_unique<Clase>(); });
