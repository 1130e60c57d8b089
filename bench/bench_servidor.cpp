// What a save on a PostgreSQL server costs over the same statements through bare libpq: charges of 3 lines
// with tax and 3 forecasts, one workstation and several at once, durable.
#include "bench/Medida.hpp"
#include "bench/Suelo.hpp"
#include "tests/support/Intermediario.hpp"

#include <algorithm>
#include <array>
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
    bases::Lugar lugar(const std::string& base, const std::string& camino = {})
    {
        return bases::Lugar::de_conexion(servidor().direccion(base) + camino);
    }

    /// A base in which the counters have begun, for all others to be copies of.
    void prepara_plantilla()
    {
        servidor().crea_base("comenzada");
        bases::crea_bases(lugar("comenzada"), false);
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

    /// Both ends of a pipe, to begin together by.
    class Tubo {
    public:
        Tubo()
        {
            if (pipe(m_extremos.data()) != 0)
                throw std::runtime_error("no pipe");
        }
        Tubo(const Tubo&) = delete;
        Tubo& operator=(const Tubo&) = delete;
        ~Tubo()
        {
            close(m_extremos[0]);
            cierra_entrada();
        }
        void escribe() const
        {
            if (write(m_extremos[1], "", 1) != 1)
                throw std::runtime_error("nobody reads");
        }
        /// Waits for a byte; false when nobody can write any longer.
        [[nodiscard]] bool lee() const
        {
            char byte = 0;
            return read(m_extremos[0], &byte, 1) == 1;
        }
        void cierra_entrada()
        {
            if (const int entrada = std::exchange(m_extremos[1], -1); entrada >= 0)
                close(entrada);
        }

    private:
        std::array<int, 2> m_extremos{};
    };

    /// Saves a second of `puestos` processes. Each makes what it works with, saves once to have read what a
    /// session reads only once, waits for all others and then does its share.
    /// @param abre  makes, for the workstation of a number from 0, what saves the charge of a number from 0
    template <class Abre> double por_segundo(std::size_t puestos, std::size_t cargos, Abre abre)
    {
        Tubo listos;
        Tubo salida;
        for (std::size_t puesto = 0; puesto < puestos; ++puesto)
            if (fork() == 0) {
                try {
                    salida.cierra_entrada();
                    const auto guarda_uno = abre();
                    guarda_uno(puesto);
                    listos.escribe();
                    static_cast<void>(salida.lee());
                    for (std::size_t i = puesto + puestos; i < cargos; i += puestos)
                        guarda_uno(i);
                    _exit(0);
                } catch (const std::exception& error) {
                    std::cerr << error.what() << '\n';
                    _exit(1);
                }
            }
        listos.cierra_entrada();
        for (std::size_t puesto = 0; puesto < puestos; ++puesto)
            if (!listos.lee())
                throw std::runtime_error("a workstation could not begin");
        const auto antes = std::chrono::steady_clock::now();
        salida.cierra_entrada();
        int estado = 0;
        for (std::size_t puesto = 0; puesto < puestos; ++puesto)
            if (wait(&estado) < 0 || estado != 0)
                throw std::runtime_error("a workstation failed");
        return static_cast<double>(cargos - puestos)
            / std::chrono::duration<double>(std::chrono::steady_clock::now() - antes).count();
    }

    double del_componente(const std::vector<Guion>& guiones, std::size_t puestos, const std::string& base)
    {
        servidor().crea_base(base, "comenzada");
        return por_segundo(puestos, guiones.size(), [&] {
            return [banco = std::make_shared<pruebas::Banco>(lugar(base))](std::size_t) { guarda(*banco); };
        });
    }

    double del_suelo(const std::vector<Guion>& guiones, std::size_t puestos, const std::string& base)
    {
        servidor().crea_base(base, "comenzada");
        return por_segundo(puestos, guiones.size(), [&] {
            return [&guiones, suelo = std::make_shared<SueloPostgresql>(servidor().direccion(base))](
                       std::size_t cual) { suelo->repite(guiones[cual]); };
        });
    }

    double mediana(std::vector<double> valores)
    {
        std::sort(valores.begin(), valores.end());
        return valores[valores.size() / 2];
    }

    /// Many short turns, because a machine is not equally fast from one second to the next: the ratio is that
    /// of neighbours.
    void compara_varios(const std::vector<Guion>& guiones, std::size_t puestos)
    {
        constexpr int vueltas = 15;
        std::vector<double> componente;
        std::vector<double> bare;
        std::vector<double> razon;
        for (int vuelta = 0; vuelta < vueltas; ++vuelta) {
            const auto nombre = std::to_string(puestos) + "_" + std::to_string(vuelta);
            componente.push_back(del_componente(guiones, puestos, "componente_" + nombre));
            bare.push_back(del_suelo(guiones, puestos, "desnudo_" + nombre));
            razon.push_back(componente.back() / bare.back());
        }
        std::printf("  %zu   component %7.1f saves/s   bare libpq %7.1f saves/s   %.2f   (medians of %d)\n",
            puestos, mediana(componente), mediana(bare), mediana(razon), vueltas);
    }

}
}

int main()
{
    using namespace atipicos::bench;
    try {
        prepara_plantilla();
        const auto guiones = aprende(200);
        compara_uno(guiones);
        for (const int viaje : { 1, 5, 20 })
            compara_lejos(guiones, std::chrono::milliseconds(viaje));
        std::printf("Workstations at once, all on one counter\n");
        for (const std::size_t puestos : { 1U, 2U, 4U, 8U })
            compara_varios(guiones, puestos);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
