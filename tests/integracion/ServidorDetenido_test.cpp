// The server stops in the middle of a save, and comes back. Set ATIPICOS_PRUEBA_LARGA to stop it before every
// operation of the save instead of before some.
#include "host/comprobacion/Verificacion.hpp"
#include "tests/integracion/Banco.hpp"

#include <gmock/gmock.h>

#include <cstdlib>

namespace atipicos {
namespace {

    using pruebas::Banco;
    using testing::AnyOf;
    using testing::HasSubstr;

    std::vector<std::size_t> paradas(std::size_t operaciones)
    {
        std::vector<std::size_t> todas;
        const std::size_t paso = std::getenv("ATIPICOS_PRUEBA_LARGA") != nullptr ? 1 : 8;
        for (std::size_t n = 1; n < operaciones; n += paso)
            todas.push_back(n);
        todas.push_back(operaciones - 1); // before the first commit
        todas.push_back(operaciones); // between both, which are one where the session is
        return todas;
    }

    struct ServidorDetenido : testing::TestWithParam<pruebas::Sede> { };

    TEST_P(
        ServidorDetenido, at_any_operation_the_person_is_told_nothing_is_half_written_and_the_next_save_works)
    {
        const auto& sede = GetParam();
        if (!sede.falta.empty())
            GTEST_SKIP() << sede.falta;
        pruebas::Estado antes;
        std::size_t operaciones = 0;
        {
            Banco entero(sede);
            antes = entero.estado();
            entero.guarda();
            operaciones = entero.parte->dichas.size();
        }
        for (const auto n : paradas(operaciones)) {
            SCOPED_TRACE(n);
            Banco banco(sede);
            banco.parte->falla_en = n;
            banco.parte->al_llegar = [] { pruebas::servidor_postgresql().detiene(); };
            banco.guarda();
            EXPECT_THAT(banco.titulos(), testing::Not(testing::IsEmpty()));
            for (const auto& aviso : banco.avisos->dichos)
                EXPECT_THAT(aviso.texto,
                    AnyOf(HasSubstr("Se ha perdido la conexión con el servidor"),
                        HasSubstr("No se puede conectar con el servidor"),
                        HasSubstr("La transacción se ha perdido")));
            pruebas::servidor_postgresql().arranca();

            EXPECT_EQ(banco.estado(), antes);
            EXPECT_THAT(app::verifica(banco.bases()).diferencias, testing::IsEmpty());

            banco.avisos->dichos.clear();
            EXPECT_EQ(banco.guarda().estado, ResultadoGuardado::Estado::Guardado);
            EXPECT_THAT(banco.titulos(), testing::IsEmpty());
        }
    }

    INSTANTIATE_TEST_SUITE_P(sedes, ServidorDetenido,
        testing::Values(pruebas::en_postgresql(), pruebas::en_postgresql_por_odbc()),
        [](const auto& caso) { return caso.param.nombre; });

}
}
