// Many offices on one PostgreSQL server, durable, program and server on all cores: saves a second of 8, 32
// and 128 workstations, each a process that saves charges of 3 lines with tax and 3 forecasts without a
// pause, all in one warehouse or in the four of the sample company; how long a save takes at the 50th and the
// 99th of a hundred; and what the server's sessions were found waiting for, looked at 50 times a second. The
// four warehouses post to two accounting companies, each with one counter of entries. Then through pgbouncer,
// 16 sessions for a transaction each. All that was reported as saved is verified afterwards; a save that was
// not is an error, and told apart is one that has waited for another's lock longer than a session does (5 s,
// unless the address wants more). Other lengths than 10 s: bench_oficinas SECONDS.
#include "bench/Desnudo.hpp"
#include "bench/Puesto.hpp"
#include "bench/Puestos.hpp"
#include "bench/Sitio.hpp"
#include "host/comprobacion/Verificacion.hpp"
#include "tests/support/Pgbouncer.hpp"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <map>
#include <new>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <thread>

namespace atipicos::bench {
namespace {

    using Reloj = std::chrono::steady_clock;

    /// What all workstations write down, in memory that they share.
    class Libreta {
    public:
        static constexpr std::size_t caben = 1'000'000;

        Libreta()
            : m_hojas(static_cast<Hojas*>(
                mmap(nullptr, sizeof(Hojas), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)))
        {
            if (m_hojas == MAP_FAILED)
                throw std::runtime_error("no shared memory");
            new (m_hojas) Hojas;
        }
        Libreta(const Libreta&) = delete;
        Libreta& operator=(const Libreta&) = delete;
        ~Libreta() { munmap(m_hojas, sizeof(Hojas)); }

        void guardado(std::chrono::duration<double, std::milli> tardado)
        {
            if (const auto cual = m_hojas->guardados++; cual < caben)
                m_hojas->milisegundos.at(cual) = static_cast<float>(tardado.count());
        }
        void error(const std::string& texto)
        {
            ++m_hojas->errores;
            if (texto.find("bloqueada por otro usuario") != std::string::npos)
                ++m_hojas->bloqueos;
            else
                std::cerr << texto << '\n';
        }
        [[nodiscard]] std::size_t guardados() const { return m_hojas->guardados; }
        [[nodiscard]] std::size_t errores() const { return m_hojas->errores; }
        [[nodiscard]] std::size_t bloqueos() const { return m_hojas->bloqueos; }
        /// Of all times in order, the one of that place in a hundred.
        [[nodiscard]] double de_cien(std::size_t lugar)
        {
            auto& todos = m_hojas->milisegundos;
            const auto cuantos = std::min(guardados(), caben);
            std::sort(todos.begin(), todos.begin() + static_cast<std::ptrdiff_t>(cuantos));
            return cuantos == 0 ? 0 : todos.at(std::min(cuantos - 1, cuantos * lugar / 100));
        }

    private:
        struct Hojas {
            std::atomic<std::size_t> guardados = 0;
            std::atomic<std::size_t> errores = 0;
            std::atomic<std::size_t> bloqueos = 0;
            std::array<float, caben> milisegundos{};
        };
        Hojas* m_hojas;
    };

    struct Ensayo {
        std::size_t puestos;
        std::int16_t almacenes;
        bool con_repartidor = false;
    };

    [[noreturn]] void atiende(const bases::Lugar& lugar, std::int16_t almacen, Tubo& listos, Tubo& salida,
        std::chrono::seconds tiempo, Libreta& libreta)
    {
        try {
            prctl(PR_SET_PDEATHSIG, SIGKILL); // else it would wait for ever for the server that went with it
            salida.cierra_entrada();
            // Nobody is there to be told what it waits for.
            const Puesto puesto(lugar, { .sigue_esperando = [](std::chrono::milliseconds) { return true; } });
            const auto avisos = std::make_shared<pruebas::MsgBoxDePrueba>();
            modComun::set_MsgBox(avisos);
            static_cast<void>(pruebas::guarda_un_cargo({}, almacen)); // what a session reads only once
            listos.escribe();
            static_cast<void>(salida.lee());
            for (const auto hasta = Reloj::now() + tiempo; Reloj::now() < hasta;) {
                const auto antes = Reloj::now();
                const auto resultado = pruebas::guarda_un_cargo({}, almacen);
                if (resultado.estado == ResultadoGuardado::Estado::Guardado && avisos->dichos.empty()) {
                    libreta.guardado(Reloj::now() - antes);
                    continue;
                }
                libreta.error(
                    avisos->dichos.empty() ? "not saved, and nothing said" : avisos->dichos.back().texto);
                avisos->dichos.clear();
            }
        } catch (const std::exception& error) {
            std::cerr << error.what() << '\n';
            _exit(1);
        }
        _exit(0);
    }

    /// What the sessions that are not idle wait for, seen until all workstations have ended.
    std::map<std::string, std::size_t> mira_esperas(PGconn* linea, std::size_t puestos)
    {
        std::map<std::string, std::size_t> vistas;
        for (std::size_t acabados = 0; acabados < puestos;) {
            const auto respuesta = pide(linea,
                "SELECT CASE WHEN state = 'active' THEN COALESCE(wait_event_type || ' ' || wait_event, "
                "'running')"
                " ELSE 'waits for its workstation, in a transaction' END, COUNT(*) FROM pg_stat_activity"
                " WHERE datname = 'oficinas' AND pid <> pg_backend_pid() AND state <> 'idle' GROUP BY 1");
            for (int i = 0; i < PQntuples(respuesta.get()); ++i)
                vistas[PQgetvalue(respuesta.get(), i, 0)] += std::stoul(PQgetvalue(respuesta.get(), i, 1));
            int estado = 0;
            while (acabados < puestos && waitpid(-1, &estado, WNOHANG) > 0) {
                if (estado != 0)
                    throw std::runtime_error("a workstation failed");
                ++acabados;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        return vistas;
    }

    void escribe(const Ensayo& ensayo, std::chrono::seconds tiempo, Libreta& libreta,
        const std::map<std::string, std::size_t>& vistas)
    {
        std::printf(
            "%4zu workstations, %d warehouse%s%s: %7.1f saves/s, 50 of 100 within %8.1f ms, 99 within "
            "%8.1f ms, errors %zu, of which locks %zu\n",
            ensayo.puestos, ensayo.almacenes, ensayo.almacenes == 1 ? " " : "s",
            ensayo.con_repartidor ? ", pgbouncer" : "",
            static_cast<double>(libreta.guardados()) / static_cast<double>(tiempo.count()),
            libreta.de_cien(50), libreta.de_cien(99), libreta.errores(), libreta.bloqueos());
        std::vector<std::pair<std::size_t, std::string>> orden;
        std::size_t todas = 0;
        for (const auto& [que, veces] : vistas) {
            orden.emplace_back(veces, que);
            todas += veces;
        }
        std::sort(orden.rbegin(), orden.rend());
        std::printf("     ");
        for (std::size_t i = 0; i < std::min<std::size_t>(orden.size(), 4); ++i)
            std::printf(" %s %.0f %%;", orden[i].second.c_str(),
                100.0 * static_cast<double>(orden[i].first) / static_cast<double>(todas));
        std::printf("\n");
        std::fflush(stdout);
    }

    void mide(SitioPostgresql& sitio, const Ensayo& ensayo, std::chrono::seconds tiempo)
    {
        auto lugar = sitio.copia("oficinas");
        std::unique_ptr<pruebas::Pgbouncer> repartidor;
        if (ensayo.con_repartidor) {
            sitio.servidor().psql("oficinas",
                "ALTER DATABASE oficinas SET search_path TO orvalin; ALTER DATABASE oficinas SET datestyle "
                "TO "
                "'ISO, DMY'; ALTER DATABASE oficinas SET lock_timeout TO '5s'");
            repartidor = std::make_unique<pruebas::Pgbouncer>(sitio.servidor(), "transaction", 16);
            lugar = bases::Lugar::de_conexion(repartidor->direccion("oficinas") + "&preparadas=no");
        }
        Libreta libreta;
        {
            Tubo listos;
            Tubo salida;
            for (std::size_t i = 0; i < ensayo.puestos; ++i)
                if (fork() == 0)
                    atiende(lugar,
                        static_cast<std::int16_t>(1 + i % static_cast<std::size_t>(ensayo.almacenes)), listos,
                        salida, tiempo, libreta);
            listos.cierra_entrada();
            for (std::size_t i = 0; i < ensayo.puestos; ++i)
                if (!listos.lee())
                    throw std::runtime_error("a workstation could not begin");
            const auto linea = conecta(sitio.servidor().direccion("postgres"), "public");
            salida.cierra_entrada();
            escribe(ensayo, tiempo, libreta, mira_esperas(linea.get(), ensayo.puestos));
        }
        repartidor.reset();
        const auto resultado = app::verifica(bases::abre_bases(sitio.lugar("oficinas")));
        if (!resultado.diferencias.empty() || resultado.cargos < libreta.guardados())
            throw std::runtime_error("not what was saved: " + app::resumen(resultado));
        sitio.servidor().borra_base("oficinas");
    }

    void mide_todo(std::chrono::seconds tiempo)
    {
        SitioPostgresql sitio(1);
        for (const bool con_repartidor : { false, true }) {
            if (con_repartidor && !pruebas::Pgbouncer::falta().empty()) {
                std::printf("%s\n", pruebas::Pgbouncer::falta().c_str());
                continue;
            }
            for (const std::size_t puestos : { 8U, 32U, 128U })
                for (const std::int16_t almacenes : { std::int16_t{ 1 }, std::int16_t{ 4 } })
                    mide(sitio, { puestos, almacenes, con_repartidor }, tiempo);
        }
    }

}
}

int main(int argc, char** argv)
{
    using namespace atipicos::bench;
    try {
        mide_todo(std::chrono::seconds(argc > 1 ? std::atoi(argv[1]) : 10));
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
