#include "host/bexmor/Prevision.hpp"

#include "tests/host/EmpresaContable.hpp"

namespace atipicos::bexmor {
namespace {

    using pruebas::columna;
    using pruebas::cuenta;
    using pruebas::error_de;

    struct BexmorPrevision : pruebas::EmpresaContable {
        Prevision prevision{ *empresa };

        BexmorPrevision()
        {
            prevision.Asiento = asiento();
            prevision.Departamento = "90";
            prevision.Importe = Currency::de_texto("35.67");
            prevision.TipoDoc = 3;
            prevision.Vencimiento = Date::de_texto("29/02/2028").value();
            prevision.Banco = "57200001";
            prevision.Cuenta = "40000101";
        }
    };

    TEST_F(BexmorPrevision, is_stored_with_all_its_values)
    {
        prevision.Guardar();
        const auto rs = conexion.CreateRecordset();
        rs->Open("SELECT * FROM Previsiones", adodb::CursorType::Static, adodb::LockType::ReadOnly);
        const auto valor = [&](const char* campo) { return rs->Fields(campo).Value(); };
        EXPECT_EQ(CInt(valor("Cod_Empresa")), 1);
        EXPECT_EQ(CInt(valor("Cod_Ejercicio")), 2026);
        EXPECT_EQ(CLng(valor("Asiento")), 1);
        EXPECT_EQ(valor("Departamento"), Variant("90"));
        EXPECT_EQ(valor("Importe"), Variant(Currency::de_texto("35.67")));
        EXPECT_EQ(CInt(valor("TipoDoc")), 3);
        EXPECT_EQ(valor("Vencimiento"), Variant(Date::de_texto("29/02/2028").value()));
        EXPECT_EQ(valor("Banco"), Variant("57200001"));
        EXPECT_EQ(valor("Cuenta"), Variant("40000101"));
    }

    TEST_F(BexmorPrevision, is_numbered_within_its_entry)
    {
        prevision.Guardar();
        prevision.Guardar();
        prevision.Asiento = asiento();
        prevision.Guardar();
        EXPECT_EQ(columna(conexion, "SELECT Numero FROM Previsiones ORDER BY Asiento, Numero"),
            (std::vector<std::string>{ "1", "2", "1" }));
    }

    TEST_F(BexmorPrevision, is_numbered_after_those_that_another_object_stored_or_took_away_meanwhile)
    {
        prevision.Guardar();
        Prevision otra(*empresa);
        otra.Asiento = prevision.Asiento;
        otra.Cuenta = "40000101";
        otra.Vencimiento = empresa->FechaTrabajo;
        otra.Guardar();
        prevision.Guardar();
        EXPECT_EQ(columna(conexion, "SELECT Numero FROM Previsiones ORDER BY Numero"),
            (std::vector<std::string>{ "1", "2", "3" }));
        conexion.Execute("DELETE FROM Previsiones WHERE Numero > 1");
        prevision.Guardar();
        EXPECT_EQ(columna(conexion, "SELECT Numero FROM Previsiones ORDER BY Numero"),
            (std::vector<std::string>{ "1", "2" }));
    }

    TEST_F(BexmorPrevision, that_is_refused_takes_no_number)
    {
        prevision.Guardar();
        prevision.Cuenta = "40099999";
        EXPECT_NE(error_de([&] { prevision.Guardar(); }), "no error");
        prevision.Cuenta = "40000101";
        prevision.Guardar();
        EXPECT_EQ(columna(conexion, "SELECT Numero FROM Previsiones ORDER BY Numero"),
            (std::vector<std::string>{ "1", "2" }));
    }

    TEST_F(BexmorPrevision, on_an_account_outside_the_plan_raises_an_error_that_names_it)
    {
        prevision.Cuenta = "40099999";
        EXPECT_EQ(error_de([&] { prevision.Guardar(); }),
            "La cuenta 40099999 no existe en el plan de la empresa contable 1, ejercicio 2026. "
            "Dela de alta antes de contabilizar.");
        EXPECT_EQ(cuenta(conexion, "Previsiones"), 0);
    }

    TEST_F(BexmorPrevision, of_an_entry_that_does_not_exist_raises_an_error)
    {
        prevision.Asiento = 5;
        EXPECT_EQ(error_de([&] { prevision.Guardar(); }),
            "No existe el asiento 5 de la empresa contable 1, ejercicio 2026. Créelo antes.");
    }

    TEST_F(BexmorPrevision, an_amount_of_more_than_two_decimals_is_refused)
    {
        prevision.Importe = Currency::de_texto("-0.125");
        EXPECT_EQ(error_de([&] { prevision.Guardar(); }),
            "El importe -0,1250 tiene más de dos decimales. Redondéelo antes.");
    }

}
} // namespace atipicos::bexmor
