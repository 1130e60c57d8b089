// The nth allocation of a save, a change, a deletion and a list fails: the person is told, nothing is half
// done, and the next save works. Every n of a short stride; with ATIPICOS_PRUEBA_LARGA every single one.
#include "browser/EliminarAtipico.hpp"
#include "browser/ListaAtipicos.hpp"
#include "host/comprobacion/Verificacion.hpp"
#include "tests/integracion/Banco.hpp"

#include <gmock/gmock.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <new>
#include <sys/wait.h>
#include <unistd.h>

namespace {

bool contando = false;
std::size_t asignadas = 0;
std::size_t falla_la = 0; ///< 0: none

}

void* operator new(std::size_t tamano)
{
    if (contando && ++asignadas == falla_la)
        throw std::bad_alloc();
    if (void* memoria = std::malloc(tamano == 0 ? 1 : tamano))
        return memoria;
    throw std::bad_alloc();
}
void operator delete(void* memoria) noexcept { std::free(memoria); }
void operator delete(void* memoria, std::size_t) noexcept { std::free(memoria); }

namespace atipicos {
namespace {

    using pruebas::Banco;

    /// What a process tells of what it did: 0 when all was as it must be.
    enum class Veredicto { bien, sin_aviso, a_medias, no_sigue, otra_excepcion, sin_fallo = 42 };

    struct Operacion {
        const char* nombre;
        /// True when it was done, false when it was told that it was not.
        std::function<bool(Banco&, const std::string& codigo)> haz;
        std::int32_t cargos; ///< afterwards, when it was done; there is one before
    };

    std::vector<Operacion> operaciones()
    {
        const auto guardado = [](const ResultadoGuardado& resultado) {
            return resultado.estado == ResultadoGuardado::Estado::Guardado;
        };
        return { { "save", [=](Banco& banco, const std::string&) { return guardado(banco.guarda()); }, 2 },
            { "change",
                [=](Banco& banco, const std::string& codigo) { return guardado(banco.guarda(codigo)); }, 1 },
            { "delete",
                [](Banco&, const std::string& codigo) {
                    return EliminarAtipico({ 2026, 1, codigo });
                },
                0 },
            { "list",
                [](Banco&, const std::string&) {
                    Cargar_Atipicos({ "01/01/2026", "31/12/2026" }, [](const CargoListado&) {});
                    return true;
                },
                1 } };
    }

    /// Whether the charges are as before or as after, each with its entry, or without it when the second
    /// commit failed. A save whose error was shown by one of its parts goes on, as is required, and leaves
    /// what it leaves.
    bool entera(Banco& banco, std::int32_t cargos)
    {
        if (!banco.avisos->dichos.empty()
            && banco.avisos->dichos.front().titulo != "frmCompras_Atipicos:cmdAceptar_Click")
            return true;
        const auto verificacion = app::verifica(banco.bases());
        const auto hay = static_cast<std::int32_t>(verificacion.cargos);
        return (hay == 1 || hay == cargos)
            && verificacion.diferencias.size() == verificacion.sin_asiento.size();
    }

    Veredicto prueba(const bases::Lugar& lugar, const Operacion& operacion, std::size_t n)
    {
        Banco banco(lugar);
        const auto codigo = banco.guarda().Codigo;
        banco.parte->dichas.clear();
        banco.parte->dichas.reserve(1'000); // the spy's own
        bool hecho = false;
        bool lanzado = false;
        asignadas = 0;
        falla_la = n;
        contando = true;
        try {
            hecho = operacion.haz(banco, codigo);
        } catch (const std::bad_alloc&) {
            lanzado = true; // a list tells its caller
        } catch (const std::exception&) {
            contando = false;
            return Veredicto::otra_excepcion;
        }
        contando = false;
        if (asignadas < n)
            return Veredicto::sin_fallo;
        if (!hecho && !lanzado && banco.avisos->dichos.empty())
            return Veredicto::sin_aviso;
        if (!entera(banco, operacion.cargos))
            return Veredicto::a_medias;
        banco.avisos->dichos.clear();
        const bool sigue = banco.guarda().estado == ResultadoGuardado::Estado::Guardado;
        return sigue && banco.avisos->dichos.empty() ? Veredicto::bien : Veredicto::no_sigue;
    }

    /// In a process of its own: a program that ends itself is found out.
    int en_otro_proceso(const Operacion& operacion, std::size_t n)
    {
        const auto muestra = pruebas::en_carpeta().muestra();
        const pid_t hijo = fork();
        if (hijo == 0)
            _exit(static_cast<int>(prueba(muestra->lugar(), operacion, n)));
        int estado = 0;
        waitpid(hijo, &estado, 0);
        return WIFEXITED(estado) ? WEXITSTATUS(estado) : 128 + WTERMSIG(estado);
    }

    std::size_t asignaciones_de(const Operacion& operacion)
    {
        Banco banco;
        const auto codigo = banco.guarda().Codigo;
        asignadas = falla_la = 0;
        contando = true;
        static_cast<void>(operacion.haz(banco, codigo));
        contando = false;
        return asignadas;
    }

    TEST(BarridoMemoria, an_allocation_that_fails_is_told_and_leaves_everything_whole)
    {
        std::size_t fallos = 0;
        for (const auto& operacion : operaciones()) {
            const auto todas = asignaciones_de(operacion);
            const std::size_t paso
                = std::getenv("ATIPICOS_PRUEBA_LARGA") != nullptr ? 1 : std::max<std::size_t>(todas / 40, 1);
            for (std::size_t n = 1; n <= todas; n += paso, ++fallos) {
                const int veredicto = en_otro_proceso(operacion, n);
                if (veredicto != static_cast<int>(Veredicto::sin_fallo)) {
                    ASSERT_EQ(veredicto, 0) << operacion.nombre << ", allocation " << n << " of " << todas;
                }
            }
        }
        std::cout << fallos << " failed allocations\n";
    }

}
}
