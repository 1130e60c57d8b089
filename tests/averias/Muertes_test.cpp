// The program killed at each thing that it does to the file system, while it makes, upgrades and copies
// databases: what was there is there, or what is to be there, and the same command comes to its end.
// Ordinarily every seventh; with ATIPICOS_PRUEBA_LARGA every one.
#include "tests/app/Programa.hpp"
#include "tests/support/FormatoAnterior.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <set>

namespace atipicos {
namespace {

    namespace fs = std::filesystem;

    using testing::HasSubstr;
    using testing::StartsWith;

    constexpr int muerta = 128 + SIGKILL;

    struct Muertes : testing::Test {
        pruebas::Programa programa;
        int muertes = 0;
        bool con_nombre = false; ///< on a disk where every file has a name

        /// With the folder `d`, which is named in full: by that its operations are known.
        std::string con_d(const std::string& orden) const
        {
            return orden + " --datos '" + (programa.carpeta / "d").string() + "'";
        }
        pruebas::Ejecucion muere_en(int n, const std::string& orden, const char* donde = "d") const
        {
            return programa(orden,
                "LD_PRELOAD='" ATIPICOS_MUERTE "' ATIPICOS_MUERTE_EN='" + (programa.carpeta / donde).string()
                    + "' ATIPICOS_MUERTE_N=" + std::to_string(n)
                    + (con_nombre ? " ATIPICOS_CON_NOMBRE=1" : ""));
        }

        /// Gives the command, killed at its n-th operation, and `tras`; false when it had fewer.
        template <class Prepara, class Tras>
        bool mata_en(int n, const std::string& orden, const char* donde, Prepara prepara, Tras tras)
        {
            SCOPED_TRACE(n);
            prepara();
            const auto ejecucion = muere_en(n, orden, donde);
            if (ejecucion.estado == 0)
                return false;
            EXPECT_EQ(ejecucion.estado, muerta) << ejecucion.errores;
            ++muertes;
            tras();
            return true;
        }

        /// At each of its operations, or every seventh (`salto`) and then the last ones, which give files
        /// their names.
        template <class Prepara, class Tras>
        void mata(const std::string& orden, const char* donde, Prepara prepara, Tras tras, int salto = 7)
        {
            const int paso = std::getenv("ATIPICOS_PRUEBA_LARGA") != nullptr ? 1 : salto;
            int n = 1;
            while (!HasFailure() && mata_en(n, orden, donde, prepara, tras))
                n += paso;
            for (int ultima = n - 3 * paso; paso > 1 && ultima < n && !HasFailure(); ++ultima)
                mata_en(std::max(ultima, 1), orden, donde, prepara, tras);
            std::cout << muertes << " deaths\n";
        }

        std::set<std::string> entradas(const char* donde) const
        {
            std::set<std::string> nombres;
            for (const auto& nombre : todas(donde))
                if (!nombre.starts_with(".nuevas-")) // swept when they are old
                    nombres.insert(nombre);
            return nombres;
        }
        std::set<std::string> todas(const char* donde) const
        {
            std::set<std::string> nombres;
            for (const auto& entrada : fs::directory_iterator(programa.carpeta / donde))
                nombres.insert(entrada.path().filename().string());
            return nombres;
        }
        void pon(const char* nombre, const char* copia_de) const
        {
            fs::remove_all(programa.carpeta / nombre);
            fs::copy(programa.carpeta / copia_de, programa.carpeta / nombre, fs::copy_options::recursive);
        }
    };

    TEST_F(Muertes, crear_leaves_a_whole_company_or_nothing_at_all)
    {
        const auto vacia = [&] {
            fs::remove_all(programa.carpeta / "d");
            fs::create_directory(programa.carpeta / "d");
        };
        int sin_nada = 0;
        mata(
            con_d("crear"), "d", vacia,
            [&] {
                if (todas("d").empty()) {
                    ++sin_nada;
                    EXPECT_EQ(programa(con_d("crear")).estado, 0);
                }
                EXPECT_EQ(todas("d"), std::set<std::string>{ "empresa.db" });
                EXPECT_EQ(programa(con_d("verificar")).estado, 0);
            },
            1);
        EXPECT_GT(sin_nada, 5); // in the middle of the file, before it is on the disk, before it has its name
        EXPECT_GT(muertes, sin_nada); // before its name is on the disk
    }

    TEST_F(Muertes, crear_leaves_a_whole_company_or_none_also_where_every_file_has_a_name)
    {
        con_nombre = true;
        const auto vacia = [&] {
            fs::remove_all(programa.carpeta / "d");
            fs::create_directory(programa.carpeta / "d");
        };
        int sin_nada = 0;
        mata(
            con_d("crear"), "d", vacia,
            [&] {
                if (entradas("d").empty()) {
                    ++sin_nada;
                    EXPECT_EQ(programa(con_d("crear")).estado, 0);
                }
                EXPECT_EQ(entradas("d"), std::set<std::string>{ "empresa.db" });
                EXPECT_EQ(programa(con_d("verificar")).estado, 0);
            },
            1);
        EXPECT_GT(sin_nada, 5);
        EXPECT_GT(muertes, sin_nada);
    }

    TEST_F(Muertes, actualizar_leaves_the_old_or_the_new_and_finishes_when_it_is_run_again)
    {
        ASSERT_EQ(programa("crear --datos hoy").estado, 0);
        ASSERT_EQ(
            programa("registrar --datos hoy '" ATIPICOS_FUENTES "/host/datos/reclamaciones.csv'").estado, 0);
        const auto verificado = programa("verificar --datos hoy").salida;
        ASSERT_THAT(verificado, StartsWith("Verificación: 74 cargos, "));
        pruebas::hace_formato_anterior(programa.carpeta / "hoy/empresa.db", programa.carpeta / "antes");
        int de_antes = 0;
        int de_hoy = 0;
        mata(
            con_d("actualizar"), "d", [&] { pon("d", "antes"); },
            [&] {
                if (const auto dicho = programa(con_d("verificar")); dicho.estado == 0) {
                    EXPECT_EQ(dicho.salida, verificado);
                    ++de_hoy;
                } else {
                    EXPECT_THAT(dicho.errores, HasSubstr("Actualícelas con: atipicos actualizar"));
                    ++de_antes;
                }
                const auto acabada = programa(con_d("actualizar"));
                EXPECT_EQ(acabada.estado, 0) << acabada.errores;
                EXPECT_EQ(entradas("d"),
                    (std::set<std::string>{ "bexmor.db.anterior", "empresa.db", "orvalin.db.anterior" }));
                EXPECT_EQ(programa(con_d("verificar")).salida, verificado);
            });
        EXPECT_GT(de_antes, 20);
        EXPECT_GT(de_hoy, 1);
        std::cout << de_antes << " left the old, " << de_hoy << " the new\n";
    }

    TEST_F(Muertes, copiar_leaves_a_whole_copy_or_none_and_the_company_as_it_was)
    {
        ASSERT_EQ(programa(con_d("crear")).estado, 0);
        const auto antes = programa.lee("d/empresa.db");
        const auto destino = " '" + (programa.carpeta / "c/").string() + "'";
        const auto vacia = [&] {
            fs::remove_all(programa.carpeta / "c");
            fs::create_directory(programa.carpeta / "c");
        };
        mata(con_d("copiar" + destino), "c", vacia, [&] {
            if (!entradas("c").empty()) {
                EXPECT_EQ(entradas("c"), std::set<std::string>{ "empresa.db" });
                EXPECT_EQ(programa("verificar --datos c").estado, 0);
            } else {
                EXPECT_EQ(programa(con_d("copiar" + destino)).estado, 0);
            }
            EXPECT_EQ(programa(con_d("verificar")).estado, 0);
            EXPECT_TRUE(programa.lee("d/empresa.db") == antes);
        });
        EXPECT_GT(muertes, 10);
    }

}
}
