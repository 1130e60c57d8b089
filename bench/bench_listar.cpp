// What the list of 1,000 to 1,000,000 charges costs over the same statement through the bare client library,
// both turned into rows of thirteen tab-separated cells; the component's are formatted as a person reads
// them.
#include "bench/ListaDesnuda.hpp"
#include "bench/Medida.hpp"
#include "bench/MuchosCargos.hpp"
#include "bench/SueloPostgresql.hpp"
#include "bench/SueloSqlite.hpp"
#include "browser/ListaAtipicos.hpp"
#include "host/sesion/Sesion.hpp"
#include "tests/integracion/Sedes.hpp"

#include <functional>
#include <iostream>

namespace atipicos::bench {
namespace {

    using Filas = std::vector<std::string>;

    Filas lista_del_componente(const FiltroAtipicos& filtro)
    {
        Filas filas;
        Cargar_Atipicos(filtro, [&](const CargoListado& cargo) { anexa_fila(filas.emplace_back(), cargo); });
        return filas;
    }

    Filas lista_desnuda(PGconn* linea, const std::string& sql)
    {
        const auto respuesta = pide(linea, sql);
        std::array<int, columnas.size()> donde{};
        for (std::size_t i = 0; i < columnas.size(); ++i)
            donde[i] = PQfnumber(respuesta.get(), columnas[i]);
        Filas filas;
        for (int fila = 0; fila < PQntuples(respuesta.get()); ++fila) {
            auto& texto = filas.emplace_back();
            for (const int columna : donde)
                texto.append(PQgetvalue(respuesta.get(), fila, columna)).append(1, '\t');
        }
        return filas;
    }

    /// A company with so many charges, and its list through the bare library.
    class Lista {
    public:
        Lista(const pruebas::Sede& sede, std::size_t cargos)
            : m_muestra(sede.muestra())
        {
            const auto lugar = m_muestra->lugar();
            if (lugar.clase() == bases::Lugar::Clase::carpeta) {
                m_base = abre(lugar.carpeta() / fichero_empresa, true);
                ejecuta(m_base.get(), muchos_cargos(cargos));
                catalogo = catalogos_de_empresa(m_base.get())[0];
                desnuda = [this](const std::string& sql) { return bench::lista_desnuda(m_base.get(), sql); };
            } else {
                m_linea = conecta(lugar.direccion(), "orvalin");
                pide(m_linea.get(), muchos_cargos_en_postgresql(cargos));
                pide(m_linea.get(), "ANALYZE");
                catalogo = catalogos_del_servidor(m_linea.get(), true)[0];
                desnuda = [this](const std::string& sql) { return lista_desnuda(m_linea.get(), sql); };
            }
        }

        [[nodiscard]] bases::Lugar lugar() const { return m_muestra->lugar(); }
        std::function<Filas(const std::string& sql)> desnuda;
        sql::Catalogo catalogo;

    private:
        std::unique_ptr<pruebas::Muestra> m_muestra;
        Base m_base;
        Linea m_linea;
    };

    /// The median of the component in milliseconds.
    double compara(const pruebas::Sede& sede, std::size_t cargos, int veces)
    {
        const Lista lista(sede, cargos);
        app::OpcionesComunes opciones;
        if (lista.lugar().clase() == bases::Lugar::Clase::carpeta)
            opciones.datos = lista.lugar().carpeta();
        else
            opciones.conexion = lista.lugar().direccion();
        app::Sesion sesion(opciones);

        const FiltroAtipicos filtro{ "01/01/2026", "31/12/2026" };
        const auto sql = sql::reescribe(instruccion_lista(filtro, 1, 1), lista.catalogo);
        Medida componente;
        Medida bare;
        std::size_t filas = 0;
        std::size_t desnudas = 0;
        for (int i = 0; i < veces; ++i) {
            const auto una = [&] { componente.mide([&] { filas = lista_del_componente(filtro).size(); }); };
            const auto otra = [&] { bare.mide([&] { desnudas = lista.desnuda(sql).size(); }); };
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
        std::printf("List of %zu charges as rows of text, %s\n", filas, sede.nombre.c_str());
        componente.escribe("through the component");
        bare.escribe("bare client library");
        std::printf("  ratio of medians %.3f\n", componente.mediana() / bare.mediana());
        return componente.mediana();
    }

    void compara_todas(const pruebas::Sede& sede, std::initializer_list<std::pair<std::size_t, int>> cuantos)
    {
        std::vector<std::pair<double, double>> puntos;
        for (const auto& [cargos, veces] : cuantos)
            puntos.emplace_back(static_cast<double>(cargos), compara(sede, cargos, veces));
        std::printf(
            "Growth with the number of charges, %s: exponent %.2f\n", sede.nombre.c_str(), exponente(puntos));
        std::printf("Peak memory of this program so far: %.1f MB\n\n", pico_de_memoria());
    }

}
}

int main()
{
    using namespace atipicos;
    try {
        for (const auto& sede : pruebas::sedes_sin_odbc()) {
            if (sede.falta.empty())
                bench::compara_todas(
                    sede, { { 1'000, 101 }, { 10'000, 41 }, { 100'000, 11 }, { 1'000'000, 3 } });
            else
                std::cout << sede.nombre << ": " << sede.falta << '\n';
        }
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
