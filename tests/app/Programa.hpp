#pragma once

#include "tests/app/Reclamaciones.hpp"
#include "tests/support/CarpetaTemporal.hpp"

#include <cstdlib>
#include <fstream>
#include <string>
#include <sys/wait.h>

namespace atipicos::pruebas {

struct Ejecucion {
    int estado = 0;
    std::string salida;
    std::string errores;
};

/// The real program, run in a folder of its own.
class Programa {
public:
    CarpetaTemporal carpeta;

    /// `argumentos` as a shell reads them; `entrada` and `antes` likewise.
    Ejecucion operator()(const std::string& argumentos, const std::string& antes = {}) const
    {
        const std::string orden = "cd '" + carpeta.ruta().string() + "' && " + antes
            + " '" ATIPICOS_PROGRAMA "' " + argumentos + " >salida.txt 2>errores.txt </dev/null";
        const int resultado = std::system(orden.c_str());
        return { WIFEXITED(resultado) ? WEXITSTATUS(resultado) : 128 + WTERMSIG(resultado), lee("salida.txt"),
            lee("errores.txt") };
    }

    [[nodiscard]] std::string lee(const std::string& fichero) const { return lee_fichero(carpeta / fichero); }

    void escribe(const std::string& fichero, const std::string& contenido) const
    {
        std::ofstream(carpeta / fichero, std::ios::binary) << contenido;
    }
};

} // namespace atipicos::pruebas
