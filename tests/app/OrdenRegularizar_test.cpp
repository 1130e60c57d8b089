// The command that reverses what deletions have left in accounting, as it is given; and what `verificar` says
// of a damaged file and of a protected one.
#include "tests/app/Programa.hpp"

#include "engines/sqlite/Connection.hpp"
#include "engines/sqlite/Instruccion.hpp"

#include <gmock/gmock.h>

#include <unistd.h>

namespace atipicos {
namespace {

    using testing::EndsWith;
    using testing::HasSubstr;
    using testing::Not;
    using testing::StartsWith;

    struct OrdenRegularizar : testing::Test {
        pruebas::Programa programa;

        OrdenRegularizar()
        {
            programa.escribe("r.csv",
                "referencia;almacen;proveedor;fecha;observaciones;franquiciado;articulo;descripcion;unidades;"
                "costo;observaciones_linea\n"
                "R1;1;101;17/03/2026;;;;Agua;1;10;\nR2;1;104;18/03/2026;;;1003;Vino;2;30,555;\n"
                "R2;;;;;;;Porte;1;5;\nR3;2;103;19/03/2026;;;;Queso;3;7;\n");
            EXPECT_EQ(programa("crear").estado, 0);
            EXPECT_EQ(programa("registrar r.csv").estado, 0);
        }

        void elimina(const std::string& codigo, const std::string& almacen = "1") const
        {
            EXPECT_EQ(
                programa("eliminar " + codigo + " --ejercicio 2026 --almacen " + almacen + " --si").estado,
                0);
        }
        void sql(const std::string& instruccion) const
        {
            sqlite::Connection::Abrir({ .fichero = programa.carpeta / "datos/empresa.db" })
                ->Execute(instruccion);
        }
    };

    TEST_F(OrdenRegularizar, lists_what_is_left_over_and_does_nothing_without_a_yes)
    {
        elimina("AT260002");
        const auto ejecucion = programa("regularizar");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_EQ(ejecucion.salida,
            "Asiento   Fecha       Documento  Cuenta    Importe  Qué es\n"
            "--------  ----------  ---------  --------  -------  "
            "-------------------------------------------------\n"
            "1/2026/2  18/03/2026  AT260002   40000104    70,74  de un cargo eliminado, o que no llegó a "
            "guardarse\n");
        EXPECT_EQ(ejecucion.errores,
            "atipicos: No hay un terminal en el que preguntar: repita la orden con --si.\n");
        const auto verificado = programa("verificar --proponer").salida;
        EXPECT_THAT(verificado, HasSubstr(" 3 asientos, "));
        EXPECT_THAT(verificado,
            HasSubstr("Cuenta 40000104 (empresa contable 1): el saldo de los cargos que existen y 70,74 que "
                      "sobran.\n"));
        EXPECT_THAT(verificado,
            HasSubstr("Asientos sin cargo: 1. Véalos, y anule los que sobran, con: atipicos regularizar "
                      "--datos datos\n"));
    }

    TEST_F(OrdenRegularizar, reverses_them_once_and_the_books_are_those_of_the_charges_that_exist)
    {
        elimina("AT260002");
        const auto hecha = programa("regularizar --si --fecha 25/06/2026");
        EXPECT_EQ(hecha.estado, 0) << hecha.errores;
        EXPECT_THAT(hecha.salida,
            EndsWith("El asiento 2 (empresa contable 1, ejercicio 2026) queda anulado con el 1/2026/4.\n"));
        const auto otra = programa("regularizar --si");
        EXPECT_EQ(otra.estado, 0);
        EXPECT_EQ(otra.salida, "No hay asientos que anular.\n");
        const auto verificado = programa("verificar");
        EXPECT_EQ(verificado.estado, 0);
        EXPECT_EQ(verificado.salida,
            "Asientos regularizados: 1; saldados a mano: 0\n"
            "Verificación: 2 cargos, 2 líneas, 4 asientos, 22 apuntes, 4 registros de impuesto, 8 "
            "previsiones: "
            "sin diferencias.\n");
    }

    TEST_F(OrdenRegularizar, a_year_that_is_not_open_is_told_before_anything_is_asked)
    {
        elimina("AT260002");
        const auto ejecucion = programa("regularizar --si --fecha 25/06/2031");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_EQ(ejecucion.errores,
            "atipicos: El ejercicio 2031 no está abierto en la empresa contable 1: ábralo en Contabilidad. "
            "No "
            "se ha anulado nada; otro día se da con --fecha.\n");
        EXPECT_THAT(programa("verificar").salida, HasSubstr(" 3 asientos, "));
    }

    TEST_F(OrdenRegularizar, what_may_be_a_charge_s_is_reversed_only_by_name)
    {
        sql("UPDATE Proveedores_Cargos_Atipicos SET Asiento = 0 WHERE Codigo = 'AT260002'");
        elimina("AT260001", "2");
        const auto todos = programa("regularizar --si");
        EXPECT_THAT(todos.salida,
            HasSubstr(
                "quizá del cargo AT260002 (empresa 1, ejercicio 2026, almacén 1), que no tiene asiento"));
        EXPECT_THAT(todos.salida, HasSubstr("Sin nombrarlos no se anulan 1 asiento, porque no es seguro"));
        EXPECT_THAT(
            todos.salida, HasSubstr("El asiento 3 (empresa contable 1, ejercicio 2026) queda anulado"));
        EXPECT_THAT(todos.salida, Not(HasSubstr("El asiento 2 ")));
        const auto nombrado = programa("regularizar 1/2026/2 --si");
        EXPECT_EQ(nombrado.estado, 0);
        EXPECT_THAT(nombrado.salida,
            EndsWith("El asiento 2 (empresa contable 1, ejercicio 2026) queda anulado con el 1/2026/5.\n"));
    }

    TEST_F(OrdenRegularizar, what_was_reversed_by_hand_is_noted_and_nothing_is_posted)
    {
        elimina("AT260002");
        const auto hecha = programa("regularizar --saldado 1/2026/2 --si");
        EXPECT_EQ(hecha.estado, 0) << hecha.errores;
        EXPECT_THAT(hecha.salida,
            EndsWith("El asiento 2 (empresa contable 1, ejercicio 2026) queda como saldado a mano.\n"));
        EXPECT_EQ(programa("regularizar --si").salida, "No hay asientos que anular.\n");
        EXPECT_THAT(programa("verificar").salida,
            StartsWith("Asientos regularizados: 0; saldados a mano: 1\nVerificación: 2 cargos, 2 líneas, 3 "
                       "asientos, "));
    }

    TEST_F(OrdenRegularizar, an_entry_that_is_a_charge_s_and_names_that_are_none_are_refused)
    {
        const auto de_un_cargo = programa("regularizar 1/2026/1 --si");
        EXPECT_EQ(de_un_cargo.estado, 1);
        EXPECT_THAT(de_un_cargo.errores,
            StartsWith(
                "atipicos: El asiento 1 (empresa contable 1, ejercicio 2026) no es de los que están sin "
                "cargo: no se ha hecho nada."));
        for (const auto* mal :
            { "2026/1", "1/2026/0", "1/2026/5x", "1/99999/5", "uno", "1/2026/5 --saldado 1/2026/5",
                "--saldado 1/2026/5 --fecha 01/02/2026", "--fecha 31/02/2026" })
            EXPECT_EQ(programa("regularizar " + std::string(mal) + " --si").estado, 2) << mal;
        EXPECT_THAT(programa("verificar").salida, HasSubstr(" 3 asientos, "));
    }

    TEST_F(OrdenRegularizar, eliminar_says_how_its_entry_is_reversed)
    {
        EXPECT_EQ(programa("eliminar AT260002 --ejercicio 2026 --almacen 1 --si").salida,
            "Eliminado el cargo AT260002.\n"
            "Su asiento 2 de la empresa contable 1 sigue en Contabilidad; elimínelo allí con sus previsiones "
            "de "
            "pago, o anúlelo con: atipicos regularizar\n");
    }

    /// Somebody who may not write where he is not allowed to; root may everywhere.
    std::string sin_privilegios()
    {
        return geteuid() == 0 ? "setpriv --reuid=65534 --regid=65534 --clear-groups" : "";
    }

    struct Protegida : OrdenRegularizar {
        pruebas::Ejecucion lee(const std::string& orden) const { return programa(orden, sin_privilegios()); }
        /// The outputs of the program cannot go into a folder in which nobody may write.
        void protege(const char* permisos) const
        {
            EXPECT_EQ(std::system(("chmod 755 '" + programa.carpeta.ruta().string() + "' && chmod -R "
                          + permisos + " '" + (programa.carpeta / "datos").string() + "'")
                                      .c_str()),
                0);
        }
        ~Protegida() override { protege("u+w"); }

        void se_lee() const
        {
            EXPECT_THAT(lee("verificar").salida, EndsWith(": sin diferencias.\n"))
                << lee("verificar").errores;
            EXPECT_THAT(lee("listar --desde 01/01/2026 --hasta 31/12/2026").salida, HasSubstr("AT260002"));
            EXPECT_THAT(lee("mostrar AT260002 --ejercicio 2026 --almacen 1").salida, HasSubstr("Cuadra"));
            EXPECT_EQ(lee("eliminar AT260002 --ejercicio 2026 --almacen 1 --si").errores,
                "atipicos: «datos/empresa.db»: la base de datos o su carpeta es de sólo lectura.\n");
        }
    };

    TEST_F(Protegida, a_company_is_read_where_nobody_can_write)
    {
        protege("a-w");
        se_lee();
        EXPECT_FALSE(std::filesystem::exists(programa.carpeta / "datos/empresa.db-wal"));
    }

    TEST_F(Protegida, what_its_log_still_holds_is_read_too)
    {
        const auto datos = programa.carpeta / "datos";
        {
            const auto conexion = sqlite::Connection::Abrir({ .fichero = datos / "empresa.db" });
            conexion->Execute("UPDATE Proveedores SET Nombre = 'Del diario' WHERE Codigo = 104");
            std::filesystem::copy_file(datos / "empresa.db", datos / "copia.db");
            std::filesystem::copy_file(datos / "empresa.db-wal", datos / "copia.db-wal");
        }
        std::filesystem::rename(datos / "copia.db", datos / "empresa.db");
        std::filesystem::rename(datos / "copia.db-wal", datos / "empresa.db-wal");
        protege("a-w");
        se_lee();
        EXPECT_THAT(lee("mostrar AT260002 --ejercicio 2026 --almacen 1").salida, HasSubstr("Del diario"));
        EXPECT_FALSE(std::filesystem::exists(datos / "empresa.db-shm"));
    }

    TEST_F(OrdenRegularizar, damage_that_no_reading_meets_is_a_difference)
    {
        const auto fichero = programa.carpeta / "datos/empresa.db";
        std::int64_t pagina = 0;
        {
            const auto sesion = sqlite::Sesion::abre({ .fichero = fichero }, Donde());
            sqlite::Instruccion consulta(sesion->base(),
                "SELECT rootpage FROM sqlite_master WHERE name = 'Proveedores_Cargos_Atipicos_Lista'",
                Donde());
            ASSERT_TRUE(consulta.avanza(Donde()));
            pagina = sqlite3_column_int64(consulta.get(), 0);
        }
        {
            std::fstream flujo(fichero, std::ios::in | std::ios::out | std::ios::binary);
            flujo.seekp(pagina * 4096 - 12);
            flujo << "xxxxxxxx";
        }
        const auto ejecucion = programa("verificar");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_THAT(ejecucion.salida, StartsWith("El fichero de la base de datos está dañado: "));
        EXPECT_THAT(ejecucion.salida, Not(HasSubstr("sin diferencias")));
    }

    TEST_F(OrdenRegularizar, rows_that_name_others_which_are_not_there_are_a_difference)
    {
        {
            const auto conexion
                = sqlite::Connection::Abrir({ .fichero = programa.carpeta / "datos/empresa.db" });
            conexion->Execute("PRAGMA foreign_keys=OFF");
            conexion->Execute("DELETE FROM Bexmor_Asientos WHERE Numero = 2");
        }
        const auto ejecucion = programa("verificar");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_THAT(ejecucion.salida,
            HasSubstr("La tabla Bexmor_Apuntes nombra filas de Bexmor_Asientos que no existen: 6.\n"));
    }

}
}
