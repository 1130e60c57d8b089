// `copiar`, by the real program: while others record, onto a disk that is full, from a server.
#include "tests/app/Programa.hpp"

#include "tests/support/DiscoPequeno.hpp"

#include <gmock/gmock.h>

#include <set>

namespace atipicos {
namespace {

    namespace fs = std::filesystem;

    using testing::EndsWith;
    using testing::HasSubstr;

    struct Copiar : testing::Test {
        pruebas::Programa programa;

        Copiar() { EXPECT_EQ(programa("crear").estado, 0); }

        std::set<std::string> entradas(const char* donde) const
        {
            std::set<std::string> nombres;
            for (const auto& entrada : fs::directory_iterator(programa.carpeta / donde))
                nombres.insert(entrada.path().filename().string());
            return nombres;
        }

        /// So many charges of one workstation, each with a reference of its own.
        void escribe_reclamaciones(const std::string& fichero, int puesto) const
        {
            std::string filas = "referencia;almacen;proveedor;fecha;observaciones;franquiciado;articulo;"
                                "descripcion;unidades;costo;observaciones_linea\n";
            for (int i = 0; i < 60; ++i)
                filas += "P" + std::to_string(puesto) + "-" + std::to_string(i)
                    + ";1;101;21/11/2026;;;;Agua;1;10;\n";
            programa.escribe(fichero, filas);
        }
    };

    TEST_F(Copiar, makes_a_company_to_work_with_and_tells_what_is_in_it)
    {
        ASSERT_EQ(programa("registrar " + pruebas::muestra).estado, 0);
        const auto copiada = programa("copiar copias/");
        EXPECT_EQ(copiada.estado, 0);
        EXPECT_EQ(copiada.salida, "Copiada datos en copias/empresa.db.\n" + programa("verificar").salida);
        EXPECT_EQ(copiada.errores, "");
        EXPECT_EQ(entradas("copias"), std::set<std::string>{ "empresa.db" });
        EXPECT_EQ(programa("verificar --datos copias").salida, programa("verificar").salida);
        EXPECT_THAT(programa("registrar --datos copias " + pruebas::muestra).salida,
            EndsWith("\n0 registradas, 74 ya lo estaban, 0 rechazadas.\n"));
    }

    TEST_F(Copiar, refuses_a_name_that_is_taken_and_the_company_itself)
    {
        programa.escribe("x.db", "de otro");
        EXPECT_EQ(programa("copiar x.db").errores,
            "atipicos: «x.db»: ya existe. Elija otro nombre para la copia.\n");
        EXPECT_EQ(programa.lee("x.db"), "de otro");
        const auto sobre_si = programa("copiar datos");
        EXPECT_EQ(sobre_si.estado, 1);
        EXPECT_EQ(sobre_si.errores,
            "atipicos: «datos/empresa.db»: es la propia base de datos, no un sitio para su copia.\n");
    }

    TEST_F(Copiar, onto_a_full_disk_says_so_and_leaves_nothing)
    {
        const pruebas::DiscoPequeno disco(programa.carpeta / "disco", "100k");
        if (!disco.montado())
            GTEST_SKIP() << "mounting a small disk needs root";
        const auto copiada = programa("copiar disco");
        EXPECT_EQ(copiada.estado, 1);
        EXPECT_THAT(copiada.errores, HasSubstr("No queda sitio en el disco"));
        EXPECT_THAT(entradas("disco"), testing::IsEmpty());
    }

    TEST_F(Copiar, of_a_company_that_differs_is_made_and_said_to)
    {
        ASSERT_EQ(programa("registrar " + pruebas::muestra).estado, 0);
        ASSERT_EQ(std::system(("sqlite3 '" + (programa.carpeta / "datos/empresa.db").string()
                      + "' 'UPDATE Bexmor_Apuntes SET Debe = Debe + 1 WHERE Asiento = 1 AND Linea = 1'")
                                  .c_str()),
            0);
        const auto copiada = programa("copiar x.db");
        EXPECT_EQ(copiada.estado, 0);
        EXPECT_THAT(copiada.salida, EndsWith(" diferencias.\n"));
        EXPECT_EQ(copiada.errores,
            "La copia es fiel: las diferencias están en el original. Véalas con: atipicos verificar --datos "
            "datos\n");
    }

    TEST_F(Copiar, while_eight_workstations_record_is_whole_every_time)
    {
        std::string orden = "{ ";
        for (int puesto = 0; puesto < 8; ++puesto) {
            const auto fichero = "p" + std::to_string(puesto) + ".csv";
            escribe_reclamaciones(fichero, puesto);
            orden += "'" ATIPICOS_PROGRAMA "' registrar " + fichero + " >p" + std::to_string(puesto)
                + ".txt 2>&1 & ";
        }
        std::size_t distintas = 0;
        std::set<std::string> vistas;
        const auto copiadas = programa("--version",
            orden
                + "for i in 1 2 3 4 5 6 7 8 9 10; do '" ATIPICOS_PROGRAMA
                  "' copiar c$i/ >c$i.txt 2>&1 || exit 9; done; wait; };");
        ASSERT_EQ(copiadas.estado, 0);
        for (int i = 1; i <= 10; ++i) {
            const auto n = std::to_string(i);
            const auto dicho = programa.lee("c" + n + ".txt");
            EXPECT_THAT(dicho, EndsWith(": sin diferencias.\n"));
            EXPECT_EQ(entradas(("c" + n).c_str()), std::set<std::string>{ "empresa.db" });
            distintas += vistas.insert(dicho.substr(dicho.find("Verificación"))).second ? 1U : 0U;
        }
        EXPECT_GT(distintas, 2U) << "the copies were made while there was work going on";
        EXPECT_THAT(programa("verificar").salida, testing::StartsWith("Verificación: 480 cargos"));
        EXPECT_EQ(entradas("datos"), std::set<std::string>{ "empresa.db" });
    }

}
}
