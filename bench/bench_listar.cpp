// What the list of 1,000 to 1,000,000 charges costs over the same statement through bare libsqlite3, both
// turned into rows of thirteen tab-separated cells; the component's are formatted as a person reads them.
#include "bench/ListaDesnuda.hpp"
#include "bench/Medida.hpp"
#include "bench/MuchosCargos.hpp"
#include "browser/ListaAtipicos.hpp"
#include "engines/sqlite/Connection.hpp"
#include "host/app/Sesion.hpp"

#include <iostream>

namespace atipicos::bench {
namespace {

    std::vector<std::string> lista_del_componente(const FiltroAtipicos& filtro)
    {
        std::vector<std::string> filas;
        Cargar_Atipicos(filtro, [&](const CargoListado& cargo) { anexa_fila(filas.emplace_back(), cargo); });
        return filas;
    }

    /// The median of the component in milliseconds.
    double compara(std::size_t cargos, int veces)
    {
        const Carpeta carpeta;
        const auto datos = carpeta / "datos";
        orvalin::crea_bases(datos, false);
        app::OpcionesComunes opciones;
        opciones.datos = datos;
        app::Sesion sesion(opciones);
        const auto base = abre(datos / "orvalin.db", true, datos / "bexmor.db");
        ejecuta(base.get(), muchos_cargos(cargos));

        const FiltroAtipicos filtro{ "01/01/2026", "31/12/2026" };
        const auto sql = dynamic_cast<sqlite::Connection&>(*sesion.bases.orvalin)
                             .reescribe(instruccion_lista(filtro, 1, 1), Donde::aqui());
        Medida componente;
        Medida bare;
        std::size_t filas = 0;
        std::size_t desnudas = 0;
        for (int i = 0; i < veces; ++i) {
            const auto una = [&] { componente.mide([&] { filas = lista_del_componente(filtro).size(); }); };
            const auto otra = [&] { bare.mide([&] { desnudas = lista_desnuda(base.get(), sql).size(); }); };
            if (i % 2 == 0) { // neither side always comes first
                una();
                otra();
            } else {
                otra();
                una();
            }
        }
        if (filas != cargos || desnudas != filas)
            throw std::runtime_error("the lists do not hold what they should");
        std::printf("List of %zu charges as rows of text\n", filas);
        componente.escribe("through the component");
        bare.escribe("bare libsqlite3");
        std::printf("  ratio of medians %.3f\n", componente.mediana() / bare.mediana());
        return componente.mediana();
    }

    void compara_todas()
    {
        std::vector<std::pair<double, double>> puntos;
        for (const auto& [cargos, veces] :
            { std::pair<std::size_t, int>{ 1'000, 101 }, { 10'000, 41 }, { 100'000, 11 }, { 1'000'000, 3 } })
            puntos.emplace_back(static_cast<double>(cargos), compara(cargos, veces));
        std::printf("Growth with the number of charges: exponent %.2f\n", exponente(puntos));
        std::printf("Peak memory of this program: %.1f MB\n", pico_de_memoria());
    }

}
}

int main()
{
    try {
        atipicos::bench::compara_todas();
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
