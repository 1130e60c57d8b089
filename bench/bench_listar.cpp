// What the list of 100,000 charges costs over the same statement through bare libsqlite3, both turned into
// rows of thirteen tab-separated cells; the component's are formatted as a person reads them.
#include "bench/CienMilCargos.hpp"
#include "bench/ListaDesnuda.hpp"
#include "bench/Medida.hpp"
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

    void compara()
    {
        const Carpeta carpeta;
        const auto datos = carpeta / "datos";
        orvalin::crea_bases(datos, false);
        app::OpcionesComunes opciones;
        opciones.datos = datos;
        app::Sesion sesion(opciones);
        const auto base = abre(datos / "orvalin.db", true, datos / "bexmor.db");
        ejecuta(base.get(), cien_mil_cargos);

        const FiltroAtipicos filtro{ "01/01/2026", "31/12/2026" };
        const auto sql = dynamic_cast<sqlite::Connection&>(*sesion.bases.orvalin)
                             .reescribe(instruccion_lista(filtro, 1, 1), Donde::aqui());
        Medida componente;
        Medida bare;
        std::size_t filas = 0;
        std::size_t desnudas = 0;
        for (int i = 0; i < 15; ++i) {
            componente.mide([&] { filas = lista_del_componente(filtro).size(); });
            bare.mide([&] { desnudas = lista_desnuda(base.get(), sql).size(); });
        }
        if (filas != 100'000 || desnudas != filas)
            throw std::runtime_error("the lists do not hold what they should");
        std::printf("List of %zu charges as rows of text\n", filas);
        componente.escribe("through the component");
        bare.escribe("bare libsqlite3");
        std::printf("  ratio of medians %.3f\n", componente.mediana() / bare.mediana());
    }

}
}

int main()
{
    try {
        atipicos::bench::compara();
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
