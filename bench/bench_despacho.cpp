// A million reads of a property through the late-bound face of the loaded component, with the member looked
// up by its name once or each time, against the same reads of the field itself.
#include "automation/Componente.hpp"
#include "bench/Medida.hpp"
#include "charges/clsAtipico.hpp"

#include <cstdio>

namespace {

using namespace atipicos;
using namespace atipicos::automation;

constexpr int veces = 1'000'000;
constexpr int rondas = 11;

volatile std::int32_t sumidero = 0;

double directo()
{
    clsAtipico cargo;
    cargo.Proveedor = 106;
    const volatile std::int32_t& campo = cargo.Proveedor;
    bench::Medida medida;
    for (int ronda = 0; ronda < rondas; ++ronda)
        medida.mide([&] {
            for (int i = 0; i < veces; ++i)
                sumidero = campo;
        });
    medida.escribe("direct");
    return medida.mediana();
}

template <class Lee> double tardio(const char* nombre, Lee lee)
{
    bench::Medida medida;
    for (int ronda = 0; ronda < rondas; ++ronda)
        medida.mide([&] {
            for (int i = 0; i < veces; ++i)
                sumidero = lee();
        });
    medida.escribe(nombre);
    return medida.mediana();
}

}

int main()
{
    const auto cargo = crea("QVORComprasAtip.clsAtipico", &DllGetClassObject);
    cargo.pon("Proveedor", 106);
    const auto id = cargo.id("Proveedor");
    std::printf("%d reads of a 32-bit property\n", veces);
    const double campo = directo();
    const double con_numero = tardio("late bound, number kept", [&] { return cargo.llama(id).entero(); });
    const double con_nombre
        = tardio("late bound, name each time", [&] { return cargo.llama("Proveedor").entero(); });
    std::printf(
        "ratio to the direct read: %.1f with the number kept, %.1f by name (%.0f and %.0f ns a read)\n",
        con_numero / campo, con_nombre / campo, con_numero * 1e6 / veces, con_nombre * 1e6 / veces);
    return sumidero == 106 ? 0 : 1;
}
