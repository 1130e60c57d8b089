// The nth operation of a save fails, for every n: which boxes are shown and what is left in both databases.
#include "tests/integracion/Banco.hpp"

#include <gmock/gmock.h>

#include <algorithm>

namespace atipicos {
namespace {

    using pruebas::Banco;
    using pruebas::Estado;
    using testing::ElementsAre;
    using testing::IsEmpty;

    constexpr auto guardar = "frmCompras_Atipicos:cmdAceptar_Click";
    constexpr auto asentar = "frmCompras_Atipicos:GenerarAsiento";
    constexpr auto insertar = "clsAtipico:Insertar";
    constexpr auto eliminar = "clsAtipico:Eliminar_Atipico";
    constexpr auto atencion = "¡ Atención !";

    /// Where in a save an operation stands.
    enum class Fase {
        antes,
        previsiones,
        hasta_codigo,
        asiento,
        borrar,
        escribir,
        confirmar_gestion,
        confirmar_contabilidad
    };

    Fase fase_de(const std::vector<std::string>& dichas, std::size_t n)
    {
        const auto lugar = [&](const std::string& comienzo) {
            const auto hallada = std::find_if(
                dichas.begin(), dichas.end(), [&](const auto& dicha) { return dicha.starts_with(comienzo); });
            return static_cast<std::size_t>(hallada - dichas.begin()); // past the end: there is none
        };
        const auto& dicha = dichas.at(n);
        if (dicha == "gestion COMMIT")
            return Fase::confirmar_gestion;
        if (dicha == "contabilidad COMMIT")
            return Fase::confirmar_contabilidad;
        if (dicha.starts_with("gestion EXEC DELETE"))
            return Fase::borrar;
        if (dicha.starts_with("gestion EXEC INSERT"))
            return Fase::escribir;
        if (n == 0)
            return Fase::antes;
        if (n < lugar("gestion BEGIN"))
            return Fase::previsiones;
        const auto codigo = lugar("gestion UPDATE");
        return n <= (codigo < dichas.size() ? codigo : lugar("contabilidad BEGIN")) ? Fase::hasta_codigo
                                                                                    : Fase::asiento;
    }

    /// Of the rows that a whole save adds to a table, those that were added before operation `n`.
    std::int32_t anadidas(const std::vector<std::string>& dichas, std::size_t n, const std::string& insercion)
    {
        return static_cast<std::int32_t>(std::count_if(
            dichas.begin(), dichas.begin() + static_cast<std::ptrdiff_t>(n), [&](const auto& dicha) {
                return dicha.starts_with("contabilidad EXEC INSERT INTO " + insercion + " ");
            }));
    }

    const std::vector<std::string> tablas_contables{ "Asientos", "Apuntes", "Registro_Impuestos",
        "Previsiones" };

    struct Esperado {
        std::vector<std::string> titulos;
        Estado estado;
    };

    /// What a save of a new charge must leave when operation `n` (0-based) fails.
    Esperado de_uno_nuevo(
        const std::vector<std::string>& dichas, std::size_t n, const Estado& antes, const Estado& despues)
    {
        Estado a_medias = despues;
        switch (fase_de(dichas, n)) {
        case Fase::antes:
        case Fase::hasta_codigo:
        case Fase::confirmar_gestion:
            return { { guardar }, antes };
        case Fase::previsiones:
            a_medias["Bexmor.dbo.Previsiones"] = antes.at("Bexmor.dbo.Previsiones");
            return { { atencion }, a_medias };
        case Fase::asiento:
            for (const auto& tabla : tablas_contables)
                a_medias["Bexmor.dbo." + tabla]
                    = antes.at("Bexmor.dbo." + tabla) + anadidas(dichas, n, tabla);
            if (std::none_of(dichas.begin(), dichas.begin() + static_cast<std::ptrdiff_t>(n),
                    [](const auto& dicha) { return dicha == "contabilidad UPDATE"; }))
                a_medias["contador de asientos"] = antes.at("contador de asientos");
            return { { asentar }, a_medias };
        case Fase::escribir: {
            const auto escritas
                = std::count_if(dichas.begin(), dichas.begin() + static_cast<std::ptrdiff_t>(n),
                    [](const auto& dicha) { return dicha.starts_with("gestion EXEC INSERT"); });
            a_medias["Proveedores_Cargos_Atipicos"]
                = antes.at("Proveedores_Cargos_Atipicos") + (escritas > 0 ? 1 : 0);
            a_medias["Proveedores_Cargos_Atipicos_Lineas"] = antes.at("Proveedores_Cargos_Atipicos_Lineas")
                + static_cast<std::int32_t>(std::max<std::ptrdiff_t>(escritas - 1, 0));
            return { { insertar }, a_medias };
        }
        case Fase::confirmar_contabilidad: // the gap: the charge is kept and its entry is not
            for (const auto& [nombre, filas] : antes)
                if (nombre.starts_with("Bexmor") || nombre == "contador de asientos")
                    a_medias[nombre] = filas;
            return { { guardar }, a_medias };
        case Fase::borrar:
            break;
        }
        ADD_FAILURE() << "a new charge deletes nothing";
        return {};
    }

    struct BarridoGuardar : testing::TestWithParam<pruebas::Sede> {
        void SetUp() override
        {
            if (const auto& falta = GetParam().falta; !falta.empty())
                GTEST_SKIP() << falta;
        }
    };

    TEST_P(BarridoGuardar, a_new_charge_at_every_operation)
    {
        Banco entero(GetParam());
        const auto antes = entero.estado();
        ASSERT_EQ(entero.guarda().estado, ResultadoGuardado::Estado::Guardado);
        ASSERT_THAT(entero.titulos(), IsEmpty());
        const auto despues = entero.estado();
        const auto dichas = entero.parte->dichas;
        ASSERT_GE(dichas.size(), 30U);

        for (std::size_t n = 0; n < dichas.size(); ++n) {
            SCOPED_TRACE(std::to_string(n + 1) + ": " + dichas[n]);
            Banco banco(GetParam());
            banco.parte->falla_en = n + 1;
            banco.guarda();
            const auto esperado = de_uno_nuevo(dichas, n, antes, despues);
            EXPECT_EQ(banco.titulos(), esperado.titulos);
            EXPECT_EQ(banco.estado(), esperado.estado);
            for (const auto& aviso : banco.avisos->dichos)
                EXPECT_THAT(aviso.texto, testing::EndsWith(pruebas::Parte::descripcion));
        }
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
                EXPECT_EQ(estado, antes);
                break;
            case Fase::borrar: { // the lines are deleted first
                const bool lineas = dichas[n].find("_Lineas") != std::string::npos;
                EXPECT_EQ(estado.at("Proveedores_Cargos_Atipicos"), 1);
                EXPECT_EQ(estado.at("Proveedores_Cargos_Atipicos_Lineas"), lineas ? 3 : 0);
                break;
            }
            case Fase::confirmar_contabilidad:
                EXPECT_EQ(estado.at("Bexmor.dbo.Asientos"), 1);
                EXPECT_EQ(estado.at("Proveedores_Cargos_Atipicos_Lineas"), 3);
                break;
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
