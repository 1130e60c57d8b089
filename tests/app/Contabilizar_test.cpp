// What a process that died between its two commits leaves behind: found, proposed to be mended, and mended by
// the very commands that were proposed.
#include "tests/app/Programa.hpp"

#include "engines/sqlite/Connection.hpp"

#include <gmock/gmock.h>

#include <regex>

namespace atipicos {
namespace {

    using testing::EndsWith;
    using testing::HasSubstr;
    using testing::Not;
    using testing::StartsWith;

    constexpr auto sin_diferencias = ": sin diferencias.\n";

    struct Contabilizar : testing::Test {
        pruebas::Programa programa;
        std::string datos = "mis datos d'aquí"; ///< a name that a shell would take apart

        Contabilizar()
        {
            programa.escribe("r.csv",
                "referencia;almacen;proveedor;fecha;observaciones;franquiciado;articulo;descripcion;unidades;"
                "costo;observaciones_linea\n"
                "R1;1;101;21/11/2026;;;;Agua;1;10;\nR2;1;104;21/11/2026;;;1003;Vino;2;30,555;\n"
                "R2;;;;;;;Porte;1;5;\nR3;2;103;20/11/2026;;;;Queso;3;7;\n");
            EXPECT_EQ(programa("crear" + donde()).estado, 0);
            EXPECT_EQ(programa("registrar r.csv" + donde()).estado, 0);
        }

        [[nodiscard]] std::string donde() const { return " --datos \"" + datos + "\""; }

        void gestion(const std::string& sql) const { abre().gestion->Execute(sql); }

        /// What rolling back the accounting part of a save leaves: nothing of the entry, and its number free.
        void pierde_asiento(const std::string& numero) const
        {
            for (const auto* tabla : { "Previsiones", "Registro_Impuestos", "Apuntes" })
                contabilidad(
                    std::string("DELETE FROM ") + tabla + " WHERE Cod_Empresa = 1 AND Asiento = " + numero);
            contabilidad("DELETE FROM Asientos WHERE Cod_Empresa = 1 AND Numero = " + numero);
        }

        /// Gives the commands of a proposal, letter by letter, to a shell in which `atipicos` is the program.
        std::string sigue(const std::string& propuesta) const
        {
            std::string guion = "atipicos() { '" ATIPICOS_PROGRAMA "' \"$@\"; }\n";
            const std::regex orden("\n {7}(atipicos contabilizar [^\n]*)");
            for (std::sregex_iterator una(propuesta.begin(), propuesta.end(), orden), fin; una != fin; ++una)
                guion += una->str(1) + "\n";
            programa.escribe("pasos.sh", guion);
            const auto resultado = std::system(
                ("cd '" + programa.carpeta.ruta().string() + "' && bash pasos.sh >pasos.txt 2>&1").c_str());
            EXPECT_EQ(resultado, 0);
            return programa.lee("pasos.txt");
        }

    private:
        void contabilidad(const std::string& sql) const { abre().contabilidad->Execute(sql); }
        [[nodiscard]] sql::Pareja abre() const
        {
            return sqlite::Connection::AbrirPareja({ .fichero = programa.carpeta / datos / "empresa.db" });
        }
    };

    TEST_F(Contabilizar, with_nothing_to_mend_nothing_is_proposed)
    {
        const auto verificado = programa("verificar --proponer" + donde());
        EXPECT_EQ(verificado.estado, 0);
        EXPECT_THAT(verificado.salida, EndsWith(": sin diferencias.\nNada que proponer.\n"));
    }

    TEST_F(Contabilizar, a_charge_whose_entry_does_not_exist_is_named_and_mended_by_the_proposed_command)
    {
        pierde_asiento("2");
        const auto verificado = programa("verificar --proponer" + donde());
        EXPECT_EQ(verificado.estado, 1);
        EXPECT_THAT(verificado.salida,
            StartsWith(
                "cargo AT260002 (empresa 1, ejercicio 2026, almacén 1): su asiento 2 (empresa contable "
                "1, ejercicio 2026) no existe en Contabilidad.\n"));
        EXPECT_THAT(verificado.salida,
            EndsWith(
                ": 1 diferencia.\n"
                "Propuesta (no se ha ejecutado nada):\n"
                "1. El cargo AT260002 (empresa 1, ejercicio 2026, almacén 1) nombra el asiento 2 (empresa "
                "contable 1, ejercicio 2026), que no es suyo o no existe.\n"
                "   Contabilícelo; recibirá un asiento nuevo, con las previsiones que resulten de las "
                "condiciones\n   del proveedor. Si era de un franquiciado, añada --franquiciado.\n"
                "       atipicos contabilizar AT260002 --ejercicio 2026 --almacen 1 --empresa 1 --datos "
                "'mis datos d'\\''aquí'\n"
                "Después, compruebe el resultado con: atipicos verificar --datos 'mis datos "
                "d'\\''aquí'\n"));
        EXPECT_THAT(programa("verificar" + donde()).salida, EndsWith(": 1 diferencia.\n"))
            << "nothing was run";
        EXPECT_EQ(sigue(verificado.salida),
            "Contabilizado el cargo AT260002: asiento 4 de la empresa contable 1, ejercicio 2026.\n");
        EXPECT_THAT(programa("verificar" + donde()).salida, EndsWith(sin_diferencias));
    }

    TEST_F(Contabilizar, a_number_that_went_to_another_charge_is_named_and_mended)
    {
        pierde_asiento("2");
        gestion("UPDATE Proveedores_Cargos_Atipicos SET Asiento = 1 WHERE Codigo = 'AT260002'");
        gestion("UPDATE Proveedores_Cargos_Atipicos SET Asiento = 0 WHERE Cod_Almacen = 2");
        const auto verificado = programa("verificar --proponer" + donde()).salida;
        EXPECT_THAT(verificado,
            HasSubstr("cargo AT260002 (empresa 1, ejercicio 2026, almacén 1): su asiento 1 "
                      "(empresa contable 1, ejercicio 2026) es del documento AT260001.\n"));
        EXPECT_THAT(sigue(verificado), HasSubstr("asiento 4 de la empresa contable 1"));
        EXPECT_THAT(programa("verificar" + donde()).salida, EndsWith(sin_diferencias))
            << "a charge that never had one is mended too; the entry that it had is without charge";
    }

    TEST_F(Contabilizar, a_charge_that_has_its_entry_is_refused_and_so_is_one_that_is_not_there)
    {
        const auto segunda = programa("contabilizar AT260001 --ejercicio 2026 --almacen 1" + donde());
        EXPECT_EQ(segunda.estado, 1);
        EXPECT_EQ(segunda.errores,
            "atipicos: El cargo AT260001 (empresa 1, ejercicio 2026, almacén 1) no necesita otro asiento: no "
            "se ha contabilizado nada.\n");
        EXPECT_EQ(programa("contabilizar AT269999 --ejercicio 2026 --almacen 1" + donde()).errores,
            "atipicos: No existe el cargo AT269999 del ejercicio 2026 en el almacén 1.\n");
        EXPECT_THAT(programa("verificar" + donde()).salida, HasSubstr(" 3 asientos, "));
    }

    TEST_F(Contabilizar, the_new_entry_holds_what_the_lost_one_held)
    {
        const std::string mostrar = "mostrar AT260002 --ejercicio 2026 --almacen 1" + donde();
        const auto sin_numero = [](const std::string& texto) {
            return std::regex_replace(texto, std::regex("Asiento \\d+"), "");
        };
        const auto antes = sin_numero(programa(mostrar).salida);
        pierde_asiento("2");
        sigue(programa("verificar --proponer" + donde()).salida);
        EXPECT_EQ(sin_numero(programa(mostrar).salida), antes);
        EXPECT_THAT(antes, HasSubstr("75900010"));
    }

    TEST_F(Contabilizar, a_franchisee_is_posted_on_the_debt_account_when_told)
    {
        pierde_asiento("2");
        const auto hecho
            = programa("contabilizar AT260002 --ejercicio 2026 --almacen 1 --franquiciado" + donde());
        EXPECT_EQ(hecho.estado, 0) << hecho.errores;
        EXPECT_THAT(programa("mostrar AT260002 --ejercicio 2026 --almacen 1" + donde()).salida,
            HasSubstr("\nD  52100104"));
    }

    TEST_F(Contabilizar, a_charge_that_lost_a_line_is_not_posted_and_the_window_is_proposed)
    {
        pierde_asiento("2");
        gestion("DELETE FROM Proveedores_Cargos_Atipicos_Lineas WHERE Codigo = 'AT260002' AND Num_Linea = 2");
        const auto verificado = programa("verificar --proponer" + donde()).salida;
        EXPECT_THAT(verificado, HasSubstr("ábralo en el visor con «Modificar», complételo\n   y acéptelo"));
        EXPECT_THAT(verificado, HasSubstr("Diferencias para las que no hay propuesta: 1.\n"));
        EXPECT_THAT(verificado, Not(HasSubstr("atipicos contabilizar")));
        const auto hecho = programa("contabilizar AT260002 --ejercicio 2026 --almacen 1" + donde());
        EXPECT_EQ(hecho.estado, 1);
        EXPECT_THAT(hecho.errores, HasSubstr("no está completo"));
    }

    TEST_F(Contabilizar, a_tax_that_has_changed_since_is_told)
    {
        pierde_asiento("2");
        gestion("UPDATE Tipos_Impuesto SET Porcentaje = 9.5 WHERE Codigo = 1");
        const auto hecho = programa("contabilizar AT260002 --ejercicio 2026 --almacen 1" + donde());
        EXPECT_EQ(hecho.estado, 1);
        EXPECT_EQ(hecho.errores,
            "atipicos: El cargo AT260002 se guardó con un impuesto del 7,00 % y ahora es del 9,50 %: ábralo "
            "en "
            "el visor con «Modificar» y acéptelo.\n");
    }

    TEST_F(Contabilizar, an_entry_that_accounting_refuses_changes_nothing)
    {
        pierde_asiento("2");
        gestion("UPDATE Almacenes SET CtaIngresosAtipicos = '7' WHERE Codigo = 1");
        const auto hecho = programa("contabilizar AT260002 --ejercicio 2026 --almacen 1" + donde());
        EXPECT_EQ(hecho.estado, 1);
        EXPECT_THAT(hecho.errores, StartsWith("[error] frmCompras_Atipicos:GenerarAsiento: ["));
        EXPECT_EQ(hecho.salida, "");
        EXPECT_THAT(programa("verificar" + donde()).salida, HasSubstr(" 2 asientos, "));
    }

}
}
