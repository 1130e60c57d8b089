// What each operation costs over the same statements through the bare client library, on SQLite and on
// PostgreSQL, durable, in turns: save, change, delete, details, schedule of payments, entry. Then how the
// time grows with the charges that there are, the lines of a charge and its forecasts. The literal floor
// sends each text as it comes, in two sessions and with two commits; the prepared floor prepares each shape
// once and has one session and one commit.
#include "bench/MuchosCargos.hpp"
#include "bench/Nucleo.hpp"
#include "bench/Sitio.hpp"
#include "bench/Turnos.hpp"
#include "browser/EliminarAtipico.hpp"
#include "charges/Impuesto.hpp"
#include "context/Transaccion.hpp"
#include "editor/GuardarAtipico.hpp"
#include "posting/GenerarAsiento.hpp"
#include "posting/GenerarPrev.hpp"

#include <functional>
#include <initializer_list>
#include <iostream>

namespace atipicos::bench {
namespace {

    constexpr std::size_t veces = 200;

    using Operacion = std::function<void(std::size_t vez)>;

    std::string codigo(std::size_t vez) { return "AT" + std::to_string(260'001 + vez); }

    void comprueba_que(bool cierto, const char* que)
    {
        if (!cierto)
            throw std::runtime_error(que);
    }

    Contabilizacion a_contabilizar(std::int32_t proveedor)
    {
        return { Currency::de_texto("231.96"), proveedor, *Date::de_dia(2026, 11, 21), 1, true };
    }

    DatosAsiento datos_asiento(std::size_t lineas)
    {
        DatosAsiento datos{ *Date::de_dia(2026, 11, 21), 104, "Conservas La Graciosa, S.A.", 1, {}, {}, false,
            {} };
        for (std::size_t i = 0; i < lineas; ++i) {
            datos.Cargos.push_back({ Currency::de_entero(10), "" });
            datos.Total += Currency::de_entero(10);
        }
        return datos;
    }

    std::vector<std::pair<const char*, Operacion>> operaciones()
    {
        using Estado = ResultadoGuardado::Estado;
        return { { "save, 3 lines, 3 forecasts",
                     [](std::size_t) {
                         comprueba_que(pruebas::guarda_un_cargo().estado == Estado::Guardado, "not saved");
                     } },
            { "change of a stored charge",
                [](std::size_t vez) {
                    comprueba_que(
                        pruebas::guarda_un_cargo(codigo(vez)).estado == Estado::Guardado, "not changed");
                } },
            { "details of a charge",
                [](std::size_t vez) {
                    int lineas = 0;
                    Cargar_Detalles({ 2026, 1, codigo(vez) }, [&](const LineaDetalle&) { ++lineas; });
                    comprueba_que(lineas == 3, "no details");
                } },
            { "schedule, 3 instalments",
                [](std::size_t) {
                    comprueba_que(GenerarPrev(a_contabilizar(104)).previsiones.size() == 3, "no schedule");
                } },
            { "entry of 3 lines, rolled back",
                [](std::size_t vez) {
                    const Transaccion transaccion(modComun::ConexionBexmor());
                    std::int32_t asiento = 0;
                    GenerarAsiento(codigo(vez), 1, asiento, datos_asiento(3));
                    comprueba_que(asiento > 0, "no entry");
                } },
            { "deletion", [](std::size_t vez) {
                 comprueba_que(EliminarAtipico({ 2026, 1, codigo(vez) }), "not deleted");
             } } };
    }

    /// Each operation on the charges that the ones before it have left.
    void compara(Sitio& sitio)
    {
        static_cast<void>(sitio.copia("guiones"));
        static_cast<void>(sitio.copia("componente"));
        static_cast<void>(sitio.copia("formas"));
        sitio.copia_para_textos("textos");
        for (const auto& [nombre, operacion] : operaciones()) {
            const auto guiones = aprende(sitio.lugar("guiones"), veces, operacion);
            const auto traducidas = sitio.traduce(guiones);
            const Puesto puesto(sitio.lugar("componente"));
            const auto textos = sitio.literal("textos", traducidas);
            const auto formas = sitio.preparado("formas", traducidas);
            formas->prepara();
            std::vector<Corredor> corredores{
                { "through the component", operacion },
                { "literal floor", [&](std::size_t vez) { textos->repite(vez); } },
                { "prepared floor", [&](std::size_t vez) { formas->repite(vez); } },
            };
            por_turnos(veces, corredores);
            exige_lo_mismo({ sitio.preparado("componente", traducidas).get(), textos.get(), formas.get() });
            std::printf("%s (%zu statements)\n", nombre, guiones.back().size());
            escribe(corredores);
        }
    }

    void crece(const char* que, std::initializer_list<std::size_t> tamanos,
        const std::function<double(std::size_t)>& milisegundos)
    {
        std::vector<std::pair<double, double>> puntos;
        std::printf("%s:", que);
        for (const auto tamano : tamanos) {
            puntos.emplace_back(static_cast<double>(tamano), milisegundos(tamano));
            std::printf(" %zu: %.3f ms;", tamano, puntos.back().second);
        }
        std::printf(" exponent %.2f\n", exponente(puntos));
    }

    template <class Trabajo> double mediana_de(int cuantas, Trabajo trabajo)
    {
        Medida medida;
        for (int i = 0; i < cuantas; ++i)
            medida.mide(trabajo);
        return medida.mediana();
    }

    void crecimiento()
    {
        std::printf("\nGrowth (SQLite; medians)\n");
        crece("save, by charges that there are", { 1'000, 10'000, 100'000 }, [](std::size_t cargos) {
            const auto muestra = pruebas::en_carpeta().muestra();
            const auto base = abre(muestra->lugar().carpeta() / fichero_empresa, true);
            ejecuta(base.get(), muchos_cargos(cargos));
            pruebas::Banco banco(muestra->lugar());
            return mediana_de(30, [&] { banco.guarda({}, 5); });
        });
        const pruebas::Banco banco;
        crece("entry, by lines", { 1, 10, 100, 1'000 }, [](std::size_t lineas) {
            return mediana_de(9, [&] {
                const Transaccion transaccion(modComun::ConexionBexmor());
                std::int32_t asiento = 0;
                GenerarAsiento("AT269999", 1, asiento, datos_asiento(lineas));
                comprueba_que(asiento > 0, "no entry");
            });
        });
        crece("schedule, by instalments", { 1, 3, 12 }, [](std::size_t plazos) {
            const std::int32_t proveedor = plazos == 1 ? 101 : plazos == 3 ? 104 : 107;
            return mediana_de(200, [&] {
                comprueba_que(
                    GenerarPrev(a_contabilizar(proveedor)).previsiones.size() == plazos, "no schedule");
            });
        });
    }

}
}

int main()
{
    using namespace atipicos;
    try {
        {
            std::printf("== SQLite\n");
            bench::SitioSqlite sitio(bench::veces, true);
            bench::compara(sitio);
        }
        if (const auto falta = pruebas::ServidorPostgresql::falta(); falta.empty()) {
            const bench::EnUnNucleo los_dos;
            std::printf("== PostgreSQL, program and server on core %zu\n", los_dos.nucleo());
            bench::SitioPostgresql sitio(bench::veces);
            bench::compara(sitio);
        } else {
            std::printf("== PostgreSQL: skipped, %s\n", falta.c_str());
        }
        bench::crecimiento();
        std::printf("Peak memory of this program: %.1f MB\n", bench::pico_de_memoria());
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
