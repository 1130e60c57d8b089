#include "host/bexmor/RegistroImpuesto.hpp"

#include "tests/host/EmpresaContable.hpp"

namespace atipicos::bexmor {
namespace {

    using pruebas::cuenta;
    using pruebas::error_de;

    struct BexmorRegistroImpuesto : pruebas::EmpresaContable {
        RegistroImpuesto registro{ *empresa };

        BexmorRegistroImpuesto()
        {
            registro.Asiento = asiento();
            registro.Linea = 1;
            EXPECT_TRUE(apunte(registro.Asiento, 1)->Guardar());
            registro.Clase = 2;
            registro.Indicador = 1;
            registro.Documento = "AT260001";
            registro.Base = Currency::de_texto("100");
            registro.TipoImpuesto = 1;
            registro.Cuota = Currency::de_texto("7");
            registro.TotalImpuesto = Currency::de_texto("7.01");
        }
    };

    TEST_F(BexmorRegistroImpuesto, is_stored_with_all_its_values_and_the_working_date)
    {
        registro.Guardar();
        const auto rs = conexion.CreateRecordset();
        rs->Open("SELECT * FROM Registro_Impuestos", adodb::CursorType::Static, adodb::LockType::ReadOnly);
        const auto valor = [&](const char* campo) { return rs->Fields(campo).Value(); };
        EXPECT_EQ(CInt(valor("Cod_Empresa")), 1);
        EXPECT_EQ(CInt(valor("Cod_Ejercicio")), 2026);
        EXPECT_EQ(CLng(valor("Asiento")), 1);
        EXPECT_EQ(CLng(valor("Linea")), 1);
        EXPECT_EQ(CInt(valor("Clase")), 2);
        EXPECT_EQ(CInt(valor("Indicador")), 1);
        EXPECT_EQ(valor("Fecha"), Variant(empresa->FechaTrabajo));
        EXPECT_EQ(valor("Documento"), Variant("AT260001"));
        EXPECT_EQ(valor("Base"), Variant(Currency::de_texto("100")));
        EXPECT_EQ(CInt(valor("TipoImpuesto")), 1);
        EXPECT_EQ(valor("Cuota"), Variant(Currency::de_texto("7")));
        EXPECT_EQ(valor("TotalImpuesto"), Variant(Currency::de_texto("7.01")));
    }

    TEST_F(BexmorRegistroImpuesto, of_a_line_that_does_not_exist_raises_an_error)
    {
        registro.Linea = 2;
        EXPECT_THROW(registro.Guardar(), adodb::ErrorBaseDatos);
        EXPECT_EQ(cuenta(conexion, "Asientos_Incompletos WHERE Numero =1"), 1)
            << "its other lines never come";
        EXPECT_EQ(cuenta(conexion, "Registro_Impuestos"), 0);
    }

    TEST_F(BexmorRegistroImpuesto, amounts_of_more_than_two_decimals_are_refused)
    {
        registro.Cuota = Currency::de_texto("7.001");
        EXPECT_EQ(error_de([&] { registro.Guardar(); }),
            "El importe 7,0010 tiene más de dos decimales. Redondéelo antes.");
        EXPECT_EQ(cuenta(conexion, "Registro_Impuestos"), 0);
    }

}
} // namespace atipicos::bexmor
