// What a save costs over the same statements through bare libsqlite3: charges of 3 lines with tax and 3
// forecasts, once durable and once without waiting for the disk, and from opening to the first saved charge.
// The literal floor sends each text as it comes, over two files and with two commits; the prepared floor
// prepares each shape once and has one file and one commit.
#include "bench/Sitio.hpp"
#include "bench/Turnos.hpp"

#include <iostream>

namespace atipicos::bench {
namespace {

    void compara(const char* titulo, std::size_t veces, bool duradera)
    {
        SitioSqlite sitio(1, duradera);
        const auto guiones
            = aprende(sitio.copia("guiones"), veces, [](std::size_t) { pruebas::guarda_un_cargo(); });
        const auto traducidas = sitio.traduce(guiones);
        sitio.copia_para_textos("textos");
        sitio.copia("formas");
        Puesto puesto(sitio.copia("componente"), { .sincronizacion_completa = duradera });
        const auto textos = sitio.literal("textos", traducidas);
        const auto formas = sitio.preparado("formas", traducidas);
        formas->prepara();
        std::vector<Corredor> corredores{
            { "through the component", [&](std::size_t) { puesto.guarda(); } },
            { "literal floor", [&](std::size_t vez) { textos->repite(vez); } },
            { "prepared floor", [&](std::size_t vez) { formas->repite(vez); } },
        };
        por_turnos(veces, corredores);
        exige_lo_mismo({ sitio.preparado("componente", traducidas).get(), textos.get(), formas.get() });
        std::printf("%s, %zu statements a save, %zu shapes\n", titulo, guiones.back().size(),
            traducidas.formas.formas.size());
        escribe(corredores);
        std::printf("\n");
    }

    /// In a company of one charge, a copy for each time.
    void mide_arranque()
    {
        constexpr std::size_t veces = 15;
        SitioSqlite sitio(1, true);
        const auto traducidas = sitio.traduce(
            aprende(sitio.copia("guiones"), 1, [](std::size_t) { pruebas::guarda_un_cargo(); }));
        for (std::size_t vez = 0; vez < veces; ++vez) {
            const auto cual = std::to_string(vez);
            sitio.copia("componente" + cual);
            sitio.copia("formas" + cual);
            sitio.copia_para_textos("textos" + cual);
        }
        std::vector<Corredor> corredores{
            { "through the component",
                [&](std::size_t vez) { Puesto(sitio.lugar("componente" + std::to_string(vez))).guarda(); } },
            { "literal floor",
                [&](std::size_t vez) {
                    sitio.literal("textos" + std::to_string(vez), traducidas)->repite(0);
                } },
            { "prepared floor",
                [&](std::size_t vez) {
                    sitio.preparado("formas" + std::to_string(vez), traducidas)->repite(0);
                } },
        };
        por_turnos(veces, corredores);
        std::printf("From opening to the first saved charge, and closing\n");
        escribe(corredores);
        std::printf("  difference of medians to the literal floor %.3f ms\n",
            corredores[0].medida.mediana() - corredores[1].medida.mediana());
    }

}
}

int main()
{
    using namespace atipicos::bench;
    try {
        compara("Durable", 400, true);
        compara("Not durable (synchronous=OFF)", 1'000, false);
        mide_arranque();
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
