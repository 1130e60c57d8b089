// What the list of 100,000 charges costs over the same statement through bare libsqlite3, both turned into
// rows of thirteen tab-separated cells; the component's are formatted as a person reads them.
#include "bench/Desnudo.hpp"
#include "bench/Medida.hpp"
#include "browser/ListaAtipicos.hpp"
#include "engines/sqlite/Connection.hpp"
#include "host/app/Sesion.hpp"

#include <array>
#include <iostream>

namespace atipicos::bench {
namespace {

    constexpr auto cargos = R"(
        WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 100000)
        INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Proveedor, Fecha,
            Importe, Asiento, EmpContable, EjContable, Usuario, Hora, Observ, Cod_Compra, Documento, Impuesto,
            Impuesto_Importe, Tipo)
        SELECT 1, 2026, 1 + i % 4, 'AT' || (260000 + i), 101 + i % 14, date('2026-01-01', '+' || (i * 7 % 365) || ' days'),
            (i * 37 % 1000000) / 100.0, i, 1, 2026, 1 + i % 3, '2026-11-21 09:05:03', 'Mercancía dañada, albarán ' || i, 0, 0,
            7, round(i * 37 % 1000000 / 100.0 * 0.07, 2), 0 FROM n)";

    /// The columns of the list in its order, by name.
    constexpr std::array<const char*, 13> columnas{ "Codigo", "Cod_Almacen", "Nombre_Almacen", "Proveedor",
        "Nombre_Proveedor", "Fecha", "Importe", "Impuesto_Importe", "Impuesto", "Asiento", "Usuario",
        "Nombre_Usuario", "Observ" };

    std::array<int, 13> posiciones(sqlite3_stmt* instruccion)
    {
        std::array<int, 13> resultado{};
        for (std::size_t i = 0; i < columnas.size(); ++i)
            for (int j = 0; j < sqlite3_column_count(instruccion); ++j)
                if (std::string(columnas[i]) == sqlite3_column_name(instruccion, j))
                    resultado[i] = j;
        return resultado;
    }

    std::vector<std::string> lista_desnuda(sqlite3* base, const std::string& sql)
    {
        std::vector<std::string> filas;
        sqlite3_stmt* instruccion = nullptr;
        comprueba(sqlite3_prepare_v2(base, sql.c_str(), -1, &instruccion, nullptr), base);
        const auto donde = posiciones(instruccion);
        while (sqlite3_step(instruccion) == SQLITE_ROW) {
            std::string fila;
            for (const int columna : donde) {
                if (const auto* texto
                    = reinterpret_cast<const char*>(sqlite3_column_text(instruccion, columna)))
                    fila.append(texto, static_cast<std::size_t>(sqlite3_column_bytes(instruccion, columna)));
                fila += '\t';
            }
            filas.push_back(std::move(fila));
        }
        sqlite3_finalize(instruccion);
        return filas;
    }

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
        ejecuta(base.get(), cargos);

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
