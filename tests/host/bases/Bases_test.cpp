#include "host/bases/Bases.hpp"

#include "engines/sqlite/Connection.hpp"
#include "tests/host/BasesDeMuestra.hpp"
#include "tests/support/DiscoLleno.hpp"

#include <chrono>
#include <csignal>
#include <fstream>
#include <set>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace atipicos::bases {
namespace {

    using pruebas::columna;
    using pruebas::cuenta;
    using pruebas::error_de;

    struct Bases_ : testing::Test {
        pruebas::CarpetaTemporal carpeta;

        std::set<std::string> ficheros() const
        {
            std::set<std::string> nombres;
            for (const auto& entrada : std::filesystem::directory_iterator(carpeta.ruta()))
                nombres.insert(entrada.path().filename().string());
            return nombres;
        }
        std::string al_abrir() const
        {
            return error_de([&] { static_cast<void>(abre_bases(carpeta.ruta())); });
        }
        std::string al_crear() const
        {
            return error_de([&] { crea_bases(carpeta.ruta(), true); });
        }
    };

    TEST_F(Bases_, are_made_in_a_folder_that_did_not_exist)
    {
        const auto nueva = carpeta / "uno" / "dos";
        crea_bases(nueva, false);
        const auto bases = abre_bases(nueva);
        EXPECT_GE(cuenta(*bases.orvalin, "Proveedores"), 12);
        EXPECT_GE(cuenta(*bases.bexmor, "Cuentas"), 100);
    }

    TEST_F(Bases_, leave_nothing_beside_themselves)
    {
        crea_bases(carpeta.ruta(), false);
        EXPECT_EQ(ficheros(), std::set<std::string>{ "empresa.db" });
    }

    TEST_F(Bases_, made_empty_hold_the_tables_and_no_company)
    {
        crea_bases(carpeta.ruta(), true);
        const auto bases = abre_bases(carpeta.ruta());
        for (const auto* tabla :
            { "Empresas", "Proveedores", "Proveedores_Cargos_Atipicos", "Importaciones" })
            EXPECT_EQ(cuenta(*bases.orvalin, tabla), 0) << tabla;
        for (const auto* tabla : { "Empresas", "Ejercicios", "Cuentas", "Apuntes", "Previsiones" })
            EXPECT_EQ(cuenta(*bases.bexmor, tabla), 0) << tabla;
    }

    TEST_F(Bases_, are_never_made_over_others)
    {
        std::ofstream(carpeta / "empresa.db") << "de otro";
        EXPECT_EQ(al_crear(),
            "«" + (carpeta / "empresa.db").string()
                + "»: ya existe. Elija otra carpeta o retire antes esa base de datos.");
        EXPECT_EQ(ficheros(), std::set<std::string>{ "empresa.db" });
    }

    TEST_F(Bases_, that_several_make_at_once_are_made_by_one_of_them)
    {
        constexpr int cuantos = 4;
        for (int i = 0; i < cuantos; ++i)
            if (fork() == 0)
                _exit(al_crear() == "no error" ? 1 : 0);
        int hechas = 0;
        for (int i = 0; i < cuantos; ++i) {
            int estado = 0;
            wait(&estado);
            hechas += WEXITSTATUS(estado);
        }
        EXPECT_EQ(hechas, 1);
        EXPECT_EQ(ficheros(), std::set<std::string>{ "empresa.db" });
        EXPECT_EQ(al_abrir(), "no error");
    }

    TEST_F(Bases_, are_used_with_the_write_ahead_log_from_the_first_moment)
    {
        crea_bases(carpeta.ruta(), false);
        std::ifstream fichero(carpeta / "empresa.db", std::ios::binary);
        std::string cabecera(20, ' ');
        fichero.read(cabecera.data(), 20);
        EXPECT_EQ(cabecera.substr(18), "\2\2") << "the versions of a file with such a log";
        const auto lector = abre_bases(carpeta.ruta(), { .solo_lectura = true });
        EXPECT_EQ(columna(*lector.orvalin, "SELECT journal_mode AS m FROM pragma_journal_mode"),
            std::vector<std::string>{ "wal" });
        EXPECT_EQ(columna(*lector.orvalin, "SELECT integrity_check AS i FROM pragma_integrity_check"),
            std::vector<std::string>{ "ok" });
    }

    TEST_F(Bases_, whose_maker_is_killed_are_there_whole_or_not_at_all)
    {
        for (const int milisegundos : { 1, 3, 6, 10, 15, 25, 40 }) {
            const auto nueva = carpeta / std::to_string(milisegundos);
            std::filesystem::create_directory(nueva);
            const auto hijo = fork();
            if (hijo == 0) {
                crea_bases(nueva, false);
                _exit(0);
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(milisegundos));
            kill(hijo, SIGKILL);
            waitpid(hijo, nullptr, 0);
            if (std::filesystem::exists(nueva / "empresa.db")) {
                EXPECT_GE(cuenta(*abre_bases(nueva).orvalin, "Proveedores"), 12) << milisegundos;
            } else {
                EXPECT_TRUE(std::filesystem::is_empty(nueva)) << milisegundos;
                crea_bases(nueva, false);
            }
        }
    }

    TEST_F(Bases_, cannot_be_made_where_a_file_stands)
    {
        std::ofstream(carpeta / "fichero") << "x";
        EXPECT_EQ(error_de([&] { crea_bases(carpeta / "fichero", true); }),
            "«" + (carpeta / "fichero").string() + "»: no se puede crear la carpeta.");
    }

    TEST_F(Bases_, leave_nothing_half_made_when_the_disk_is_full)
    {
        for (const rlim_t bytes : { 4'000U, 40'000U, 120'000U }) {
            const pruebas::DiscoLleno lleno(bytes);
            EXPECT_NE(error_de([&] { crea_bases(carpeta.ruta(), false); }), "no error") << bytes;
            EXPECT_EQ(ficheros(), std::set<std::string>{}) << bytes;
        }
        EXPECT_EQ(error_de([&] { crea_bases(carpeta.ruta(), false); }), "no error");
    }

    TEST_F(Bases_, that_are_missing_are_named)
    {
        EXPECT_EQ(al_abrir(),
            "«" + carpeta.ruta().string()
                + "»: no hay ninguna base de datos en esta carpeta. Créela con: atipicos crear --datos '"
                + carpeta.ruta().string() + "'");
    }

    TEST_F(Bases_, of_another_version_are_refused_with_both_versions)
    {
        crea_bases(carpeta.ruta(), true);
        for (const bool contable : { false, true }) {
            const auto pon_version = [&](const char* version) {
                const auto pareja = sqlite::Connection::AbrirPareja({ .fichero = carpeta / "empresa.db" });
                (contable ? pareja.contabilidad : pareja.gestion)
                    ->Execute(std::string("UPDATE Esquema SET Version =") + version);
            };
            pon_version("7");
            EXPECT_EQ(al_abrir(),
                "«" + (carpeta / "empresa.db").string()
                    + "»: tiene la versión 7 de las tablas y este programa llega hasta la 6. Use la última "
                      "versión del "
                      "programa.");
            pon_version("1");
        }
    }

    TEST_F(Bases_, without_a_version_are_no_databases_of_this_program)
    {
        for (const auto* sin : { "Esquema", "Bexmor_Esquema" }) {
            crea_bases(carpeta.ruta(), true);
            abre_bases(carpeta.ruta()).orvalin->Execute(std::string("DROP TABLE ") + sin);
            EXPECT_EQ(al_abrir(),
                "«" + (carpeta / "empresa.db").string() + "»: no es una base de datos de este programa.");
            std::filesystem::remove(carpeta / "empresa.db");
        }
    }

    TEST_F(Bases_, opened_for_reading_cannot_be_written)
    {
        crea_bases(carpeta.ruta(), false);
        const auto bases = abre_bases(carpeta.ruta(), { .solo_lectura = true });
        for (const auto& conexion : { bases.orvalin, bases.bexmor }) {
            EXPECT_THROW(conexion->Execute("DELETE FROM Parametros"), adodb::ErrorBaseDatos);
            EXPECT_GT(cuenta(*conexion, "Parametros"), 0);
        }
    }

    TEST_F(Bases_, management_reads_what_accounting_has_committed)
    {
        crea_bases(carpeta.ruta(), false);
        const auto bases = abre_bases(carpeta.ruta());
        bases.bexmor->Execute("UPDATE Tipos_Doc SET Nombre ='Cheque' WHERE Codigo =2");
        EXPECT_EQ(columna(*bases.orvalin, "SELECT Nombre FROM Bexmor.dbo.Tipos_Doc WHERE Codigo =2"),
            std::vector<std::string>{ "Cheque" });
    }

    TEST_F(Bases_, an_error_names_the_line_that_asked)
    {
        std::uint32_t linea = 0;
        try {
            linea = __LINE__ + 1;
            static_cast<void>(abre_bases(carpeta / "no hay"));
            FAIL() << "opened";
        } catch (const Error& error) {
            EXPECT_EQ(error.donde().linea(), linea);
        }
    }

}
} // namespace atipicos::bases
