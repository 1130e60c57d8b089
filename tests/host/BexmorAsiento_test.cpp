#include "host/bexmor/Asiento.hpp"

#include "tests/host/EmpresaContable.hpp"

#include <thread>

namespace atipicos::bexmor {
namespace {

    using pruebas::columna;
    using pruebas::cuenta;
    using pruebas::error_de;
    using BexmorAsiento = pruebas::EmpresaContable;

    TEST_F(BexmorAsiento, is_stored_at_once_under_the_next_number)
    {
        EXPECT_EQ(asiento(), 1);
        EXPECT_EQ(asiento(), 2);
        EXPECT_EQ(columna(conexion, "SELECT Fecha FROM Asientos WHERE Numero =2"),
            std::vector<std::string>{ "21/11/2026" });
        EXPECT_EQ(columna(conexion, "SELECT Usuario FROM Asientos WHERE Numero =2"),
            std::vector<std::string>{ "12" });
        EXPECT_EQ(columna(conexion, "SELECT Numero FROM Contador_Asientos WHERE Cod_Empresa =1"),
            std::vector<std::string>{ "2" });
    }

    TEST_F(BexmorAsiento, numbers_are_counted_by_company_and_year)
    {
        EXPECT_EQ(asiento(), 1);
        empresa->Codigo = 2;
        EXPECT_EQ(asiento(), 1);
        empresa->Ejercicio = 2027;
        empresa->FechaTrabajo = Date::de_texto("01/01/2027").value();
        EXPECT_EQ(asiento(), 1);
        empresa->Codigo = 1;
        EXPECT_EQ(asiento(), 1);
        EXPECT_EQ(cuenta(conexion, "Asientos"), 4);
    }

    TEST_F(BexmorAsiento, hands_out_line_numbers_from_1_and_again_from_1_for_the_next_entry)
    {
        const auto nuevo = biblioteca.NuevoAsiento(*empresa);
        nuevo->Fecha = empresa->FechaTrabajo;
        nuevo->Crear();
        EXPECT_EQ(nuevo->SiguienteLinea(), 1);
        EXPECT_EQ(nuevo->SiguienteLinea(), 2);
        nuevo->Crear();
        EXPECT_EQ(nuevo->Numero, 2);
        EXPECT_EQ(nuevo->SiguienteLinea(), 1);
    }

    TEST_F(BexmorAsiento, of_a_year_that_is_not_open_is_refused)
    {
        empresa->Ejercicio = 2031;
        empresa->FechaTrabajo = Date::de_texto("01/03/2031").value();
        EXPECT_EQ(error_de([&] { static_cast<void>(asiento()); }),
            "El ejercicio 2031 no está abierto en la empresa contable 1.");
        EXPECT_EQ(cuenta(conexion, "Contador_Asientos"), 0);
    }

    TEST_F(BexmorAsiento, dated_outside_its_year_is_refused)
    {
        for (const auto* fecha : { "31/12/2025", "01/01/2027" }) {
            empresa->FechaTrabajo = Date::de_texto(fecha).value();
            EXPECT_EQ(error_de([&] { static_cast<void>(asiento()); }),
                std::string("La fecha ") + fecha
                    + " está fuera del ejercicio 2026 de la empresa contable 1.");
        }
        for (const auto* fecha : { "01/01/2026", "31/12/2026" }) {
            empresa->FechaTrabajo = Date::de_texto(fecha).value();
            EXPECT_EQ(error_de([&] { static_cast<void>(asiento()); }), "no error") << fecha;
        }
    }

    TEST_F(BexmorAsiento, of_a_year_that_another_closes_or_opens_meanwhile_is_refused_or_stored)
    {
        EXPECT_EQ(asiento(), 1);
        conexion.Execute("UPDATE Ejercicios SET Fin ='20/11/2026' WHERE Cod_Empresa =1 AND Ejercicio =2026");
        EXPECT_EQ(error_de([&] { static_cast<void>(asiento()); }),
            "La fecha 21/11/2026 está fuera del ejercicio 2026 de la empresa contable 1.");
        EXPECT_EQ(columna(conexion, "SELECT Numero FROM Contador_Asientos"), std::vector<std::string>{ "1" })
            << "the refused one took a number";
        conexion.Execute("UPDATE Ejercicios SET Fin ='21/11/2026' WHERE Cod_Empresa =1 AND Ejercicio =2026");
        EXPECT_EQ(asiento(), 2);
    }

    TEST_F(BexmorAsiento, at_an_hour_of_the_last_day_of_its_year_is_stored)
    {
        empresa->FechaTrabajo
            = Date(Date::de_texto("31/12/2026").value().instante() + std::chrono::hours(23));
        EXPECT_EQ(asiento(), 1);
        EXPECT_EQ(asiento(), 2);
    }

    TEST_F(BexmorAsiento, after_the_last_number_there_is_no_other)
    {
        static_cast<void>(asiento());
        conexion.Execute("UPDATE Contador_Asientos SET Numero =2147483647");
        EXPECT_EQ(error_de([&] { static_cast<void>(asiento()); }),
            Error::de_ejecucion(numero_error::desbordamiento).descripcion());
    }

    TEST_F(BexmorAsiento, tells_by_how_much_it_does_not_balance)
    {
        Asiento nuevo(*empresa);
        nuevo.Fecha = empresa->FechaTrabajo;
        nuevo.Crear();
        EXPECT_EQ(nuevo.Descuadre(), Currency());
        const auto linea = apunte(nuevo.Numero, 1);
        EXPECT_TRUE(linea->Guardar());
        EXPECT_EQ(nuevo.Descuadre(), Currency::de_texto("107"));
        linea->Linea = 2;
        linea->Debe = Currency();
        linea->Haber = Currency::de_texto("106.99");
        EXPECT_TRUE(linea->Guardar());
        EXPECT_EQ(nuevo.Descuadre(), Currency::de_texto("0.01"));
    }

    TEST_F(BexmorAsiento, numbers_of_two_users_at_once_are_unique_and_leave_no_gap)
    {
        constexpr int cada_uno = 50;
        const auto trabaja = [&] {
            const auto suyas = bases::abre_bases(
                carpeta.ruta(), { .espera = std::chrono::seconds(60), .sincronizacion_completa = false });
            const Biblioteca su_biblioteca(suyas.bexmor);
            const auto su_empresa = su_biblioteca.NuevaEmpresa();
            su_empresa->Codigo = 1;
            su_empresa->Ejercicio = 2026;
            for (int i = 0; i < cada_uno; ++i) {
                suyas.bexmor->BeginTrans();
                Asiento nuevo(*su_empresa);
                nuevo.Fecha = Date::de_texto("21/11/2026").value();
                nuevo.Crear();
                suyas.bexmor->CommitTrans();
            }
        };
        std::thread otro(trabaja);
        trabaja();
        otro.join();
        EXPECT_EQ(cuenta(conexion, "Asientos"), 2 * cada_uno);
        EXPECT_EQ(columna(conexion, "SELECT MAX(Numero) FROM Asientos"), std::vector<std::string>{ "100" });
    }

}
} // namespace atipicos::bexmor
