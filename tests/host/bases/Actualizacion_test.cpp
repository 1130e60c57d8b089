#include "host/bases/Actualizacion.hpp"

#include "tests/host/BasesDeMuestra.hpp"
#include "tests/support/DiscoLleno.hpp"
#include "tests/support/FormatoAnterior.hpp"

#include <fstream>
#include <set>

namespace atipicos::bases {
namespace {

    namespace fs = std::filesystem;

    using pruebas::columna;
    using pruebas::cuenta;
    using pruebas::error_de;
    using testing::ElementsAre;
    using testing::HasSubstr;
    using testing::IsEmpty;

    /// The sample company in the two files of the first version.
    struct Actualizacion : testing::Test {
        pruebas::CarpetaTemporal de_hoy;
        pruebas::CarpetaTemporal carpeta;
        int examinadas = 0;

        void SetUp() override
        {
            crea_bases(de_hoy.ruta(), false);
            abre_bases(de_hoy.ruta())
                .orvalin->Execute("UPDATE Proveedores SET Nombre ='Ñ''' WHERE Codigo =103");
            pruebas::hace_formato_anterior(de_hoy / "empresa.db", carpeta.ruta());
        }

        Actualizada actualiza()
        {
            return actualiza_bases(carpeta.ruta(), { .examina = [this](const Bases& bases) {
                ++examinadas;
                return columna(*bases.orvalin,
                           "SELECT Nombre FROM Proveedores WHERE Cod_Empresa =1 AND Codigo =103")
                           .at(0)
                    + columna(*bases.bexmor, "SELECT COUNT(*) FROM Cuentas").at(0);
            } });
        }
        std::set<std::string> ficheros() const
        {
            std::set<std::string> nombres;
            for (const auto& entrada : fs::directory_iterator(carpeta.ruta()))
                nombres.insert(entrada.path().filename().string());
            return nombres;
        }
        std::string al_abrir() const
        {
            return error_de([&] { static_cast<void>(abre_bases(carpeta.ruta())); });
        }
        std::string al_actualizar()
        {
            return error_de([&] { actualiza(); });
        }
        static std::vector<std::string> texto_de(const fs::path& empresa, const std::string& consulta)
        {
            return columna(*sqlite::Connection::Abrir({ .fichero = empresa }), consulta);
        }
    };

    const std::set<std::string> intactos{ "bexmor.db", "orvalin.db" };
    const std::set<std::string> actualizados{ "bexmor.db.anterior", "empresa.db", "orvalin.db.anterior" };

    TEST_F(Actualizacion, whatever_is_asked_before_says_what_to_do)
    {
        const auto esperado = "«" + carpeta.ruta().string()
            + "»: las bases de datos son de una versión anterior del programa, en dos ficheros. Actualícelas "
              "con: "
              "atipicos actualizar "
            + Lugar(carpeta.ruta()).opcion();
        EXPECT_EQ(al_abrir(), esperado);
        EXPECT_EQ(error_de([&] { crea_bases(carpeta.ruta(), false); }), esperado);
        fs::remove(carpeta / "orvalin.db");
        EXPECT_EQ(al_abrir(), esperado);
    }

    TEST_F(Actualizacion, makes_one_file_with_every_row_of_both)
    {
        const auto hecha = actualiza();
        EXPECT_EQ(hecha.desde, 1);
        EXPECT_EQ(hecha.hasta, guiones::version);
        EXPECT_THAT(
            hecha.apartados, ElementsAre(carpeta / "orvalin.db.anterior", carpeta / "bexmor.db.anterior"));
        EXPECT_EQ(ficheros(), actualizados);
        EXPECT_EQ(examinadas, 2) << "before and after";
        const auto hoy = sqlite::Sesion::abre({ .fichero = de_hoy / "empresa.db" }, Donde());
        const auto nueva = sqlite::Sesion::abre({ .fichero = carpeta / "empresa.db" }, Donde());
        EXPECT_EQ(sqlite::filas_por_tabla(*nueva), sqlite::filas_por_tabla(*hoy));
        EXPECT_EQ(columna(*abre_bases(carpeta.ruta()).orvalin,
                      "SELECT Nombre FROM Proveedores WHERE Cod_Empresa =1 AND Codigo =103"),
            std::vector<std::string>{ "Ñ'" });
    }

    TEST_F(Actualizacion, makes_the_tables_that_a_new_company_has)
    {
        actualiza();
        for (const auto* consulta : { "SELECT t.name || c.cid || c.name || c.type || c.\"notnull\" || "
                                      "ifnull(c.dflt_value, '') || c.pk || "
                                      "c.hidden FROM pragma_table_list t JOIN pragma_table_xinfo(t.name) c "
                                      "WHERE t.schema ='main' AND "
                                      "t.name NOT LIKE 'sqlite%' ORDER BY 1",
                 "SELECT t.name || f.\"table\" || f.\"from\" || f.\"to\" FROM pragma_table_list t JOIN "
                 "pragma_foreign_key_list(t.name) f ORDER BY 1",
                 "SELECT t.name || i.name || i.\"unique\" || c.name FROM pragma_table_list t JOIN "
                 "pragma_index_list(t.name) i JOIN pragma_index_info(i.name) c ORDER BY 1" }) {
            const auto de_hoy_dice = texto_de(de_hoy / "empresa.db", consulta);
            EXPECT_GT(de_hoy_dice.size(), 10U);
            EXPECT_EQ(texto_de(carpeta / "empresa.db", consulta), de_hoy_dice);
        }
    }

    TEST_F(Actualizacion, done_again_finds_nothing_to_do)
    {
        actualiza();
        const auto otra = actualiza();
        EXPECT_EQ(otra.desde, guiones::version);
        EXPECT_THAT(otra.apartados, IsEmpty());
        EXPECT_EQ(ficheros(), actualizados);
    }

    TEST_F(Actualizacion, killed_before_the_former_files_got_their_names_is_brought_to_its_end)
    {
        fs::copy_file(de_hoy / "empresa.db", carpeta / "empresa.db");
        EXPECT_EQ(al_abrir(), "no error");
        const auto hecha = actualiza();
        EXPECT_EQ(hecha.desde, hecha.hasta);
        EXPECT_EQ(hecha.apartados.size(), 2U);
        EXPECT_EQ(examinadas, 0);
        EXPECT_EQ(ficheros(), actualizados) << "their logs are in them";
    }

    TEST_F(Actualizacion, keeps_former_files_beside_others_of_their_kind)
    {
        std::ofstream(carpeta / "orvalin.db.anterior") << "de otra vez";
        EXPECT_THAT(actualiza().apartados,
            ElementsAre(carpeta / "orvalin.db.anterior-2", carpeta / "bexmor.db.anterior"));
        EXPECT_EQ(fs::file_size(carpeta / "orvalin.db.anterior"), 11U);
    }

    TEST_F(Actualizacion, leaves_files_with_which_the_former_program_could_go_on)
    {
        actualiza();
        for (const auto* fichero : { "orvalin.db.anterior", "bexmor.db.anterior" })
            EXPECT_THAT(texto_de(carpeta / fichero, "SELECT Version FROM Esquema"), ElementsAre("1"))
                << fichero;
        EXPECT_GT(texto_de(carpeta / "bexmor.db.anterior", "SELECT Cuenta FROM Cuentas").size(), 100U)
            << "what was in its log is in it";
    }

    TEST_F(Actualizacion, is_refused_while_somebody_works_with_them)
    {
        for (const auto* fichero : { "orvalin.db", "bexmor.db" }) {
            const auto otro = sqlite::Connection::Abrir({ .fichero = carpeta / fichero });
            EXPECT_EQ(al_actualizar(),
                "«" + (carpeta / fichero).string()
                    + "»: la tiene abierta otro programa. Ciérrelo antes de actualizar.");
        }
        EXPECT_EQ(ficheros(), intactos);
        EXPECT_EQ(al_actualizar(), "no error");
    }

    TEST_F(Actualizacion, keeps_everybody_out_while_it_lasts)
    {
        std::vector<std::string> dicho;
        const auto examina = [&](const Bases&) {
            dicho.push_back(error_de([&] {
                static_cast<void>(sqlite::Connection::Abrir(
                    { .fichero = carpeta / "orvalin.db", .espera = std::chrono::milliseconds(0) }));
            }));
            return std::string("igual");
        };
        actualiza_bases(carpeta.ruta(), { .examina = examina });
        EXPECT_EQ(ficheros(), actualizados);
        EXPECT_EQ(dicho.size(), 2U);
        EXPECT_THAT(dicho, testing::Each(HasSubstr("bloqueada por otro usuario")));
    }

    TEST_F(Actualizacion, whose_copy_says_something_else_is_not_put_in_their_place)
    {
        int vez = 0;
        EXPECT_THAT(error_de([&] {
            actualiza_bases(
                carpeta.ruta(), { .examina = [&](const Bases&) { return std::to_string(++vez); } });
        }),
            HasSubstr("la comprobación de la copia no dice lo mismo que la de los originales."));
        EXPECT_EQ(ficheros(), intactos);
    }

    TEST_F(Actualizacion, that_does_not_fit_on_the_disk_leaves_them)
    {
        // Their logs have been taken in before: it is the new file that does not fit.
        for (const auto* fichero : { "orvalin.db", "bexmor.db" })
            static_cast<void>(sqlite::Connection::Abrir({ .fichero = carpeta / fichero }));
        for (const rlim_t bytes : { 40'000U, 100'000U, 200'000U }) {
            const pruebas::DiscoLleno lleno(bytes);
            EXPECT_THAT(
                al_actualizar(), HasSubstr("No se pudo hacer «" + (carpeta / "empresa.db").string() + "»: "))
                << bytes;
            EXPECT_EQ(ficheros(), intactos) << bytes;
        }
        EXPECT_EQ(al_actualizar(), "no error");
    }

    TEST_F(Actualizacion, of_one_file_without_the_other_names_the_missing_one)
    {
        fs::remove(carpeta / "bexmor.db");
        fs::remove(carpeta / "bexmor.db-wal");
        EXPECT_EQ(al_actualizar(), "«" + (carpeta / "bexmor.db").string() + "»: no existe la base de datos.");
        EXPECT_TRUE(fs::exists(carpeta / "orvalin.db"));
    }

    TEST_F(Actualizacion, of_files_of_somebody_else_is_refused)
    {
        sqlite::Connection::Abrir({ .fichero = carpeta / "bexmor.db" })->Execute("DROP TABLE Esquema");
        EXPECT_EQ(al_actualizar(),
            "«" + (carpeta / "bexmor.db").string() + "»: no es una base de datos de este programa.");
        EXPECT_FALSE(fs::exists(carpeta / "empresa.db"));
    }

    TEST_F(Actualizacion, tells_how_far_it_has_come)
    {
        std::uint64_t ultimas = 0;
        std::uint64_t total = 0;
        sqlite::Connection::Abrir({ .fichero = carpeta / "bexmor.db" })
            ->Execute(
                "INSERT INTO Tipos_Doc WITH RECURSIVE n (i) AS (SELECT 100 UNION ALL SELECT i + 1 FROM n "
                "WHERE i < 5000) SELECT i, 'x' FROM n");
        actualiza_bases(carpeta.ruta(),
            { .examina = [](const Bases&) { return std::string(); },
                .avance =
                    [&](auto hechas, auto de) {
                        EXPECT_GT(hechas, ultimas);
                        ultimas = hechas;
                        total = de;
                    } });
        EXPECT_GT(total, 4900U);
        EXPECT_GT(ultimas, total - 1024);
        EXPECT_LE(ultimas, total);
    }

}
} // namespace atipicos::bases
