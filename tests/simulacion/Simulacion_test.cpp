// Several clerks do everything at random for 100,000 steps, and a model says what the databases must hold. A
// seed replays its run; a failure is cut down to the shortest script that still shows it. With
// ATIPICOS_SEMILLA=n the run of that seed alone, and with ATIPICOS_SEMILLAS=n as many runs as that.
#include "tests/simulacion/Oficina.hpp"

#include <gmock/gmock.h>

#include <cstdlib>
#include <functional>
#include <iostream>

namespace atipicos::pruebas {
namespace {

    constexpr std::size_t pasos_por_tanda = 10'000;

    std::uint32_t del_entorno(const char* variable, std::uint32_t si_no)
    {
        const char* valor = std::getenv(variable);
        return valor == nullptr ? si_no : static_cast<std::uint32_t>(std::stoul(valor));
    }

    struct Fallo {
        std::size_t paso = 0; ///< 0-based
        std::string que;
    };

    /// Runs a script. Rows are compared after every thousandth step and at the end.
    std::optional<Fallo> representa(const Guion& guion, Modelo& modelo, Oficina::Cuenta* cuenta = nullptr)
    {
        Oficina oficina(modelo);
        for (std::size_t i = 0; i < guion.size(); ++i) {
            auto mal = oficina.da(guion[i]);
            const bool ultimo = i + 1 == guion.size();
            if (!mal && (ultimo || i % 1'000 == 999))
                mal = oficina.compara();
            if (!mal && ultimo)
                mal = oficina.verifica();
            if (mal)
                return Fallo{ i, *mal };
        }
        if (cuenta != nullptr)
            *cuenta = oficina.cuenta();
        return {};
    }

    template <class UnModelo> std::optional<Fallo> representa(const Guion& guion)
    {
        UnModelo modelo;
        return representa(guion, modelo);
    }

    template <class UnModelo> Guion el_mas_corto(Guion guion, std::size_t hasta)
    {
        guion.resize(hasta + 1);
        return reduce(
            std::move(guion), [](const Guion& uno) { return representa<UnModelo>(uno).has_value(); });
    }

    TEST(Simulacion, databases_and_model_agree_after_everything_that_clerks_do)
    {
        const auto sola = del_entorno("ATIPICOS_SEMILLA", 0);
        const auto tandas = sola != 0 ? 1 : del_entorno("ATIPICOS_SEMILLAS", 10);
        Oficina::Cuenta suma;
        for (std::uint32_t i = 0; i < tandas; ++i) {
            const auto semilla = sola != 0 ? sola : i + 1;
            const auto guion = genera(semilla, pasos_por_tanda);
            Modelo modelo;
            Oficina::Cuenta cuenta;
            if (const auto fallo = representa(guion, modelo, &cuenta))
                FAIL() << "seed " << semilla << ", step " << fallo->paso << ": " << fallo->que
                       << "\nthe shortest script:\n"
                       << texto(el_mas_corto<Modelo>(guion, fallo->paso));
            suma.guardados += cuenta.guardados;
            suma.eliminados += cuenta.eliminados;
            suma.perdidas += cuenta.perdidas;
        }
        std::cout << tandas * pasos_por_tanda << " steps: " << suma.guardados << " saves, " << suma.eliminados
                  << " deletions, " << suma.perdidas << " lost connections\n";
    }

    TEST(Simulacion, a_seed_gives_one_script_and_another_seed_another_one)
    {
        EXPECT_EQ(texto(genera(7, 500)), texto(genera(7, 500)));
        EXPECT_NE(texto(genera(7, 500)), texto(genera(8, 500)));
        EXPECT_EQ(texto(genera(1, 100)), texto(genera(1, 5'000)).substr(0, texto(genera(1, 100)).size()));
    }

    TEST(Reduccion, takes_out_every_step_without_which_it_still_fails)
    {
        const auto guion = genera(3, 400);
        int veces = 0;
        const auto corto = reduce(guion, [&](const Guion& uno) {
            ++veces;
            int saldo = 0; // fails with a save, and later a deletion by the same clerk
            for (const auto& paso : uno) {
                saldo = paso.quien == 2 && paso.accion == Accion::guarda ? 1 : saldo;
                if (saldo == 1 && paso.quien == 2 && paso.accion == Accion::elimina)
                    return true;
            }
            return false;
        });
        ASSERT_EQ(corto.size(), 2U);
        EXPECT_EQ(corto[0].accion, Accion::guarda);
        EXPECT_EQ(corto[1].accion, Accion::elimina);
        EXPECT_LT(veces, 400);
    }

    /// Takes a deleted number for free again, which no counter does.
    class ModeloQueDevuelveNumeros final : public Modelo {
    public:
        void elimina(const ClaveModelo& clave) override
        {
            Modelo::elimina(clave);
            --m_numeros[{ clave.ejercicio, clave.almacen }];
        }
    };

    TEST(Reduccion, a_model_that_is_wrong_on_purpose_is_caught_and_shown_in_three_steps)
    {
        const auto guion = genera(1, 2'000);
        const auto fallo = representa<ModeloQueDevuelveNumeros>(guion);
        ASSERT_TRUE(fallo.has_value());
        const auto corto = el_mas_corto<ModeloQueDevuelveNumeros>(guion, fallo->paso);
        std::vector<Accion> acciones;
        for (const auto& paso : corto)
            acciones.push_back(paso.accion);
        EXPECT_THAT(acciones, testing::ElementsAre(Accion::linea, Accion::guarda, Accion::elimina))
            << texto(corto);
        EXPECT_TRUE(representa<ModeloQueDevuelveNumeros>(corto).has_value());
        EXPECT_FALSE(representa<Modelo>(corto).has_value());
    }

}
}
