// What a save on a PostgreSQL server costs over the same statements through bare libpq: charges of 3 lines
// with tax and 3 forecasts, durable, one workstation, near its server and far from it, and several at once.
// One workstation shares a core with its server: to wake the other core costs more than most statements. The
// literal floor sends each text as it comes, in two sessions and with two commits; the prepared floor
// prepares each shape once and has one session and one commit. Fewer turns of several: bench_servidor TURNS.
#include "bench/Nucleo.hpp"
#include "bench/Puestos.hpp"
#include "bench/Sitio.hpp"
#include "bench/Turnos.hpp"
#include "tests/support/Intermediario.hpp"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <iostream>

namespace atipicos::bench {
namespace {

    using Guiones = std::vector<Guion>;

    Guiones aprende_a_guardar(Sitio& sitio, std::size_t cuantos)
    {
        return aprende(sitio.copia("guiones"), cuantos, [](std::size_t) { pruebas::guarda_un_cargo(); });
    }

    void compara_uno(SitioPostgresql& sitio, const Guiones& guiones, const Traducidas& traducidas)
    {
        Puesto puesto(sitio.copia("uno_componente"));
        sitio.copia_para_textos("uno_textos");
        sitio.copia("uno_formas");
        const auto textos = sitio.literal("uno_textos", traducidas);
        const auto formas = sitio.preparado("uno_formas", traducidas);
        formas->prepara();
        std::vector<Corredor> corredores{
            { "through the component", [&](std::size_t) { puesto.guarda(); } },
            { "literal floor", [&](std::size_t vez) { textos->repite(vez); } },
            { "prepared floor", [&](std::size_t vez) { formas->repite(vez); } },
        };
        por_turnos(guiones.size(), corredores);
        exige_lo_mismo({ sitio.preparado("uno_componente", traducidas).get(), textos.get(), formas.get() });
        std::printf("One workstation, %zu statements a save, %zu shapes\n", guiones.back().size(),
            traducidas.formas.formas.size());
        escribe(corredores);
        std::printf("\n");
    }

    /// One workstation far from its server: each round trip lasts that much longer.
    void compara_lejos(SitioPostgresql& sitio, const Traducidas& traducidas, std::chrono::milliseconds viaje)
    {
        constexpr std::size_t veces = 15;
        const auto nombre = "lejos_" + std::to_string(viaje.count()) + "_";
        pruebas::Intermediario intermediario(sitio.servidor().enchufe());
        sitio.ve_por(intermediario.por_aqui());
        {
            Puesto puesto(sitio.copia(nombre + "componente"));
            sitio.copia_para_textos(nombre + "textos");
            sitio.copia(nombre + "formas");
            const auto textos = sitio.literal(nombre + "textos", traducidas);
            const auto formas = sitio.preparado(nombre + "formas", traducidas);
            puesto.guarda(); // a session asks for the catalogue once
            formas->prepara();
            intermediario.retrasa(viaje);
            std::vector<std::size_t> viajes;
            const auto cuenta = [&](std::size_t quien, const auto& trabajo) {
                return [&, quien, trabajo](std::size_t vez) {
                    const auto antes = intermediario.viajes();
                    trabajo(vez);
                    viajes.resize(3);
                    viajes[quien] += intermediario.viajes() - antes;
                };
            };
            std::vector<Corredor> corredores{
                { "through the component", cuenta(0, [&](std::size_t) { puesto.guarda(); }) },
                { "literal floor", cuenta(1, [&](std::size_t vez) { textos->repite(vez); }) },
                { "prepared floor", cuenta(2, [&](std::size_t vez) { formas->repite(vez); }) },
            };
            por_turnos(veces, corredores);
            std::printf("Round trips of %lld ms more, %zu a save, literal floor %zu, prepared floor %zu\n",
                static_cast<long long>(viaje.count()), viajes[0] / veces, viajes[1] / veces,
                viajes[2] / veces);
            escribe(corredores);
            std::printf("\n");
        }
        sitio.ve_por("");
    }

    /// Saves a second of so many workstations, through the component or on one of the floors.
    double del_componente(
        SitioPostgresql& sitio, std::size_t cargos, std::size_t puestos, const std::string& base)
    {
        const auto lugar = sitio.copia(base);
        return por_segundo(puestos, cargos,
            [&] { return [puesto = std::make_shared<Puesto>(lugar)](std::size_t) { puesto->guarda(); }; });
    }

    template <class Abre>
    double de_un_suelo(
        SitioPostgresql& sitio, std::size_t cargos, std::size_t puestos, const std::string& base, Abre abre)
    {
        static_cast<void>(sitio.copia(base));
        return por_segundo(puestos, cargos, [&] {
            const std::shared_ptr<Suelo> suelo = abre(base);
            suelo->prepara();
            return [suelo](std::size_t cual) { suelo->repite(cual); };
        });
    }

    struct Ritmo {
        const char* nombre;
        std::function<double(const std::string& base)> mide;
        std::vector<double> por_segundo = {};
    };

    double mediana(std::vector<double> valores)
    {
        std::sort(valores.begin(), valores.end());
        return valores[valores.size() / 2];
    }

    void escribe(const std::vector<Ritmo>& ritmos)
    {
        for (const auto& [nombre, mide, valores] : ritmos) {
            const auto [minimo, maximo] = std::minmax_element(valores.begin(), valores.end());
            std::printf("  %-28s median %7.1f saves/s   min %7.1f   max %7.1f   (%zu runs)\n", nombre,
                mediana(valores), *minimo, *maximo, valores.size());
        }
        for (std::size_t i = 1; i < ritmos.size(); ++i) {
            std::vector<double> razones;
            for (std::size_t vuelta = 0; vuelta < ritmos[0].por_segundo.size(); ++vuelta)
                razones.push_back(ritmos[0].por_segundo[vuelta] / ritmos[i].por_segundo[vuelta]);
            std::printf("  times the saves of the %s %.2f (median of the ratios)\n", ritmos[i].nombre,
                mediana(razones));
        }
    }

    /// Many short turns, because a machine is not equally fast from one second to the next: the ratio is that
    /// of neighbours.
    void compara_varios(SitioPostgresql& sitio, std::size_t cargos, const Traducidas& traducidas,
        std::size_t puestos, std::size_t vueltas)
    {
        std::vector<Ritmo> ritmos{
            { "through the component",
                [&](const std::string& base) { return del_componente(sitio, cargos, puestos, base); } },
            { "literal floor",
                [&](const std::string& base) {
                    return de_un_suelo(sitio, cargos, puestos, base,
                        [&](const std::string& donde) { return sitio.literal(donde, traducidas); });
                } },
            { "prepared floor",
                [&](const std::string& base) {
                    return de_un_suelo(sitio, cargos, puestos, base,
                        [&](const std::string& donde) { return sitio.preparado(donde, traducidas); });
                } },
        };
        for (std::size_t vuelta = 0; vuelta < vueltas; ++vuelta)
            for (std::size_t i = 0; i < ritmos.size(); ++i) {
                auto& uno = ritmos[(vuelta + i) % ritmos.size()];
                uno.por_segundo.push_back(uno.mide("varios"));
                sitio.servidor().borra_base("varios");
            }
        std::printf("%zu workstations at once, all on one counter\n", puestos);
        escribe(ritmos);
    }

    void con_un_puesto()
    {
        const EnUnNucleo los_dos;
        std::printf("Program and server on core %zu\n", los_dos.nucleo());
        SitioPostgresql sitio(1);
        const auto guiones = aprende_a_guardar(sitio, 200);
        const auto traducidas = sitio.traduce(guiones);
        compara_uno(sitio, guiones, traducidas);
        for (const int viaje : { 1, 5, 20 })
            compara_lejos(sitio, traducidas, std::chrono::milliseconds(viaje));
    }

    void con_varios_puestos(std::size_t vueltas)
    {
        SitioPostgresql sitio(1);
        const auto guiones = aprende_a_guardar(sitio, 200);
        const auto traducidas = sitio.traduce(guiones);
        std::printf("Program and server on all cores\n");
        for (const std::size_t puestos : { 1U, 2U, 4U, 8U })
            compara_varios(sitio, guiones.size(), traducidas, puestos, vueltas);
    }

}
}

int main(int argc, char** argv)
{
    using namespace atipicos::bench;
    try {
        con_un_puesto();
        con_varios_puestos(argc > 1 ? std::stoul(argv[1]) : 15);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
