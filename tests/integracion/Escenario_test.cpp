// The same charges in every kind of place leave the same rows, byte for byte, and show the same messages.
#include "browser/EliminarAtipico.hpp"
#include "charges/clsAtipico.hpp"
#include "charges/Impuesto.hpp"
#include "host/sql/Guiones.hpp"
#include "posting/GenerarPrev.hpp"
#include "tests/integracion/Banco.hpp"
#include "tests/integracion/Volcado.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <iostream>

namespace atipicos {
namespace {

    using pruebas::Banco;
    using pruebas::vuelca;

    std::string repetido(const std::string& texto, int veces)
    {
        std::string todo;
        for (int i = 0; i < veces; ++i)
            todo += texto;
        return todo;
    }

    void guarda_uno(
        const std::string& descripcion, const char* unidades, const char* costo, const char* fecha)
    {
        clsAtipico cargo;
        cargo.Lineas->Add(0, descripcion, pruebas::moneda(unidades), pruebas::moneda(costo), descripcion);
        const Currency importe = importe_linea(pruebas::moneda(unidades), pruebas::moneda(costo));
        const CargoTecleado tecleado{ "", 2, 111, "Cafés Teno Alto", pruebas::dia(fecha), descripcion, true,
            importe, { { importe, "" } } };
        static_cast<void>(GuardarAtipico(cargo, tecleado,
            [](const Contabilizacion&) { return std::optional<std::vector<Prevision>>(std::in_place); }));
    }

    struct Resultado {
        std::vector<std::string> orvalin;
        std::vector<std::string> bexmor;
        std::vector<std::string> avisos;
    };

    Resultado representa(const pruebas::Sede& sede)
    {
        Banco banco(sede);
        const auto primero = banco.guarda().Codigo;
        for (const std::int16_t almacen : { std::int16_t{ 1 }, std::int16_t{ 3 }, std::int16_t{ 4 } })
            banco.guarda({}, almacen);
        banco.guarda(primero);
        const auto borrado = banco.guarda().Codigo;
        static_cast<void>(EliminarAtipico({ 2026, 1, borrado }));
        banco.guarda({}, 5); // of no accounting company
        for (const auto* fecha : { "01/01/2024", "29/02/2024", "31/12/2027" })
            guarda_uno("Ñandú, 3 € «así» 😀\t\\n", "-1.005", "33.3333", fecha);
        guarda_uno(repetido("ñ", 4'000), "1", "0.0001", "21/11/2026");
        guarda_uno("mucho", "1", "99999999999.99", "21/11/2026");
        guarda_uno("de otro año", "1", "1", "21/11/2031");
        guarda_uno("", "0", "0", "21/11/2026");
        Resultado resultado;
        resultado.orvalin = vuelca(*banco.bases().orvalin, guiones::orvalin());
        resultado.bexmor = vuelca(*banco.bases().bexmor, guiones::bexmor());
        for (const auto& aviso : banco.avisos->dichos)
            resultado.avisos.push_back(aviso.titulo + ": " + aviso.texto);
        return resultado;
    }

    bool alguna(const std::vector<std::string>& filas, const std::string& con)
    {
        return std::any_of(
            filas.begin(), filas.end(), [&](const auto& una) { return una.find(con) != std::string::npos; });
    }

    /// The rows at the same place that are not the same, and those that only one side has.
    std::vector<std::string> diferencias(const std::vector<std::string>& a, const std::vector<std::string>& b)
    {
        std::vector<std::string> todas;
        for (std::size_t i = 0; i < std::max(a.size(), b.size()); ++i) {
            const std::string una = i < a.size() ? a[i] : "nothing";
            const std::string otra = i < b.size() ? b[i] : "nothing";
            if (una != otra)
                todas.push_back(una + " / " + otra);
        }
        return todas;
    }

    struct Escenario : testing::TestWithParam<pruebas::Sede> { };

    TEST_P(Escenario, leaves_the_same_rows_and_messages_as_in_a_folder)
    {
        if (const auto& falta = GetParam().falta; !falta.empty())
            GTEST_SKIP() << falta;
        static const Resultado esperado = representa(pruebas::en_carpeta());
        EXPECT_TRUE(alguna(esperado.orvalin, "codigo=«AT260002»"));
        EXPECT_TRUE(alguna(esperado.bexmor, "documento=«AT260002»"));
        EXPECT_THAT(esperado.avisos, testing::Not(testing::IsEmpty()));
        const auto hecho = representa(GetParam());
        EXPECT_THAT(diferencias(esperado.orvalin, hecho.orvalin), testing::IsEmpty());
        EXPECT_THAT(diferencias(esperado.bexmor, hecho.bexmor), testing::IsEmpty());
        EXPECT_EQ(hecho.avisos, esperado.avisos);
        std::cout << hecho.orvalin.size() + hecho.bexmor.size() << " rows, " << hecho.avisos.size()
                  << " messages\n";
    }

    INSTANTIATE_TEST_SUITE_P(sedes, Escenario, testing::ValuesIn(pruebas::sedes()),
        [](const auto& caso) { return caso.param.nombre; });

}
}
