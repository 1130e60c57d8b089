// What a save on a PostgreSQL server costs over the same statements through bare libpq: charges of 3 lines
// with tax and 3 forecasts, one workstation and several at once, durable.
#include "bench/Medida.hpp"
#include "bench/Suelo.hpp"
#include "tests/support/Intermediario.hpp"

#include <cstdio>
#include <iostream>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace atipicos::bench {
namespace {

    const pruebas::ServidorPostgresql& servidor()
    {
        static const pruebas::ServidorPostgresql unico(true);
        return unico;
    }

    void guarda(pruebas::Banco& banco)
    {
        if (banco.guarda().estado != ResultadoGuardado::Estado::Guardado || !banco.avisos->dichos.empty())
            throw std::runtime_error("the charge was not saved");
    }

    /// `camino`: what makes the address go another way than the server's socket.
    orvalin::Lugar lugar(const std::string& base, const std::string& camino = {})
    {
        return orvalin::Lugar::de_conexion(servidor().direccion(base) + camino);
    }

    /// A base in which the counters have begun, for all others to be copies of.
    void prepara_plantilla()
    {
        servidor().crea_base("comenzada");
        orvalin::crea_bases(lugar("comenzada"), false);
        pruebas::Banco banco(lugar("comenzada"));
        guarda(banco);
    }

    std::vector<Guion> aprende(int cuantos)
    {
        servidor().crea_base("guiones", "comenzada");
        std::vector<Guion> guiones;
        pruebas::Banco banco(lugar("guiones"));
        for (int i = 0; i < cuantos; ++i) {
            banco.parte->dichas.clear();
            guarda(banco);
            guiones.push_back(transcribe(banco));
        }
        return guiones;
    }

    void compara_uno(const std::vector<Guion>& guiones)
    {
        servidor().crea_base("uno_componente", "comenzada");
        servidor().crea_base("uno_desnudo", "comenzada");
        pruebas::Banco banco(lugar("uno_componente"));
        SueloPostgresql suelo(servidor().direccion("uno_desnudo"));
        Medida componente;
        Medida bare;
        for (std::size_t i = 0; i < guiones.size(); ++i) {
            const auto una = [&] { componente.mide([&] { guarda(banco); }); };
            const auto otra = [&] { bare.mide([&] { suelo.repite(guiones[i]); }); };
            if (i % 2 == 0) { // neither side always comes first
                una();
                otra();
            } else {
                otra();
                una();
            }
        }
        std::printf("One workstation, %zu statements a save\n", guiones.front().size());
        componente.escribe("through the component");
        bare.escribe("bare libpq");
        std::printf("  ratio of medians %.3f\n\n", componente.mediana() / bare.mediana());
    }

    /// One workstation far from its server: each round trip lasts that much longer.
    void compara_lejos(const std::vector<Guion>& guiones, std::chrono::milliseconds viaje)
    {
        constexpr std::size_t veces = 15;
        const auto nombre = std::to_string(viaje.count());
        servidor().crea_base("lejos_componente_" + nombre, "comenzada");
        servidor().crea_base("lejos_desnudo_" + nombre, "comenzada");
        pruebas::Intermediario intermediario(servidor().enchufe());
        {
            pruebas::Banco banco(lugar("lejos_componente_" + nombre, intermediario.por_aqui()));
            SueloPostgresql suelo(servidor().direccion("lejos_desnudo_" + nombre) + intermediario.por_aqui());
            guarda(banco); // a session asks for the catalogue once
            intermediario.retrasa(viaje);
            Medida componente;
            Medida bare;
            const auto antes = intermediario.viajes();
            for (std::size_t i = 0; i < veces; ++i)
                componente.mide([&] { guarda(banco); });
            const auto viajes = (intermediario.viajes() - antes) / veces;
            for (std::size_t i = 0; i < veces; ++i)
                bare.mide([&] { suelo.repite(guiones[i]); });
            std::printf("Round trips of %s ms more, %zu a save\n", nombre.c_str(), viajes);
            componente.escribe("through the component");
            bare.escribe("bare libpq");
            std::printf("  ratio of medians %.3f\n\n", componente.mediana() / bare.mediana());
        }
    }

    /// Saves a second of `puestos` processes, each of which does its share of the work.
    template <class Trabajo> double por_segundo(int puestos, std::size_t cargos, Trabajo trabajo)
    {
        const auto antes = std::chrono::steady_clock::now();
        for (int puesto = 0; puesto < puestos; ++puesto)
            if (fork() == 0) {
                try {
                    trabajo(static_cast<std::size_t>(puesto));
                    _exit(0);
                } catch (const std::exception& error) {
                    std::cerr << error.what() << '\n';
                    _exit(1);
                }
            }
        int estado = 0;
        for (int puesto = 0; puesto < puestos; ++puesto)
            if (wait(&estado) < 0 || estado != 0)
                throw std::runtime_error("a workstation failed");
        return static_cast<double>(cargos)
            / std::chrono::duration<double>(std::chrono::steady_clock::now() - antes).count();
    }

    void compara_varios(const std::vector<Guion>& guiones, int puestos)
    {
        const auto nombre = std::to_string(puestos);
        servidor().crea_base("componente_" + nombre, "comenzada");
        servidor().crea_base("desnudo_" + nombre, "comenzada");
        const auto paso = static_cast<std::size_t>(puestos);
        const double componente = por_segundo(puestos, guiones.size(), [&](std::size_t puesto) {
            pruebas::Banco banco(lugar("componente_" + nombre));
            for (std::size_t i = puesto; i < guiones.size(); i += paso)
                guarda(banco);
        });
        const double bare = por_segundo(puestos, guiones.size(), [&](std::size_t puesto) {
            SueloPostgresql suelo(servidor().direccion("desnudo_" + nombre));
            for (std::size_t i = puesto; i < guiones.size(); i += paso)
                suelo.repite(guiones[i]);
        });
        std::printf("  %d   component %7.1f saves/s   bare libpq %7.1f saves/s   %.2f\n", puestos, componente,
            bare, componente / bare);
    }

}
}

int main()
{
    using namespace atipicos::bench;
    try {
        prepara_plantilla();
        const auto guiones = aprende(400);
        compara_uno(guiones);
        for (const int viaje : { 1, 5, 20 })
            compara_lejos(guiones, std::chrono::milliseconds(viaje));
        std::printf("Workstations at once, all on one counter\n");
        for (const int puestos : { 1, 2, 4, 8 })
            compara_varios(guiones, puestos);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
