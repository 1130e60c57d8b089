// How often a workstation waits for the server. What a session begins with is not counted.
#include "browser/EliminarAtipico.hpp"
#include "browser/ListaAtipicos.hpp"
#include "tests/integracion/Banco.hpp"
#include "tests/support/Intermediario.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <iostream>

namespace atipicos {
namespace {

    using pruebas::Banco;
    using testing::ElementsAre;
    using testing::StartsWith;

    struct Viajes : testing::Test {
        std::unique_ptr<pruebas::Muestra> muestra;
        std::unique_ptr<pruebas::Intermediario> intermediario;
        std::unique_ptr<Banco> banco;
        std::string codigo;

        void SetUp() override
        {
            const auto& sede = pruebas::en_postgresql();
            if (!sede.falta.empty())
                GTEST_SKIP() << sede.falta;
            muestra = sede.muestra();
            intermediario
                = std::make_unique<pruebas::Intermediario>(pruebas::servidor_postgresql().enchufe());
            banco = std::make_unique<Banco>(
                bases::Lugar::de_conexion(muestra->lugar().direccion() + intermediario->por_aqui()));
            codigo = banco->guarda().Codigo; // the counters have begun
        }

        void TearDown() override
        {
            banco.reset();
            intermediario.reset();
        }

        /// The round trips of something; the statements that it runs stand in the report afterwards.
        template <class Uso> std::size_t viajes(Uso uso) const
        {
            banco->parte->dichas.clear();
            const auto antes = intermediario->viajes();
            uso();
            EXPECT_THAT(banco->titulos(), testing::IsEmpty());
            return intermediario->viajes() - antes;
        }

        std::size_t cuantas(const std::string& que) const
        {
            const auto& dichas = banco->parte->dichas;
            return static_cast<std::size_t>(std::count_if(
                dichas.begin(), dichas.end(), [&](const auto& dicha) { return dicha.ends_with(que); }));
        }
    };

    TEST_F(Viajes, a_save_costs_its_statements_and_one_commit)
    {
        const auto hechos = viajes([&] { banco->guarda(); });
        EXPECT_EQ(cuantas(" BEGIN"), 2U);
        EXPECT_EQ(cuantas(" COMMIT"), 2U);
        const auto instrucciones = banco->parte->dichas.size() - 4;
        EXPECT_EQ(hechos, instrucciones + 1) << "the begin travels with the first of them";
        EXPECT_EQ(hechos, 27U);
        std::cout << "a save: " << hechos << " round trips for " << instrucciones
                  << " statements and a commit\n";
    }

    TEST_F(Viajes, the_accounting_library_asks_twice_for_the_company_and_once_for_the_number)
    {
        banco->parte->dichas.clear();
        banco->guarda();
        std::vector<std::string> contables;
        for (const auto& dicha : banco->parte->dichas)
            if (const std::string de_quien = "contabilidad "; dicha.starts_with(de_quien))
                contables.push_back(dicha.substr(de_quien.size()));
        const auto empresa = StartsWith("OPEN SELECT e.LongitudCuenta, e.CuentaBancoPago, t.");
        const auto apunte = StartsWith("EXEC INSERT INTO Apuntes ");
        const auto prevision = StartsWith("EXEC INSERT INTO Previsiones ");
        EXPECT_THAT(contables,
            ElementsAre(empresa, "BEGIN", empresa, StartsWith("EXEC UPDATE Contador_Asientos "),
                StartsWith("OPEN SELECT Numero FROM Contador_Asientos "),
                StartsWith("EXEC INSERT INTO Asientos "), apunte, apunte, apunte, apunte, apunte,
                StartsWith("EXEC INSERT INTO Registro_Impuestos "), apunte, apunte, prevision, prevision,
                prevision, "COMMIT"));
    }

    TEST_F(Viajes, so_does_a_save_that_replaces_a_charge)
    {
        const auto hechos = viajes([&] { banco->guarda(codigo); });
        EXPECT_EQ(hechos, banco->parte->dichas.size() - 4 + 1);
        std::cout << "a change: " << hechos << " round trips\n";
    }

    TEST_F(Viajes, a_statement_that_fails_costs_one_more)
    {
        auto& conexion = *banco->bases().orvalin;
        conexion.BeginTrans();
        EXPECT_EQ(viajes([&] { EXPECT_THROW(conexion.Execute("DELETE FROM NoHay"), Error); }), 2U);
        conexion.RollbackTrans();
    }

    TEST_F(Viajes, a_list_costs_one_and_a_deletion_its_two_statements_and_a_commit)
    {
        const FiltroAtipicos filtro{ "01/01/2026", "31/12/2026" };
        EXPECT_EQ(viajes([&] { Cargar_Atipicos(filtro, [](const auto&) {}); }), 1U);
        EXPECT_EQ(viajes([&] { EXPECT_TRUE(EliminarAtipico({ 2026, 1, codigo })); }), 3U);
    }

}
}
