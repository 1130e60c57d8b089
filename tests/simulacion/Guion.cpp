#include "tests/simulacion/Guion.hpp"

#include <algorithm>
#include <array>
#include <random>

namespace atipicos::pruebas {

namespace {

    struct Oficio {
        Accion accion;
        const char* nombre;
        unsigned peso; ///< of a hundred steps
    };
    constexpr std::array oficios{ Oficio{ Accion::linea, "linea", 40 }, Oficio{ Accion::cambia, "cambia", 6 },
        Oficio{ Accion::quita, "quita", 5 }, Oficio{ Accion::comenta, "comenta", 4 },
        Oficio{ Accion::cancela, "cancela", 3 }, Oficio{ Accion::guarda, "guarda", 12 },
        Oficio{ Accion::renuncia, "renuncia", 2 }, Oficio{ Accion::abre, "abre", 5 },
        Oficio{ Accion::elimina, "elimina", 6 }, Oficio{ Accion::lista, "lista", 6 },
        Oficio{ Accion::detalle, "detalle", 6 }, Oficio{ Accion::imprime, "imprime", 2 },
        Oficio{ Accion::pierde, "pierde", 3 } };

    Accion sortea(std::uint32_t tirada)
    {
        unsigned resto = tirada % 100;
        for (const auto& oficio : oficios) {
            if (resto < oficio.peso)
                return oficio.accion;
            resto -= oficio.peso;
        }
        return Accion::linea; // the weights add up to a hundred
    }

}

Guion genera(std::uint32_t semilla, std::size_t pasos)
{
    std::mt19937 azar(semilla); // its sequence is the same everywhere
    Guion guion;
    guion.reserve(pasos);
    while (guion.size() < pasos) {
        Paso paso;
        paso.accion = sortea(static_cast<std::uint32_t>(azar()));
        paso.quien = azar() % oficinistas;
        paso.a = static_cast<std::uint32_t>(azar());
        paso.b = static_cast<std::uint32_t>(azar());
        paso.c = static_cast<std::uint32_t>(azar());
        guion.push_back(paso);
    }
    return guion;
}

std::string texto(const Paso& paso)
{
    const auto oficio = std::find_if(
        oficios.begin(), oficios.end(), [&](const auto& uno) { return uno.accion == paso.accion; });
    return std::string(oficio->nombre) + " " + std::to_string(paso.quien) + " " + std::to_string(paso.a) + " "
        + std::to_string(paso.b) + " " + std::to_string(paso.c);
}

std::string texto(const Guion& guion)
{
    std::string todo;
    for (const auto& paso : guion)
        todo += texto(paso) + "\n";
    return todo;
}

Guion reduce(Guion guion, const std::function<bool(const Guion&)>& falla)
{
    for (std::size_t trozo = std::max<std::size_t>(guion.size() / 2, 1); trozo > 0;) {
        bool menos = false;
        for (std::size_t desde = 0; desde < guion.size();) {
            const auto primero = guion.begin() + static_cast<std::ptrdiff_t>(desde);
            const auto ultimo
                = guion.begin() + static_cast<std::ptrdiff_t>(std::min(desde + trozo, guion.size()));
            Guion sin(guion.begin(), primero);
            sin.insert(sin.end(), ultimo, guion.end());
            if (falla(sin)) {
                guion = std::move(sin);
                menos = true;
            } else {
                desde += trozo;
            }
        }
        if (trozo > 1)
            trozo /= 2;
        else if (!menos)
            trozo = 0;
    }
    return guion;
}

} // namespace atipicos::pruebas
