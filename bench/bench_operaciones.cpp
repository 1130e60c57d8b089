// What each operation costs over the same statements through the bare client library, on SQLite and on
// PostgreSQL, durable, in turns: save, change, delete, details, schedule of payments, entry. Then how the
// time grows with the charges that there are, the lines of a charge and its forecasts.
#include "bench/Medida.hpp"
#include "bench/MuchosCargos.hpp"
#include "bench/Suelo.hpp"
#include "browser/EliminarAtipico.hpp"
#include "charges/Impuesto.hpp"
#include "context/Transaccion.hpp"

#include <array>
#include <functional>
#include <initializer_list>
#include <iostream>
#include <optional>

namespace atipicos::bench {
namespace {

    constexpr std::size_t veces = 200;

    using Operacion = std::function<void(pruebas::Banco&, std::size_t vez)>;

    std::string codigo(std::size_t vez) { return "AT" + std::to_string(260'001 + vez); }

    void exige(bool cierto, const char* que)
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
                     [](pruebas::Banco& banco, std::size_t) {
                         exige(banco.guarda().estado == Estado::Guardado, "not saved");
                     } },
            { "change of a stored charge",
                [](pruebas::Banco& banco, std::size_t vez) {
                    exige(banco.guarda(codigo(vez)).estado == Estado::Guardado, "not changed");
                } },
            { "details of a charge",
                [](pruebas::Banco&, std::size_t vez) {
                    int lineas = 0;
                    Cargar_Detalles({ 2026, 1, codigo(vez) }, [&](const LineaDetalle&) { ++lineas; });
                    exige(lineas == 3, "no details");
                } },
            { "schedule, 3 instalments",
                [](pruebas::Banco&, std::size_t) {
                    exige(GenerarPrev(a_contabilizar(104)).previsiones.size() == 3, "no schedule");
                } },
            { "entry of 3 lines, rolled back",
                [](pruebas::Banco&, std::size_t vez) {
                    const Transaccion transaccion(*modComun::ConexionBexmor());
                    std::int32_t asiento = 0;
                    GenerarAsiento(codigo(vez), 1, asiento, datos_asiento(3));
                    exige(asiento > 0, "no entry");
                } },
            { "deletion", [](pruebas::Banco&, std::size_t vez) {
                 exige(EliminarAtipico({ 2026, 1, codigo(vez) }), "not deleted");
             } } };
    }

    /// A company with charges, and copies of it: one for the component, one to be bare, one to learn the
    /// statements.
    class Taller {
    public:
        explicit Taller(const pruebas::Sede& sede)
            : m_en_servidor(sede.nombre != "sqlite")
            , m_muestras{ sede.muestra(), sede.muestra(), sede.muestra() }
        {
            for (const auto& muestra : m_muestras) {
                pruebas::Banco banco(muestra->lugar());
                for (std::size_t i = 0; i < veces; ++i)
                    banco.guarda();
            }
        }

        void compara(const char* nombre, const Operacion& operacion)
        {
            const auto guiones = aprende(operacion);
            pruebas::Banco banco(m_muestras[0]->lugar());
            const auto suelo = suelo_de(m_muestras[1]->lugar());
            Medida componente;
            Medida desnuda;
            for (std::size_t vez = 0; vez < veces; ++vez) {
                banco.parte->dichas.clear();
                const auto una = [&] { componente.mide([&] { operacion(banco, vez); }); };
                const auto otra = [&] { desnuda.mide([&] { suelo->repite(guiones[vez]); }); };
                if (vez % 2 == 0) { // neither side always comes first
                    una();
                    otra();
                } else {
                    otra();
                    una();
                }
            }
            std::printf("%s (%zu statements)\n", nombre, guiones.front().size());
            componente.escribe("through the component");
            desnuda.escribe("bare client library");
            std::printf("  ratio of medians %.3f\n", componente.mediana() / desnuda.mediana());
        }

    private:
        std::vector<Guion> aprende(const Operacion& operacion)
        {
            std::vector<Guion> guiones;
            pruebas::Banco banco(m_muestras[2]->lugar());
            Guion oido;
            std::optional<Taquigrafo> gestion;
            std::optional<Taquigrafo> contabilidad;
            if (!m_en_servidor) {
                gestion.emplace(*banco.bases().orvalin, false, oido);
                contabilidad.emplace(*banco.bases().bexmor, true, oido);
            }
            for (std::size_t vez = 0; vez < veces; ++vez) {
                banco.parte->dichas.clear();
                oido.clear();
                operacion(banco, vez);
                guiones.push_back(m_en_servidor ? transcribe(banco) : oido);
            }
            return guiones;
        }

        bool m_en_servidor;
        std::array<std::unique_ptr<pruebas::Muestra>, 3> m_muestras;
    };

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
            const auto base = abre(muestra->lugar().carpeta() / "orvalin.db", true);
            ejecuta(base.get(), muchos_cargos(cargos));
            pruebas::Banco banco(muestra->lugar());
            return mediana_de(30, [&] { banco.guarda({}, 5); });
        });
        const pruebas::Banco banco;
        crece("entry, by lines", { 1, 10, 100, 1'000 }, [](std::size_t lineas) {
            return mediana_de(9, [&] {
                const Transaccion transaccion(*modComun::ConexionBexmor());
                std::int32_t asiento = 0;
                GenerarAsiento("AT269999", 1, asiento, datos_asiento(lineas));
                exige(asiento > 0, "no entry");
            });
        });
        crece("schedule, by instalments", { 1, 3, 12 }, [](std::size_t plazos) {
            const std::int32_t proveedor = plazos == 1 ? 101 : plazos == 3 ? 104 : 107;
            return mediana_de(200, [&] {
                exige(GenerarPrev(a_contabilizar(proveedor)).previsiones.size() == plazos, "no schedule");
            });
        });
    }

}
}

int main()
{
    using namespace atipicos;
    try {
        for (const auto& sede : pruebas::sedes_sin_odbc()) {
            std::printf("== %s%s%s\n", sede.nombre.c_str(), sede.falta.empty() ? "" : ": skipped, ",
                sede.falta.c_str());
            if (!sede.falta.empty())
                continue;
            bench::Taller taller(sede);
            for (const auto& [nombre, operacion] : bench::operaciones())
                taller.compara(nombre, operacion);
        }
        bench::crecimiento();
        std::printf("Peak memory of this program: %.1f MB\n", bench::pico_de_memoria());
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
