#include "host/ordenes/LineaDeOrdenes.hpp"

#include "host/ordenes/Argumentos.hpp"
#include "host/ordenes/TablaDeOrdenes.hpp"
#include "host/terminal/Interrupcion.hpp"
#include "runtime/MotivoSistema.hpp"

#include <CLI/CLI.hpp>

#include <csignal>
#include <filesystem>
#include <iostream>
#include <new>
#include <utility>
#include <vector>

namespace atipicos::app {

namespace {

    /// The command line with all its commands, and what runs of them.
    class Linea {
    public:
        explicit Linea(const Ventanas& ventanas)
            : m_ventanas(ventanas)
        {
            agrega_comunes(m_app, m_comunes);
            for (const auto& una : ordenes()) {
                auto* orden = m_app.add_subcommand(una.nombre, una.ayuda);
                m_ordenes.emplace_back(orden, una.declara(*orden, { m_comunes, m_ventanas }));
            }
            en_castellano(m_app);
            m_app.set_version_flag("--version", "atipicos " ATIPICOS_VERSION, "Muestra la versión y termina")
                ->group("Opciones");
            m_app.require_subcommand(0, 1);
        }

        int ejecuta(int argc, const char* const* argv)
        {
            exige_valores(m_app, std::span(argv, static_cast<std::size_t>(argc)).subspan(argc > 0 ? 1 : 0));
            try {
                m_app.parse(argc, argv);
            } catch (const CLI::CallForHelp&) {
                const auto elegidas = m_app.get_subcommands();
                std::cout << (elegidas.empty() ? m_app.help() : elegidas.front()->help("atipicos"));
                return hecho;
            } catch (const CLI::CallForVersion& version) {
                std::cout << version.what() << '\n';
                return hecho;
            } catch (const CLI::ParseError& error) {
                throw MalUsada(explica(m_app, error));
            }
            for (const auto& [orden, corre] : m_ordenes)
                if (orden->parsed())
                    return corre();
            return m_ventanas.principal({ m_comunes, m_app.count("--empresa") > 0,
                m_app.count("--usuario") > 0, m_app.count("--datos") + m_app.count("--conexion") > 0 });
        }

    private:
        const Ventanas& m_ventanas;
        CLI::App m_app{ "Registra cargos y abonos atípicos a proveedores y los contabiliza.", "atipicos" };
        OpcionesComunes m_comunes;
        std::vector<std::pair<CLI::App*, std::function<int()>>> m_ordenes;
    };

    int ejecuta_orden(int argc, const char* const* argv, const Ventanas& ventanas)
    {
        try {
            const int estado = Linea(ventanas).ejecuta(argc, argv);
            std::cout.flush();
            if (!std::cout)
                throw Error(no_hecho, "atipicos", "No se pudo escribir todo en la salida.");
            return estado;
        } catch (const Interrumpido&) {
            std::cerr << "atipicos: Interrumpido.\n";
            return no_hecho;
        } catch (const MalUsada& error) {
            std::cerr << "atipicos: " << error.what() << "\nVea: atipicos --help\n";
            return mal_usado;
        } catch (const std::filesystem::filesystem_error& error) {
            std::cerr << "atipicos: «" << error.path1().string()
                      << "»: " << motivo_sistema(error.code().value()) << ".\n";
            return no_hecho;
        } catch (const std::bad_alloc&) {
            std::cerr << "atipicos: No hay memoria suficiente.\n";
            return no_hecho;
        } catch (const std::exception& error) {
            std::cerr << "atipicos: " << error.what() << '\n';
            return no_hecho;
        }
    }

}

int ejecuta(int argc, const char* const* argv, const Ventanas& ventanas)
{
    std::signal(SIGPIPE, SIG_IGN); // a reader that goes away is a failed write, told like any other
    const int estado = ejecuta_orden(argc, argv, ventanas);
    return Interrupcion::senal() == 0 ? estado : Interrupcion::estado();
}

} // namespace atipicos::app
