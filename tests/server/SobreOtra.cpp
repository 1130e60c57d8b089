// A host without windows of its own that opens one of the component's over a window of somebody else:
//     SobreOtra LAUNCHER HWND
#include "automation/Componente.hpp"
#include "host/bases/Bases.hpp"
#include "tests/server/EmpresaAnfitriona.hpp"
#include "tests/support/AdoDePrueba.hpp"
#include "tests/support/CarpetaTemporal.hpp"

#include <dlfcn.h>

#include <iostream>

int main(int argc, char** argv)
{
    using namespace atipicos;
    if (argc != 3)
        return 2;
    try {
        const pruebas::CarpetaTemporal carpeta;
        bases::crea_bases(carpeta.ruta(), false);
        const auto las_bases = bases::abre_bases(carpeta.ruta());
        void* const biblioteca = dlopen(ATIPICOS_COMPONENTE, RTLD_NOW | RTLD_LOCAL);
        if (biblioteca == nullptr)
            throw std::runtime_error(dlerror());
        const auto lanzador = automation::crea(
            argv[1], reinterpret_cast<automation::DameClase>(dlsym(biblioteca, "DllGetClassObject")));
        lanzador.pon("EmpresaOrvalin", pruebas::empresa_con_ventanas().valor());
        lanzador.pon("ConexionOrvalin", pruebas::ado_de(las_bases.orvalin).valor());
        lanzador.llama(
            "Show", 1, automation::Anfitrion::crea({ pruebas::con_valor("hWnd", std::stoi(argv[2])) }).get());
        std::cout << "cerrada" << std::endl;
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << std::endl;
        return 1;
    }
}
