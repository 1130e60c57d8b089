// What each view over 1,000,000 charges costs, half of them of the year before: over the sums that it
// consists of as doubles, each year by itself and without names, through the bare client library of SQLite,
// which are not exact.
#include "bench/Medida.hpp"
#include "bench/MuchosCargos.hpp"
#include "bench/SueloSqlite.hpp"
#include "host/bases/Bases.hpp"
#include "host/resumen/LecturaResumen.hpp"
#include "tests/integracion/Sedes.hpp"

#include <iostream>

namespace atipicos::bench {
namespace {

    constexpr std::size_t cargos = 1'000'000;
    constexpr int veces = 3;

    /// Every second charge a year earlier, and a line for each.
    void llena(sqlite3* base)
    {
        ejecuta(base, muchos_cargos(cargos));
        ejecuta(base,
            "UPDATE Proveedores_Cargos_Atipicos SET Cod_Ejercicio = 2025, Fecha = date(Fecha, '-1 year') "
            "WHERE "
            "Asiento % 2 = 0");
        ejecuta(base,
            "INSERT INTO Proveedores_Cargos_Atipicos_Lineas (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, "
            "Codigo, "
            "Num_Linea, Cod_Articulo, Descripcion, Unidades, Precio, Observ) SELECT Cod_Empresa, "
            "Cod_Ejercicio, "
            "Cod_Almacen, Codigo, 1, 1001 + Asiento % 32, 'Mercancía', 1, Importe, '' FROM "
            "Proveedores_Cargos_Atipicos");
    }

    std::string desnuda(const std::string& clave, int anio, bool de_lineas)
    {
        const std::string periodo = "pc.Cod_Empresa = 1 AND pc.Fecha >= '" + std::to_string(anio)
            + "-01-01' AND pc.Fecha < '" + std::to_string(anio + 1) + "-01-01'";
        if (!de_lineas)
            return "SELECT " + clave + ", COUNT(*), SUM(pc.Importe), SUM(pc.Impuesto_Importe) FROM "
                + "Proveedores_Cargos_Atipicos pc WHERE " + periodo + " GROUP BY " + clave;
        return "SELECT " + clave + ", COUNT(*), SUM(pl.Unidades * pl.Precio), SUM(pl.Unidades * pl.Precio * "
            + "pc.Impuesto) FROM Proveedores_Cargos_Atipicos pc JOIN Proveedores_Cargos_Atipicos_Lineas pl "
              "ON "
              "pl.Cod_Empresa = pc.Cod_Empresa AND pl.Cod_Ejercicio = pc.Cod_Ejercicio AND pl.Cod_Almacen = "
              "pc.Cod_Almacen AND pl.Codigo = pc.Codigo WHERE "
            + periodo + " GROUP BY " + clave;
    }

    void compara(adodb::Connection& orvalin, sqlite3* base, app::VistaResumen por, const std::string& clave)
    {
        const app::PeticionResumen peticion{ por,
            { Date::de_dia(2026, 1, 1).value(), Date::de_dia(2026, 12, 31).value() } };
        Medida componente;
        Medida bare;
        std::int64_t cuantos = 0;
        for (int i = 0; i < veces; ++i) {
            componente.mide([&] {
                const auto resumen = app::lee_resumen(orvalin, { 1, 1 }, peticion);
                cuantos = resumen.total().ahora.cuantos + resumen.total().antes.cuantos;
            });
            bare.mide([&] {
                for (const int anio : { 2025, 2026 })
                    ejecuta(base, desnuda(clave, anio, por == app::VistaResumen::articulo));
            });
        }
        if (cuantos != static_cast<std::int64_t>(cargos))
            throw std::runtime_error("the summary does not hold what it should");
        std::cout << "By " << app::palabra(por) << ":\n" << std::flush;
        componente.escribe("the view");
        bare.escribe("sums of doubles, bare");
        std::printf("  ratio of medians %.3f\n", componente.mediana() / bare.mediana());
    }

    void compara_todas()
    {
        const auto muestra = pruebas::en_carpeta().muestra();
        const auto lugar = muestra->lugar();
        const auto base = abre(lugar.carpeta() / fichero_empresa, false);
        llena(base.get());
        const auto abiertas = bases::abre_bases(lugar, { .solo_lectura = true });
        using enum app::VistaResumen;
        for (const auto& [por, clave] : { std::pair{ proveedor, "pc.Proveedor" }, { mes, "pc.Fecha" },
                 { almacen, "pc.Cod_Almacen" }, { articulo, "pl.Cod_Articulo" } })
            compara(*abiertas.orvalin, base.get(), por, clave);
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
