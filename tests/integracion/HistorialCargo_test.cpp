// What the history says of charges that the component itself has saved, changed and deleted.
#include "host/comprobacion/HistorialCargo.hpp"

#include "host/comprobacion/HistorialEnPalabras.hpp"
#include "tests/integracion/Banco.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using pruebas::Banco;
    using testing::ElementsAre;
    using testing::HasSubstr;

    struct HistorialCargo : testing::TestWithParam<pruebas::Sede> {
        void SetUp() override
        {
            if (!GetParam().falta.empty())
                GTEST_SKIP() << GetParam().falta;
        }
        static std::vector<std::string> frases(const app::HistorialCargo& historial)
        {
            std::vector<std::string> todas;
            for (const auto& uno : historial.sucesos)
                todas.push_back(
                    app::que_fue(uno) + ' ' + app::de_que_fue(uno) + ": " + app::en_una_frase(uno));
            return todas;
        }
    };

    TEST_P(HistorialCargo, of_a_changed_charge_says_what_differs_and_nothing_of_what_was_written_again)
    {
        Banco banco(GetParam());
        const auto codigo = banco.guarda({}, 4, "Palé dañado").Codigo;
        EXPECT_EQ(banco.guarda(codigo, 4, "Palé dañado, con foto").Codigo, codigo);
        const auto historial = app::historial_de(*banco.bases().orvalin, 1, { 2026, 4, codigo });
        EXPECT_TRUE(historial.existe);
        const auto dichas = frases(historial);
        ASSERT_EQ(dichas.size(), 5U) << testing::PrintToString(dichas);
        EXPECT_THAT(dichas[0], testing::StartsWith("alta cabecera: Proveedor 104; Fecha 21/11/2026; "));
        EXPECT_THAT(dichas[3], HasSubstr("alta línea 3: "));
        EXPECT_EQ(
            dichas[4], "cambio cabecera: Asiento 1 → 2; Observaciones Palé dañado → Palé dañado, con foto");

        banco.bases().orvalin->BeginTrans();
        banco.bases().orvalin->Execute("DELETE FROM Proveedores_Cargos_Atipicos_Lineas WHERE Num_Linea =2");
        banco.bases().orvalin->CommitTrans();
        const auto sin_linea = app::historial_de(*banco.bases().orvalin, 1, { 2026, 4, codigo });
        EXPECT_EQ(sin_linea.sucesos.size(), 6U);
        EXPECT_EQ(sin_linea.sucesos.back().que, app::Suceso::Que::baja);
        EXPECT_THAT(frases(app::historial_de(*banco.bases().orvalin, 2, { 2026, 4, codigo })), ElementsAre())
            << "another company";
    }

    INSTANTIATE_TEST_SUITE_P(sedes, HistorialCargo, testing::ValuesIn(pruebas::sedes()),
        [](const auto& caso) { return caso.param.nombre; });

}
}
