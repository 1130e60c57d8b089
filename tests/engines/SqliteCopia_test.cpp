#include "engines/sqlite/Copia.hpp"

#include "engines/sql/Guion.hpp"
#include "engines/sqlite/Connection.hpp"
#include "engines/sqlite/Examen.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/DiscoLleno.hpp"

#include <gmock/gmock.h>

#include <fstream>

namespace atipicos::sqlite {
namespace {

    using testing::AllOf;
    using testing::HasSubstr;

    /// A database of some four megabytes, which takes several steps to copy.
    struct Copia : testing::Test {
        pruebas::CarpetaTemporal carpeta;
        std::shared_ptr<Connection> original = Connection::Abrir(
            { .fichero = carpeta / "a.db", .crear = true, .sincronizacion_completa = false });
        int avisos = 0;

        Copia()
        {
            sql::ejecuta_guion(*original,
                "CREATE TABLE t (Id INT PRIMARY KEY, Texto NVARCHAR(4000));"
                "CREATE TABLE vacia (Id INT PRIMARY KEY)");
            original->Execute("INSERT INTO t WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                              "WHERE i < 1000) SELECT i, hex(zeroblob(2000)) FROM n");
        }

        void copia_a(const char* destino, const std::function<void()>& mientras = {})
        {
            copia(carpeta / "a.db", carpeta / destino, [&](auto hechas, auto total) {
                ++avisos;
                EXPECT_LE(hechas, total);
                if (mientras)
                    mientras();
            });
        }
        std::map<std::string, std::int64_t> filas(const char* fichero) const
        {
            const auto sesion = Sesion::abre({ .fichero = carpeta / fichero, .solo_lectura = true }, Donde());
            return filas_por_tabla(*sesion);
        }
        template <class Accion> static std::string error_de(Accion accion)
        {
            try {
                accion();
            } catch (const adodb::ErrorBaseDatos& error) {
                return error.descripcion();
            }
            return "no error";
        }
    };

    using FilasPorTabla = std::map<std::string, std::int64_t>;

    TEST_F(Copia, holds_what_the_original_held_also_what_its_log_still_had)
    {
        copia_a("b.db");
        EXPECT_EQ(filas("b.db"), (FilasPorTabla{ { "t", 1000 }, { "vacia", 0 } }));
        EXPECT_GE(avisos, 3) << "in steps";
    }

    TEST_F(Copia, is_what_there_was_when_it_began_and_never_begins_anew)
    {
        copia_a("otra.db");
        const auto sin_estorbo = avisos;
        avisos = 0;
        const auto otro
            = Connection::Abrir({ .fichero = carpeta / "a.db", .sincronizacion_completa = false });
        copia_a(
            "b.db", [&] { otro->Execute("INSERT INTO vacia (Id) VALUES (" + std::to_string(avisos) + ")"); });
        EXPECT_EQ(filas("b.db").at("vacia"), 0);
        EXPECT_EQ(avisos, sin_estorbo);
        EXPECT_EQ(filas("a.db").at("vacia"), avisos) << "nobody had to wait";
    }

    TEST_F(Copia, stands_alone)
    {
        copia_a("b.db");
        EXPECT_FALSE(std::filesystem::exists(carpeta / "b.db-wal"));
        EXPECT_FALSE(std::filesystem::exists(carpeta / "b.db-journal"));
    }

    TEST_F(Copia, that_does_not_fit_says_so)
    {
        const pruebas::DiscoLleno lleno(1'000'000);
        EXPECT_THAT(error_de([&] { copia_a("b.db"); }),
            AllOf(HasSubstr("No se pudo copiar «" + (carpeta / "a.db").string() + "» en «"
                      + (carpeta / "b.db").string() + "»: "),
                HasSubstr("No se puede leer o escribir la base de datos")));
    }

    TEST_F(Copia, of_a_damaged_file_is_refused)
    {
        original.reset();
        { // the pages in the middle, far from what opening reads
            std::fstream fichero(carpeta / "a.db", std::ios::binary | std::ios::in | std::ios::out);
            fichero.seekp(2'000'000);
            fichero << std::string(20'000, '\xff');
        }
        EXPECT_THAT(error_de([&] { copia_a("b.db"); }), HasSubstr("dañado"));
    }

    TEST_F(Copia, of_what_is_not_there_names_it)
    {
        EXPECT_THAT(error_de([&] { copia(carpeta / "no.db", carpeta / "b.db", {}); }),
            HasSubstr("no.db»: no existe la base de datos."));
    }

}
}
