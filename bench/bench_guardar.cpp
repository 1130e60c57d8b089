// What a save costs over the same statements through bare libsqlite3: charges of 3 lines with tax and 3
// forecasts, once durable and once without waiting for the disk, and from opening to the first saved charge.
#include "bench/Medida.hpp"
#include "bench/Taquigrafo.hpp"
#include "editor/GuardarAtipico.hpp"
#include "engines/sqlite/Connection.hpp"
#include "host/app/Sesion.hpp"

#include <iostream>
#include <utility>

namespace atipicos::bench {
namespace {

    void guarda_un_cargo()
    {
        clsAtipico cargo;
        CargoTecleado tecleado{ "", 1, 104, "Conservas La Graciosa, S.A.", *Date::de_dia(2026, 11, 21),
            "Mercancía dañada a la recepción", false, {}, {} };
        for (const auto* costo : { "5.6325", "1.1975", "12.5" }) {
            const Currency precio = Currency::de_texto(costo);
            cargo.Lineas->Add(
                1006, "Atún en aceite, lata abollada", Currency::de_entero(12), precio, "lote 1234");
            const Currency importe = Currency::de_crudo(precio.crudo() * 12 / 100 * 100);
            tecleado.Cargos.push_back({ importe, "" });
            tecleado.Total += importe;
        }
        const auto resultado = GuardarAtipico(cargo, tecleado, [](const Contabilizacion& datos) {
            std::vector<Prevision> previsiones;
            for (const auto& propuesta : GenerarPrev(datos).previsiones)
                previsiones.push_back(propuesta.prevision);
            return std::optional(previsiones);
        });
        if (resultado.estado != ResultadoGuardado::Estado::Guardado || resultado.Asiento == 0)
            throw std::runtime_error("the charge was not saved");
    }

    app::OpcionesComunes comunes(const std::filesystem::path& carpeta)
    {
        app::OpcionesComunes opciones;
        opciones.datos = carpeta;
        return opciones;
    }

    /// The statements of `cuantos` saves on a database of their own, one after the other.
    std::vector<Guion> transcribe(const std::filesystem::path& carpeta, int cuantos)
    {
        bases::crea_bases(carpeta, false);
        app::Sesion sesion(comunes(carpeta), { .sincronizacion_completa = false });
        Guion guion;
        const Taquigrafo gestion(*sesion.bases.orvalin, false, guion);
        const Taquigrafo contabilidad(*sesion.bases.bexmor, true, guion);
        std::vector<Guion> guiones;
        for (int i = 0; i < cuantos; ++i) {
            guarda_un_cargo();
            guiones.push_back(std::exchange(guion, {}));
        }
        return guiones;
    }

    void repite(const Guion& guion, sqlite3* gestion, sqlite3* contabilidad)
    {
        for (const auto& dicha : guion)
            ejecuta(dicha.contable ? contabilidad : gestion, dicha.sql);
    }

    void compara(const Carpeta& carpeta, const char* titulo, const std::string& nombre,
        const std::vector<Guion>& guiones, bool duradera)
    {
        const auto del_componente = carpeta / ("componente-" + nombre).c_str();
        const auto desnuda = carpeta / ("desnuda-" + nombre).c_str();
        bases::crea_bases(del_componente, false);
        bases::crea_bases(desnuda, false);
        app::Sesion sesion(comunes(del_componente), { .sincronizacion_completa = duradera });
        const auto contabilidad = abre(desnuda / "bexmor.db", duradera);
        const auto gestion = abre(desnuda / "orvalin.db", duradera, desnuda / "bexmor.db");

        Medida componente;
        Medida bare;
        for (std::size_t i = 0; i < guiones.size(); ++i) {
            const auto una = [&] { componente.mide(guarda_un_cargo); };
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
        std::printf("%s, %zu statements a save\n", titulo, guiones.front().size());
        componente.escribe("through the component");
        bare.escribe("bare libsqlite3");
        std::printf("  ratio of medians %.3f\n\n", componente.mediana() / bare.mediana());
    }

    void mide_arranque(const Carpeta& carpeta, const Guion& guion)
    {
        Medida componente;
        Medida bare;
        for (int i = 0; i < 15; ++i) {
            const auto una = carpeta / ("arranque-c" + std::to_string(i)).c_str();
            const auto otra = carpeta / ("arranque-d" + std::to_string(i)).c_str();
            bases::crea_bases(una, false);
            bases::crea_bases(otra, false);
            componente.mide([&] {
                app::Sesion sesion(comunes(una));
                guarda_un_cargo();
            });
            bare.mide([&] {
                const auto contabilidad = abre(otra / "bexmor.db", true);
                const auto gestion = abre(otra / "orvalin.db", true, otra / "bexmor.db");
                repite(guion, gestion.get(), contabilidad.get());
            });
        }
        std::printf("From opening to the first saved charge\n");
        componente.escribe("through the component");
        bare.escribe("bare libsqlite3");
        std::printf("  difference of medians %.3f ms\n", componente.mediana() - bare.mediana());
    }

}
}

int main()
{
    using namespace atipicos::bench;
    try {
        const Carpeta carpeta;
        const auto guiones = transcribe(carpeta / "guion", 1'000);
        compara(carpeta, "Durable (two commits that wait for the disk)", "d",
            { guiones.begin(), guiones.begin() + 400 }, true);
        compara(carpeta, "Not durable (synchronous=OFF)", "n", guiones, false);
        mide_arranque(carpeta, guiones.front());
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
