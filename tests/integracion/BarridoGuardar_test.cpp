// The nth operation of a save fails, for every n: which boxes are shown and what is left in both databases.
#include "charges/clsAtipico.hpp"
#include "posting/GenerarPrev.hpp"
#include "tests/integracion/Banco.hpp"
#include "tests/integracion/EsperadoGuardar.hpp"

#include <gmock/gmock.h>

#include <algorithm>

namespace atipicos {
namespace {

    using pruebas::asentar;
    using pruebas::atencion;
    using pruebas::Banco;
    using pruebas::de_uno_nuevo;
    using pruebas::Estado;
    using pruebas::Fase;
    using pruebas::fase_de;
    using pruebas::guardar;
    using pruebas::insertar;
    using testing::ElementsAre;
    using testing::IsEmpty;

    constexpr auto eliminar = "clsAtipico:Eliminar_Atipico";

    struct BarridoGuardar : testing::TestWithParam<pruebas::Sede> {
        void SetUp() override
        {
            if (const auto& falta = GetParam().falta; !falta.empty())
                GTEST_SKIP() << falta;
        }
    };

    /// Every operation of a new charge in turn, after `ya` others.
    void barre_uno_nuevo(const pruebas::Sede& sede, int ya)
    {
        const auto prepara = [&](Banco& banco) {
            for (int i = 0; i < ya; ++i)
                banco.guarda();
            banco.parte->dichas.clear();
        };
        Banco entero(sede);
        prepara(entero);
        const auto antes = entero.estado();
        ASSERT_EQ(entero.guarda().estado, ResultadoGuardado::Estado::Guardado);
        ASSERT_THAT(entero.titulos(), IsEmpty());
        const auto despues = entero.estado();
        const auto dichas = entero.parte->dichas;
        ASSERT_GE(dichas.size(), 30U);

        for (std::size_t n = 0; n < dichas.size(); ++n) {
            SCOPED_TRACE(std::to_string(n + 1) + ": " + dichas[n]);
            Banco banco(sede);
            prepara(banco);
            banco.parte->falla_en = n + 1;
            banco.guarda();
            const auto esperado = de_uno_nuevo(dichas, n, antes, despues);
            EXPECT_EQ(banco.titulos(), esperado.titulos);
            EXPECT_EQ(banco.estado(), esperado.estado);
            for (const auto& aviso : banco.avisos->dichos)
                EXPECT_THAT(aviso.texto, testing::EndsWith(pruebas::Parte::descripcion));
        }
    }

    TEST_P(BarridoGuardar, a_new_charge_at_every_operation) { barre_uno_nuevo(GetParam(), 0); }

    TEST_P(BarridoGuardar, another_new_charge_whose_counters_are_there_at_every_operation)
    {
        barre_uno_nuevo(GetParam(), 1);
    }

    TEST_P(BarridoGuardar, after_every_failure_the_next_charge_is_saved)
    {
        Banco entero(GetParam());
        entero.guarda();
        const auto operaciones = entero.parte->dichas.size();
        for (std::size_t n = 1; n <= operaciones; ++n) {
            Banco banco(GetParam());
            banco.parte->falla_en = n;
            banco.guarda();
            banco.avisos->dichos.clear();
            ASSERT_EQ(banco.guarda().estado, ResultadoGuardado::Estado::Guardado) << n;
            EXPECT_THAT(banco.titulos(), IsEmpty()) << n;
        }
    }

    /// The boxes of a changed charge when operation `n` fails. A deletion that fails leaves the old header,
    /// on which the insertion then runs aground too.
    std::vector<std::string> titulos_de_un_cambio(const std::vector<std::string>& dichas, std::size_t n)
    {
        switch (fase_de(dichas, n)) {
        case Fase::antes:
        case Fase::hasta_codigo:
        case Fase::confirmar_gestion:
        case Fase::confirmar_contabilidad:
            return { guardar };
        case Fase::previsiones:
            return { atencion };
        case Fase::asiento:
            return { asentar };
        case Fase::borrar:
            return { eliminar, insertar };
        case Fase::escribir:
            break;
        }
        return { insertar };
    }

    TEST_P(BarridoGuardar, a_changed_charge_at_every_operation)
    {
        std::vector<std::string> dichas;
        std::string codigo;
        {
            Banco entero(GetParam());
            codigo = entero.guarda().Codigo;
            entero.parte->dichas.clear();
            ASSERT_EQ(entero.guarda(codigo).Codigo, codigo);
            ASSERT_THAT(entero.titulos(), IsEmpty());
            EXPECT_EQ(entero.estado().at("Proveedores_Cargos_Atipicos"), 1) << "replaced, not added";
            EXPECT_EQ(entero.estado().at("Proveedores_Cargos_Atipicos_Lineas"), 3);
            EXPECT_EQ(entero.estado().at("Bexmor.dbo.Asientos"), 2) << "the old entry stays";
            dichas = entero.parte->dichas;
        }
        for (std::size_t n = 0; n < dichas.size(); ++n) {
            SCOPED_TRACE(std::to_string(n + 1) + ": " + dichas[n]);
            Banco banco(GetParam());
            banco.guarda();
            const auto antes = banco.estado();
            banco.parte->dichas.clear();
            banco.parte->falla_en = n + 1;
            banco.guarda(codigo);
            EXPECT_EQ(banco.titulos(), titulos_de_un_cambio(dichas, n));
            const auto estado = banco.estado();
            EXPECT_EQ(estado.at("contador de cargos"), antes.at("contador de cargos")) << "its code is kept";
            switch (fase_de(dichas, n)) {
            case Fase::antes:
            case Fase::hasta_codigo:
            case Fase::confirmar_gestion:
            case Fase::confirmar_contabilidad: // both commits are there or neither
                EXPECT_EQ(estado, antes);
                break;
            case Fase::borrar: { // the lines are deleted first
                const bool lineas = dichas[n].find("_Lineas") != std::string::npos;
                EXPECT_EQ(estado.at("Proveedores_Cargos_Atipicos"), 1);
                EXPECT_EQ(estado.at("Proveedores_Cargos_Atipicos_Lineas"), lineas ? 3 : 0);
                break;
            }
            case Fase::asiento:
            case Fase::previsiones:
                EXPECT_EQ(estado.at("Proveedores_Cargos_Atipicos"), 1);
                EXPECT_EQ(estado.at("Proveedores_Cargos_Atipicos_Lineas"), 3);
                break;
            case Fase::escribir:
                EXPECT_LT(estado.at("Proveedores_Cargos_Atipicos_Lineas"), 3);
                EXPECT_EQ(estado.at("Bexmor.dbo.Asientos"), 2);
                break;
            }
        }
    }

    /// The part of a state that belongs to one database.
    Estado de_gestion(const Estado& estado)
    {
        Estado parte;
        for (const auto& [nombre, filas] : estado)
            if (!nombre.starts_with("Bexmor") && nombre != "contador de asientos")
                parte[nombre] = filas;
        return parte;
    }

    TEST_P(BarridoGuardar, a_connection_lost_at_any_operation_leaves_all_or_nothing_of_the_charge)
    {
        Banco entero(GetParam());
        const auto antes = de_gestion(entero.estado());
        entero.guarda();
        const auto despues = de_gestion(entero.estado());
        for (std::size_t n = 1; n <= entero.parte->dichas.size(); ++n) {
            Banco banco(GetParam());
            banco.parte->falla_en = n;
            banco.parte->conexion_perdida = true;
            banco.guarda();
            EXPECT_THAT(banco.titulos(), testing::Not(IsEmpty())) << n;
            EXPECT_THAT(de_gestion(banco.estado()), testing::AnyOf(antes, despues)) << n;
        }
    }

    TEST_P(BarridoGuardar, a_text_with_a_quote_fails_in_insertar_and_the_rest_is_committed)
    {
        Banco banco(GetParam());
        clsAtipico cargo;
        cargo.Lineas->Add(0, "Peña d'Or", Currency::de_entero(1), Currency::de_entero(10));
        const CargoTecleado tecleado{ "", 1, 101, "Aguas", pruebas::dia("21/11/2026"), "", false,
            Currency::de_entero(10), { { Currency::de_entero(10), "" } } };
        const auto resultado = GuardarAtipico(cargo, tecleado,
            [](const Contabilizacion&) { return std::optional<std::vector<Prevision>>(std::in_place); });
        EXPECT_TRUE(resultado.InsertarFallido);
        EXPECT_THAT(banco.titulos(), ElementsAre(insertar));
        EXPECT_EQ(banco.estado().at("Proveedores_Cargos_Atipicos"), 1)
            << "the header went in before the line";
        EXPECT_EQ(banco.estado().at("Proveedores_Cargos_Atipicos_Lineas"), 0);
        EXPECT_EQ(banco.estado().at("Bexmor.dbo.Apuntes"), 5);
    }

    INSTANTIATE_TEST_SUITE_P(sedes, BarridoGuardar, testing::ValuesIn(pruebas::sedes()),
        [](const auto& caso) { return caso.param.nombre; });

}
}
