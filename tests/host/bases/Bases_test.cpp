#include "host/bases/Bases.hpp"

#include "tests/host/BasesDeMuestra.hpp"

#include <csignal>
#include <fstream>
#include <set>
#include <sys/resource.h>

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
        EXPECT_EQ(ficheros(), (std::set<std::string>{ "bexmor.db", "orvalin.db" }));
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
        for (const auto* fichero : { "orvalin.db", "bexmor.db" }) {
            std::ofstream(carpeta / fichero) << "de otro";
            EXPECT_EQ(al_crear(),
                "«" + (carpeta / fichero).string()
                    + "»: ya existe. Elija otra carpeta o retire antes esas bases de datos.");
            EXPECT_EQ(ficheros(), std::set<std::string>{ fichero });
            std::filesystem::remove(carpeta / fichero);
        }
    }

    TEST_F(Bases_, cannot_be_made_where_a_file_stands)
    {
        std::ofstream(carpeta / "fichero") << "x";
        EXPECT_EQ(error_de([&] { crea_bases(carpeta / "fichero", true); }),
            "«" + (carpeta / "fichero").string() + "»: no se puede crear la carpeta.");
    }

    /// While it lives, no file of this process grows beyond so many bytes, as on a full disk.
    class DiscoLleno {
    public:
        explicit DiscoLleno(rlim_t bytes)
            : m_senal(std::signal(SIGXFSZ, SIG_IGN))
        {
            getrlimit(RLIMIT_FSIZE, &m_antes);
            const rlimit limite{ bytes, m_antes.rlim_max };
            setrlimit(RLIMIT_FSIZE, &limite);
        }
        DiscoLleno(const DiscoLleno&) = delete;
        DiscoLleno& operator=(const DiscoLleno&) = delete;
        ~DiscoLleno()
        {
            setrlimit(RLIMIT_FSIZE, &m_antes);
            static_cast<void>(std::signal(SIGXFSZ, m_senal));
        }

    private:
        void (*m_senal)(int);
        rlimit m_antes{};
    };

    TEST_F(Bases_, leave_nothing_half_made_when_the_disk_is_full)
    {
        for (const rlim_t bytes : { 4'000U, 40'000U, 120'000U }) {
            const DiscoLleno lleno(bytes);
            EXPECT_NE(error_de([&] { crea_bases(carpeta.ruta(), false); }), "no error") << bytes;
            EXPECT_EQ(ficheros(), std::set<std::string>{}) << bytes;
        }
        EXPECT_EQ(error_de([&] { crea_bases(carpeta.ruta(), false); }), "no error");
    }

    TEST_F(Bases_, that_are_missing_are_named)
    {
        EXPECT_EQ(al_abrir(),
            "«" + carpeta.ruta().string()
                + "»: no hay bases de datos en esta carpeta. Créelas con: atipicos crear --datos "
                + carpeta.ruta().string());
        crea_bases(carpeta.ruta(), true);
        std::filesystem::remove(carpeta / "orvalin.db");
        EXPECT_EQ(al_abrir(), "«" + (carpeta / "orvalin.db").string() + "»: no existe la base de datos.");
    }

    TEST_F(Bases_, of_another_version_are_refused_with_both_versions)
    {
        crea_bases(carpeta.ruta(), true);
        abre_bases(carpeta.ruta()).orvalin->Execute("UPDATE Esquema SET Version =7");
        EXPECT_EQ(al_abrir(),
            "«" + (carpeta / "orvalin.db").string()
                + "»: tiene la versión 7 de las tablas y este programa espera la 1.");
    }

    TEST_F(Bases_, without_a_version_are_no_databases_of_this_program)
    {
        const auto mensaje = [&](const char* fichero) {
            return "«" + (carpeta / fichero).string() + "»: no es una base de datos de este programa.";
        };
        crea_bases(carpeta.ruta(), true);
        abre_bases(carpeta.ruta()).orvalin->Execute("DROP TABLE Esquema");
        EXPECT_EQ(al_abrir(), mensaje("orvalin.db"));
        std::filesystem::rename(carpeta / "orvalin.db", carpeta / "bexmor.db");
        EXPECT_EQ(al_abrir(), mensaje("bexmor.db"));
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
