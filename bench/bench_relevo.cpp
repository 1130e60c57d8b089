// What a standby costs, and what it is worth: 8 workstations that save charges of 3 lines with tax and 3
// forecasts without a pause on a durable PostgreSQL server that has a synchronous standby, and on the same
// server told to wait for none. Then the primary and all its processes are killed, the standby is promoted
// and the other one made anew, again and again: how long after the death each workstation has its next save
// told, against how long a client of nothing but libpq, which tries again without a pause, has to wait for
// its next insert. A save that is told to have left nothing is repeated. In the end all that was told is
// there once, with its entry. Other than 10 deaths: bench_relevo DEATHS.
#include "bench/Medida.hpp"
#include "bench/Puesto.hpp"
#include "host/comprobacion/Verificacion.hpp"
#include "tests/support/ServidorConReserva.hpp"

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <libpq-fe.h>
#include <new>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace atipicos::bench {
namespace {

    using Reloj = std::chrono::steady_clock;
    using namespace std::chrono_literals;

    constexpr std::size_t oficinistas = 8;
    constexpr std::size_t desnudo = oficinistas; ///< the place of the bare client
    constexpr int turnos = 3;
    constexpr auto un_rato = 4s; ///< for which saves are counted in each

    /// What the processes tell, in memory that they share.
    struct Tablero {
        std::array<std::atomic<Reloj::rep>, oficinistas + 1> ultimo{}; ///< when each had its last one told
        std::atomic<std::size_t> guardados = 0;
        std::atomic<std::size_t> repetidos = 0;
        std::atomic<bool> cierra = false;

        static Tablero& compartido()
        {
            void* memoria
                = mmap(nullptr, sizeof(Tablero), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
            if (memoria == MAP_FAILED)
                throw std::runtime_error("no shared memory");
            return *new (memoria) Tablero;
        }
        void hecho(std::size_t cual) { ultimo.at(cual) = Reloj::now().time_since_epoch().count(); }
    };

    void guarda_sin_parar(const bases::Lugar& lugar, Tablero& tablero, std::size_t cual)
    {
        const Puesto puesto(lugar,
            { .espera = 30s,
                .sigue_esperando = [](std::chrono::milliseconds) { return true; },
                .sigue_intentando = [](const sql::Reintento&) { return true; } });
        const auto avisos = std::make_shared<pruebas::MsgBoxDePrueba>();
        modComun::set_MsgBox(avisos);
        while (!tablero.cierra) {
            const auto resultado = pruebas::guarda_un_cargo({}, static_cast<std::int16_t>(1 + cual % 4));
            const bool guardado
                = resultado.estado == ResultadoGuardado::Estado::Guardado && avisos->dichos.empty();
            if (guardado)
                tablero.hecho(cual);
            else if (avisos->dichos.empty()
                || avisos->dichos.back().texto.find("No se sabe") != std::string::npos)
                throw std::runtime_error("a save of which nobody knows");
            ++(guardado ? tablero.guardados : tablero.repetidos);
            avisos->dichos.clear();
        }
    }

    void inserta_sin_parar(const std::string& direccion, Tablero& tablero)
    {
        while (!tablero.cierra) {
            const std::unique_ptr<PGconn, decltype(&PQfinish)> linea(
                PQconnectdb(direccion.c_str()), &PQfinish);
            const auto inserta = [&linea] {
                const std::unique_ptr<PGresult, decltype(&PQclear)> respuesta(
                    PQexec(linea.get(), "INSERT INTO public.suelo DEFAULT VALUES"), &PQclear);
                return PQresultStatus(respuesta.get()) == PGRES_COMMAND_OK;
            };
            while (!tablero.cierra && PQstatus(linea.get()) == CONNECTION_OK && inserta())
                tablero.hecho(desnudo);
        }
    }

    template <class Trabajo> pid_t proceso(Trabajo trabajo)
    {
        const pid_t hijo = fork();
        if (hijo != 0)
            return hijo;
        try {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            trabajo();
        } catch (const std::exception& error) {
            std::cerr << error.what() << '\n';
            _exit(1);
        }
        _exit(0);
    }

    class Oficina {
    public:
        explicit Oficina(int muertes)
            : m_muertes(muertes)
        {
            m_servidor.crea_base("empresa");
            ajusta("fsync", "on"); // and so has every standby that is made from now on
            bases::crea_bases(lugar(), false);
            m_servidor.psql("empresa", "CREATE TABLE public.suelo (n serial)");
            m_de_antes = cuantos();
        }

        void mide()
        {
            for (std::size_t cual = 0; cual < oficinistas; ++cual)
                m_procesos.push_back(proceso([&, cual] { guarda_sin_parar(lugar(), m_tablero, cual); }));
            m_procesos.push_back(
                proceso([&] { inserta_sin_parar(m_servidor.direccion("empresa"), m_tablero); }));
            espera_a_todos(Reloj::now());
            compara_con_uno_solo();
            for (int vez = 0; vez < m_muertes; ++vez)
                mata_y_mide();
            termina();
        }

    private:
        [[nodiscard]] bases::Lugar lugar() const
        {
            return bases::Lugar::de_conexion(m_servidor.direccion("empresa"));
        }
        [[nodiscard]] std::size_t cuantos() const
        {
            return std::stoul(
                m_servidor.psql("empresa", "SELECT COUNT(*) FROM orvalin.proveedores_cargos_atipicos"));
        }
        void ajusta(const std::string& que, const std::string& valor) const
        {
            m_servidor.psql("postgres", "ALTER SYSTEM SET " + que + " TO '" + valor + "'");
            m_servidor.psql("postgres", "SELECT pg_reload_conf()");
        }

        [[nodiscard]] double guardados_en_un_rato(const char* reservas) const
        {
            ajusta("synchronous_standby_names", reservas);
            std::this_thread::sleep_for(1s);
            const std::size_t antes = m_tablero.guardados;
            std::this_thread::sleep_for(un_rato);
            return static_cast<double>(m_tablero.guardados - antes);
        }

        void compara_con_uno_solo() const
        {
            double con_reserva = 0;
            double sin_reserva = 0;
            for (int vez = 0; vez < turnos; ++vez) {
                con_reserva += guardados_en_un_rato("*");
                sin_reserva += guardados_en_un_rato("");
            }
            ajusta("synchronous_standby_names", "*");
            const double segundos = turnos * std::chrono::duration<double>(un_rato).count();
            std::printf(
                "%zu workstations: %.1f saves/s with a synchronous standby, %.1f without; ratio %.3f\n",
                oficinistas, con_reserva / segundos, sin_reserva / segundos, con_reserva / sin_reserva);
            std::fflush(stdout);
        }

        /// When each has had its first one told since then.
        std::array<Reloj::time_point, oficinistas + 1> espera_a_todos(Reloj::time_point desde)
        {
            std::array<Reloj::time_point, oficinistas + 1> cuando{};
            for (std::size_t listos = 0; listos < cuando.size(); std::this_thread::sleep_for(1ms)) {
                for (std::size_t cual = 0; cual < cuando.size(); ++cual) {
                    const Reloj::time_point suyo{ Reloj::duration(m_tablero.ultimo.at(cual)) };
                    if (cuando.at(cual) == Reloj::time_point{} && suyo > desde) {
                        cuando.at(cual) = suyo;
                        ++listos;
                    }
                }
                if (waitpid(-1, nullptr, WNOHANG) > 0)
                    throw std::runtime_error("a workstation has ended");
            }
            return cuando;
        }

        void mata_y_mide()
        {
            espera_a_todos(Reloj::now());
            m_servidor.mata();
            const auto muerto = Reloj::now();
            m_servidor.asciende();
            m_ascenso.anota(Reloj::now() - muerto);
            // A commit waits for the standby that is to come, as long as the setting asks for one.
            ajusta("synchronous_standby_names", "");
            const auto cuando = espera_a_todos(muerto);
            for (std::size_t cual = 0; cual < cuando.size(); ++cual)
                (cual == desnudo ? m_suelo : m_componente).anota(cuando.at(cual) - muerto);
            ajusta("synchronous_standby_names", "*");
            m_servidor.repone();
        }

        void termina()
        {
            m_tablero.cierra = true;
            for (const auto proceso : m_procesos) {
                int estado = -1;
                waitpid(proceso, &estado, 0);
                if (estado != 0)
                    throw std::runtime_error("a workstation failed");
            }
            const auto verificado = app::verifica(bases::abre_bases(lugar()));
            const auto hay = cuantos() - m_de_antes;
            if (hay != m_tablero.guardados || !verificado.diferencias.empty()
                || !verificado.sin_asiento.empty())
                throw std::runtime_error("not what was told: " + app::resumen(verificado));
            std::printf("%d deaths of the primary, until the next one is told:\n", m_muertes);
            m_ascenso.escribe("the standby is promoted");
            m_componente.escribe("a save of the component");
            m_suelo.escribe("an insert, bare");
            std::printf("  ratio of medians %.3f\n", m_componente.mediana() / m_suelo.mediana());
            std::printf(
                "%zu charges told to be saved, %zu repeated because nothing had been kept; all there, "
                "once, with their entries\n",
                m_tablero.guardados.load(), m_tablero.repetidos.load());
        }

        int m_muertes;
        pruebas::ServidorConReserva m_servidor;
        Tablero& m_tablero = Tablero::compartido();
        std::vector<pid_t> m_procesos;
        std::size_t m_de_antes = 0;
        Medida m_ascenso;
        Medida m_componente;
        Medida m_suelo;
    };

}
}

int main(int argc, char** argv)
{
    try {
        atipicos::bench::Oficina(argc > 1 ? std::atoi(argv[1]) : 10).mide();
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
