// What a save on a PostgreSQL server costs over the same statements through bare libpq: charges of 3 lines
// with tax and 3 forecasts, one workstation and several at once, durable.
#include "bench/Medida.hpp"
#include "engines/postgresql/Connection.hpp"
#include "tests/integracion/Banco.hpp"
#include "tests/support/Intermediario.hpp"

#include <cstdio>
#include <iostream>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace atipicos::bench {
namespace {

    struct Dicha {
        bool contable = false; ///< on the accounting connection
        std::string sql;
    };
    using Guion = std::vector<Dicha>; ///< the statements of one save, as the server wants them

    const pruebas::ServidorPostgresql& servidor()
    {
        static const pruebas::ServidorPostgresql unico(true);
        return unico;
    }

    struct CierraLinea {
        void operator()(PGconn* linea) const { PQfinish(linea); }
    };
    using Linea = std::unique_ptr<PGconn, CierraLinea>;

    /// `camino`: what makes the address go another way than the server's socket.
    Linea abre(const std::string& base, const char* esquema, const std::string& camino = {})
    {
        Linea linea(PQconnectdb((servidor().direccion(base) + camino).c_str()));
        if (PQstatus(linea.get()) != CONNECTION_OK)
            throw std::runtime_error(PQerrorMessage(linea.get()));
        PQclear(PQexec(linea.get(), (std::string("SET search_path TO ") + esquema).c_str()));
        PQclear(PQexec(linea.get(), "SET datestyle TO 'ISO,DMY'"));
        return linea;
    }

    void ejecuta(PGconn* linea, const std::string& sql)
    {
        PGresult* respuesta = PQexec(linea, sql.c_str());
        const auto estado = PQresultStatus(respuesta);
        PQclear(respuesta);
        if (estado != PGRES_COMMAND_OK && estado != PGRES_TUPLES_OK)
            throw std::runtime_error(std::string(PQerrorMessage(linea)) + " in: " + sql);
    }

    void guarda(pruebas::Banco& banco)
    {
        if (banco.guarda().estado != ResultadoGuardado::Estado::Guardado || !banco.avisos->dichos.empty())
            throw std::runtime_error("the charge was not saved");
    }

    std::string en_el_servidor(const pruebas::Banco& banco, bool contable, const std::string& sql)
    {
        const auto& bases = banco.bases();
        return dynamic_cast<postgresql::Connection&>(*(contable ? bases.bexmor : bases.orvalin))
            .reescribe(sql, Donde::aqui());
    }

    /// The statements of the save that the spies have just seen. A row read under a lock and written back is
    /// a counter.
    Guion transcribe(const pruebas::Banco& banco)
    {
        Guion guion;
        for (const auto& dicha : banco.parte->dichas) {
            const bool contable = dicha.starts_with("contabilidad ");
            const auto resto = dicha.substr(dicha.find(' ') + 1);
            if (resto != "UPDATE") {
                const bool con_texto = resto.starts_with("EXEC ") || resto.starts_with("OPEN ");
                guion.push_back(
                    { contable, con_texto ? en_el_servidor(banco, contable, resto.substr(5)) : resto });
                continue;
            }
            auto& lectura = guion.back().sql; // SELECT * FROM tabla WHERE …
            const auto tabla = lectura.substr(14);
            const auto donde = tabla.find(' ');
            guion.push_back({ contable,
                "UPDATE " + tabla.substr(0, donde) + " SET Numero = Numero + 1" + tabla.substr(donde) });
            guion[guion.size() - 2].sql += " FOR UPDATE";
        }
        return guion;
    }

    void repite(const Guion& guion, PGconn* gestion, PGconn* contabilidad)
    {
        for (const auto& dicha : guion)
            ejecuta(dicha.contable ? contabilidad : gestion, dicha.sql);
    }

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

    std::vector<Guion> transcribe(int cuantos)
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
        const auto gestion = abre("uno_desnudo", "orvalin");
        const auto contabilidad = abre("uno_desnudo", "dbo");
        Medida componente;
        Medida bare;
        for (std::size_t i = 0; i < guiones.size(); ++i) {
            const auto una = [&] { componente.mide([&] { guarda(banco); }); };
            const auto otra
                = [&] { bare.mide([&] { repite(guiones[i], gestion.get(), contabilidad.get()); }); };
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
            const auto gestion = abre("lejos_desnudo_" + nombre, "orvalin", intermediario.por_aqui());
            const auto contabilidad = abre("lejos_desnudo_" + nombre, "dbo", intermediario.por_aqui());
            guarda(banco); // a session asks for the catalogue once
            intermediario.retrasa(viaje);
            Medida componente;
            Medida bare;
            const auto antes = intermediario.viajes();
            for (std::size_t i = 0; i < veces; ++i)
                componente.mide([&] { guarda(banco); });
            const auto viajes = (intermediario.viajes() - antes) / veces;
            for (std::size_t i = 0; i < veces; ++i)
                bare.mide([&] { repite(guiones[i], gestion.get(), contabilidad.get()); });
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
            const auto gestion = abre("desnudo_" + nombre, "orvalin");
            const auto contabilidad = abre("desnudo_" + nombre, "dbo");
            for (std::size_t i = puesto; i < guiones.size(); i += paso)
                repite(guiones[i], gestion.get(), contabilidad.get());
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
        const auto guiones = transcribe(400);
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
