// What a server of several nodes is asked for, in which order. Nothing is spread here: the functions are a
// test double's.
#include "host/bases/Reparto.hpp"

#include "host/bases/Actualizacion.hpp"
#include "tests/host/BasesDeMuestra.hpp"
#include "tests/support/BaseEnServidor.hpp"
#include "tests/support/CitusDePrueba.hpp"

#include <sstream>

namespace atipicos::bases {
namespace {

    using testing::Each;
    using testing::HasSubstr;
    using testing::StartsWith;

    constexpr auto claves_ajenas
        = "SELECT conrelid::regclass || ' ' || conname || ' ' || pg_get_constraintdef(oid) FROM "
          "pg_constraint WHERE contype = 'f' ORDER BY 1";
    constexpr auto llamadas = "SELECT que FROM llamadas_de_prueba ORDER BY orden";

    struct Reparto : pruebas::BaseEnServidor {
        Reparto()
            : BaseEnServidor("nodos")
        {
        }

        static Lugar lugar() { return Lugar::de_conexion(servidor->direccion("nodos")); }
        static std::vector<std::string> di(const std::string& sql)
        {
            std::istringstream salida(servidor->psql("nodos", sql));
            std::vector<std::string> lineas;
            for (std::string una; std::getline(salida, una);)
                lineas.push_back(una);
            return lineas;
        }
        static void pon_citus() { EXPECT_EQ(servidor->psql("nodos", pruebas::citus_de_prueba), ""); }
    };

    TEST_F(Reparto, spreads_every_table_of_a_new_company_catalogues_first)
    {
        pon_citus();
        EXPECT_TRUE(crea_bases(lugar(), false));
        const auto pedidas = di(llamadas);
        ASSERT_EQ(pedidas.size(), 28U);
        const std::vector<std::string> primeras(pedidas.begin(), pedidas.begin() + 17);
        const std::vector<std::string> ultimas(pedidas.begin() + 17, pedidas.end());
        EXPECT_THAT(primeras, Each(StartsWith("catálogo ")));
        EXPECT_EQ(ultimas.front(), "por cod_empresa orvalin.proveedores_cargos_atipicos con default");
        for (std::size_t i = 1; i < ultimas.size(); ++i)
            EXPECT_THAT(ultimas[i],
                testing::AllOf(StartsWith("por cod_empresa "),
                    testing::EndsWith(" con orvalin.proveedores_cargos_atipicos")))
                << "a charge stands beside its lines, an entry beside what hangs on it";
        EXPECT_THAT(di("SELECT c.oid::regclass FROM pg_class c WHERE c.relkind = 'r' AND "
                       "relnamespace::regnamespace::text "
                       "IN ('orvalin', 'dbo') AND NOT EXISTS (SELECT 1 FROM pg_dist_partition WHERE "
                       "logicalrelid = c.oid)"
                       " ORDER BY 1"),
            testing::UnorderedElementsAre(
                "orvalin.confirmaciones", "orvalin.historial", "orvalin.historial_anulaciones"))
            << "a new table has to be spread too";
        EXPECT_TRUE(esta_repartida(*abre_bases(lugar()).orvalin));
    }

    TEST_F(Reparto, gives_back_all_foreign_keys_and_none_of_the_triggers)
    {
        crea_bases(lugar(), true);
        const auto antes = di(claves_ajenas);
        EXPECT_GT(antes.size(), 15U);
        EXPECT_FALSE(esta_repartida(*abre_bases(lugar()).orvalin));
        pon_citus();
        EXPECT_TRUE(actualiza_bases(lugar(), {}).repartida);
        EXPECT_EQ(di(claves_ajenas), antes);
        EXPECT_EQ(di("SELECT DISTINCT tgrelid::regclass FROM pg_trigger WHERE NOT tgisinternal ORDER BY 1"),
            (std::vector<std::string>{ "orvalin.historial", "orvalin.historial_anulaciones" }));
    }

    TEST_F(Reparto, of_what_is_spread_already_does_nothing)
    {
        pon_citus();
        crea_bases(lugar(), false);
        const auto antes = di(llamadas);
        EXPECT_FALSE(crea_bases(lugar(), false));
        EXPECT_FALSE(actualiza_bases(lugar(), {}).repartida);
        EXPECT_EQ(di(llamadas), antes);
    }

    TEST_F(Reparto, spreads_only_the_table_that_is_not_yet)
    {
        pon_citus();
        crea_bases(lugar(), true);
        const auto antes = di(claves_ajenas);
        di("DELETE FROM pg_dist_partition WHERE logicalrelid = 'dbo.previsiones'::regclass; TRUNCATE "
           "llamadas_de_prueba");
        EXPECT_TRUE(actualiza_bases(lugar(), {}).repartida);
        EXPECT_THAT(di(llamadas), testing::ElementsAre(HasSubstr("dbo.previsiones")));
        EXPECT_EQ(di(claves_ajenas), antes);
    }

    TEST_F(Reparto, that_fails_leaves_no_table_behind)
    {
        pon_citus();
        servidor->psql("nodos",
            "SET allow_system_table_mods TO on; ALTER TABLE llamadas_de_prueba ADD CHECK (que NOT LIKE "
            "'%dbo.previsiones%')");
        EXPECT_NE(pruebas::error_de([] { crea_bases(lugar(), true); }), "no error");
        EXPECT_THAT(di("SELECT COUNT(*) FROM pg_namespace WHERE nspname IN ('orvalin', 'dbo')"),
            testing::ElementsAre("0"));
    }

    TEST_F(Reparto, is_nothing_for_a_server_of_one_node_nor_for_a_file)
    {
        crea_bases(lugar(), true);
        EXPECT_FALSE(actualiza_bases(lugar(), {}).repartida);
        const pruebas::CarpetaTemporal carpeta;
        crea_bases(carpeta.ruta(), true);
        EXPECT_FALSE(actualiza_bases(carpeta.ruta(), {}).repartida);
    }

}
} // namespace atipicos::bases
