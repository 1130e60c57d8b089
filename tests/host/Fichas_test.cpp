// Suppliers and articles that are kept by the program itself, with the accounts that their charges need.
#include "host/fichas/Articulos.hpp"
#include "host/fichas/Proveedores.hpp"
#include "tests/host/BasesDeMuestra.hpp"

#include <gmock/gmock.h>

namespace atipicos::app {
namespace {

    using pruebas::columna;
    using pruebas::error_de;
    using testing::ElementsAre;
    using testing::StartsWith;

    struct Fichas : pruebas::BasesDeMuestra {
        Proveedores proveedores{ { bases, 1, 1 } };
        Articulos articulos{ { bases, 1, 1 } };
        const FichaDeProveedor mallas{ 345, "Mallas Ñoñas, S.L.", "B35999345", "Muelle, 9", "35501",
            "Arrecife", 6, 10, 25 };

        std::vector<std::string> cuentas(const std::string& como) const
        {
            return columna(*bases.bexmor,
                "SELECT DISTINCT Cuenta FROM Cuentas WHERE Cuenta LIKE '" + como + "' ORDER BY Cuenta");
        }
        std::vector<std::string> nombres(const std::string& cuenta) const
        {
            return columna(
                *bases.bexmor, "SELECT DISTINCT Nombre FROM Cuentas WHERE Cuenta = '" + cuenta + "'");
        }
    };

    TEST_F(Fichas, a_supplier_is_added_with_its_accounts_in_every_year_of_each_accounting_company)
    {
        EXPECT_FALSE(proveedores.lee(345));
        EXPECT_TRUE(proveedores.guarda(mallas));
        EXPECT_EQ(proveedores.lee(345), mallas);
        EXPECT_EQ(proveedores.todos().back(), mallas);
        EXPECT_THAT(cuentas("%0345"),
            ElementsAre("400000345", "40000345", "440000345", "44000345", "521000345", "52100345"));
        EXPECT_EQ(pruebas::cuenta(*bases.bexmor, "Cuentas WHERE Cuenta = '44000345'"), 4);
        EXPECT_EQ(pruebas::cuenta(*bases.bexmor, "Cuentas WHERE Cuenta = '44000345' AND Cod_Empresa =1"), 4);
        EXPECT_THAT(nombres("40000345"), ElementsAre("Mallas Ñoñas, S.L."));
        EXPECT_THAT(nombres("44000345"), ElementsAre("Mallas Ñoñas, S.L. (deudor)"));
        EXPECT_THAT(nombres("521000345"), ElementsAre("Mallas Ñoñas, S.L. (deuda a corto plazo)"));
    }

    TEST_F(Fichas, a_change_follows_into_the_names_of_its_accounts_but_not_into_those_given_by_hand)
    {
        EXPECT_TRUE(proveedores.guarda(mallas));
        bases.bexmor->Execute("UPDATE Cuentas SET Nombre = 'A mano' WHERE Cuenta = '52100345'");
        bases.bexmor->Execute("DELETE FROM Cuentas WHERE Cuenta = '40000345' AND Cod_Ejercicio =2025");
        auto otra = mallas;
        otra.nombre = "Redes O'Hara";
        otra.dia_pago_2 = 0;
        EXPECT_FALSE(proveedores.guarda(otra));
        otra.nombre = "Redes O´Hara"; // a quote would end the texts that it comes into
        EXPECT_EQ(proveedores.lee(345), otra);
        EXPECT_THAT(nombres("44000345"), ElementsAre("Redes O´Hara (deudor)"));
        EXPECT_THAT(nombres("52100345"), ElementsAre("A mano"));
        EXPECT_EQ(pruebas::cuenta(*bases.bexmor, "Cuentas WHERE Cuenta = '40000345'"), 4);
    }

    TEST_F(Fichas, own_accounts_of_a_supplier_take_the_place_of_those_that_are_formed)
    {
        EXPECT_TRUE(proveedores.guarda(mallas));
        bases.orvalin->Execute("UPDATE Proveedores SET Cta_Deudor = '44055555' WHERE Codigo =345");
        EXPECT_FALSE(proveedores.guarda(mallas));
        EXPECT_THAT(nombres("44055555"), ElementsAre("Mallas Ñoñas, S.L. (deudor)"));
    }

    TEST_F(Fichas, what_cannot_be_a_supplier_is_refused_and_nothing_is_changed)
    {
        const auto rehusado = [&](auto cambia) {
            auto ficha = mallas;
            cambia(ficha);
            return error_de([&] { proveedores.guarda(ficha); });
        };
        EXPECT_EQ(rehusado([](auto& f) { f.codigo = 0; }),
            "El código de un proveedor es un número mayor que cero.");
        EXPECT_EQ(rehusado([](auto& f) { f.nombre = ""; }), "Falta el nombre.");
        EXPECT_EQ(rehusado([](auto& f) { f.nombre = std::string(59, 'x'); }),
            "No cabe el nombre: son 59 letras y caben 58.");
        EXPECT_EQ(rehusado([](auto& f) { f.nif = std::string(16, 'x'); }),
            "No cabe el NIF: son 16 letras y caben 15.");
        EXPECT_EQ(rehusado([](auto& f) { f.domicilio = std::string(81, 'x'); }),
            "No cabe el domicilio: son 81 letras y caben 80.");
        EXPECT_EQ(rehusado([](auto& f) { f.codigo_postal = std::string(11, 'x'); }),
            "No cabe el código postal: son 11 letras y caben 10.");
        EXPECT_EQ(rehusado([](auto& f) { f.poblacion = std::string(61, 'x'); }),
            "No cabe la población: son 61 letras y caben 60.");
        EXPECT_EQ(rehusado([](auto& f) { f.dia_pago_1 = 32; }),
            "Un día de pago es un día del mes, de 1 a 31, o 0 si no lo hay.");
        EXPECT_EQ(rehusado([](auto& f) { f.dia_pago_2 = -1; }),
            "Un día de pago es un día del mes, de 1 a 31, o 0 si no lo hay.");
        EXPECT_EQ(rehusado([](auto& f) { f.forma_pago = 77; }), "No existe la forma de pago 77.");
        // The record is written before its accounts are formed: it goes with them.
        EXPECT_EQ(rehusado([](auto& f) { f.codigo = 1'234'567; }),
            "La raíz 400 y el código 1234567 no caben en una cuenta de 8 cifras.");
        EXPECT_FALSE(proveedores.lee(1'234'567));
        EXPECT_FALSE(proveedores.lee(345));
        auto justa = mallas;
        justa.nombre = std::string(58, 'x');
        justa.forma_pago = 0;
        justa.dia_pago_1 = 31;
        EXPECT_TRUE(proveedores.guarda(justa));
    }

    TEST_F(Fichas, the_next_code_is_above_all_others_and_the_first_is_1)
    {
        EXPECT_TRUE(proveedores.guarda(mallas));
        EXPECT_EQ(proveedores.libre(), 346);
        EXPECT_EQ(Proveedores({ bases, 7, 7 }).libre(), 1);
        EXPECT_THAT(formas_de_pago(*bases.bexmor).at(2), (FormaDePago{ 3, "A 30, 60 y 90 días" }));
    }

    TEST_F(Fichas, a_supplier_or_article_that_a_charge_names_stays)
    {
        EXPECT_TRUE(proveedores.guarda(mallas));
        EXPECT_TRUE(articulos.guarda({ 7001, "Red rota", "" }));
        bases.orvalin->Execute("INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, "
                               "Cod_Almacen, Codigo, Proveedor, Fecha, Importe, Asiento, EmpContable, "
                               "EjContable, Usuario, Hora, Observ, Cod_Compra, Documento, Impuesto, "
                               "Impuesto_Importe, Tipo) VALUES (2, 2026, 1, 'AT260009', 345, '10/02/2026', "
                               "1, 0, 2, 2026, 1, '10/02/2026', '', 0, 0, 7, 0, 0)");
        EXPECT_EQ(error_de([&] { proveedores.elimina(345); }),
            "No se puede eliminar el proveedor 345: tiene cargos, como el AT260009.");
        EXPECT_TRUE(proveedores.lee(345));
        bases.orvalin->Execute("UPDATE Proveedores_Cargos_Atipicos SET Proveedor = 101, Cod_Empresa = 1");
        proveedores.elimina(345);
        EXPECT_FALSE(proveedores.lee(345));
        EXPECT_EQ(error_de([&] { proveedores.elimina(345); }), "No existe el proveedor 345.");

        bases.orvalin->Execute("INSERT INTO Proveedores_Cargos_Atipicos_Lineas VALUES (1, 2026, 1, "
                               "'AT260009', 1, 7001, 'x', 1, 1, '')");
        EXPECT_EQ(error_de([&] { articulos.elimina(7001); }),
            "No se puede eliminar el artículo 7001: hay cargos con él, como el AT260009.");
        bases.orvalin->Execute("DELETE FROM Proveedores_Cargos_Atipicos_Lineas");
        articulos.elimina(7001);
        EXPECT_FALSE(articulos.lee(7001));
        EXPECT_EQ(error_de([&] { articulos.elimina(7001); }), "No existe el artículo 7001.");
    }

    TEST_F(Fichas, an_article_may_have_an_account_of_its_own_that_is_there)
    {
        EXPECT_TRUE(articulos.guarda({ 7001, "Red 'rota'", "75900010" }));
        EXPECT_EQ(articulos.lee(7001), (FichaDeArticulo{ 7001, "Red ´rota´", "75900010" }));
        EXPECT_FALSE(articulos.guarda({ 7001, "Red", "" }));
        EXPECT_EQ(articulos.lee(7001), (FichaDeArticulo{ 7001, "Red", "" }));
        EXPECT_EQ(articulos.libre(), 7002);
        EXPECT_EQ(articulos.todos().back().codigo, 7001);
        const auto rehusado
            = [&](FichaDeArticulo ficha) { return error_de([&] { articulos.guarda(ficha); }); };
        EXPECT_EQ(rehusado({ 7001, "Red", "75999999" }),
            "No existe la cuenta 75999999 en Contabilidad: deje la del almacén, o créela allí antes.");
        EXPECT_EQ(rehusado({ 7001, "", "" }), "Falta el nombre.");
        EXPECT_EQ(rehusado({ -7, "Red", "" }), "El código de un artículo es un número mayor que cero.");
        EXPECT_EQ(
            rehusado({ 7001, std::string(81, 'x'), "" }), "No cabe el nombre: son 81 letras y caben 80.");
        EXPECT_THAT(rehusado({ 7001, "Red", "1234567890123" }), StartsWith("No cabe la cuenta de ingresos"));
    }

}
}
