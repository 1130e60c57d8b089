// Each promise broken on purpose, and how `verificar` names it.
#include "host/comprobacion/Verificacion.hpp"

#include "tests/integracion/Banco.hpp"

#include <gmock/gmock.h>

namespace atipicos::app {
namespace {

    using testing::Contains;
    using testing::ElementsAre;
    using testing::HasSubstr;
    using testing::IsEmpty;

    struct Rota {
        const char* nombre;
        const char*
            estropea; ///< run on the management database, or on the other one when it begins with "B:"
        const char* diferencia;
    };
    void PrintTo(const Rota& rota, std::ostream* salida) { *salida << rota.nombre; }

    struct Promesa : testing::TestWithParam<Rota> { };

    TEST_P(Promesa, broken_is_named_with_its_charge_or_entry)
    {
        pruebas::Banco banco;
        banco.guarda();
        banco.guarda();
        EXPECT_THAT(verifica(banco.bases()).diferencias, IsEmpty());
        std::string sql = GetParam().estropea;
        auto& conexion = sql.starts_with("B:") ? *banco.bases().bexmor : *banco.bases().orvalin;
        conexion.Execute("PRAGMA foreign_keys=OFF");
        conexion.Execute(sql.starts_with("B:") ? sql.substr(2) : sql);
        EXPECT_THAT(verifica(banco.bases()).diferencias, Contains(HasSubstr(GetParam().diferencia)));
    }

    INSTANTIATE_TEST_SUITE_P(promesas, Promesa,
        testing::Values(
            Rota{ "total", "UPDATE Proveedores_Cargos_Atipicos SET Importe = 1 WHERE Codigo = 'AT260001'",
                "cargo AT260001 (empresa 1, ejercicio 2026, almacén 1): importe 1,00 y líneas por 231,96." },
            Rota{ "tax",
                "UPDATE Proveedores_Cargos_Atipicos SET Impuesto_Importe = 1 WHERE Codigo = 'AT260001'",
                "impuesto 1,00 y debería ser 16,24." },
            Rota{ "gap_in_lines", "DELETE FROM Proveedores_Cargos_Atipicos_Lineas WHERE Num_Linea = 2",
                "no tiene líneas o no están numeradas de corrido." },
            Rota{ "no_entry", "UPDATE Proveedores_Cargos_Atipicos SET Asiento = 0 WHERE Codigo = 'AT260002'",
                "cargo AT260002 (empresa 1, ejercicio 2026, almacén 1): no tiene asiento" },
            Rota{ "missing_entry",
                "UPDATE Proveedores_Cargos_Atipicos SET Asiento = 77 WHERE Codigo = 'AT260002'",
                "su asiento 77 (empresa contable 1, ejercicio 2026) no existe en Contabilidad." },
            Rota{ "entry_of_another",
                "UPDATE Proveedores_Cargos_Atipicos SET Asiento = 1 WHERE Codigo = 'AT260002'",
                "es del documento AT260001." },
            Rota{ "code",
                "UPDATE Proveedores_Cargos_Atipicos_Lineas SET Codigo = 'X1' WHERE Codigo = 'AT260002'",
                "cargo X1 (empresa 1, ejercicio 2026, almacén 1): tiene una línea y no tiene cabecera." },
            Rota{ "counter", "UPDATE Contador_Proveedores_Cargos_Atipicos SET Numero = 260001",
                "cargo AT260002 (empresa 1, ejercicio 2026, almacén 1): el contador de su serie no ha "
                "llegado" },
            Rota{ "unbalanced", "B:UPDATE Apuntes SET Debe = Debe + 1 WHERE Asiento = 1 AND Linea = 1",
                "asiento 1 (empresa contable 1, ejercicio 2026): no cuadra, debe 497,40 y haber 496,40." },
            Rota{ "missing_line", "B:DELETE FROM Apuntes WHERE Asiento = 2 AND Linea = 3",
                "asiento 2 (empresa contable 1, ejercicio 2026): le faltan apuntes." },
            Rota{ "forecasts", "B:DELETE FROM Previsiones WHERE Asiento = 1 AND Numero = 1",
                "sus previsiones suman" },
            Rota{ "tax_record", "B:UPDATE Registro_Impuestos SET Cuota = 1 WHERE Asiento = 1",
                "el registro de impuesto de su asiento 1" },
            Rota{ "entry_counter", "B:UPDATE Contador_Asientos SET Numero = 1",
                "asiento 2 (empresa contable 1, ejercicio 2026): el contador de asientos" }),
        [](const auto& caso) { return caso.param.nombre; });

    TEST(Verificacion, an_entry_number_that_went_to_the_same_code_of_another_warehouse_is_one_difference)
    {
        pruebas::Banco banco;
        banco.guarda({}, 2);
        auto& gestion = *banco.bases().orvalin;
        // As a kill between both commits leaves it: the charge of warehouse 1 names the entry that warehouse
        // 2 got.
        gestion.Execute(
            "INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo,"
            " Proveedor, Fecha, Importe, Asiento, EmpContable, EjContable, Usuario, Hora, Observ, Cod_Compra,"
            " Documento, Impuesto, Impuesto_Importe, Tipo) VALUES (1, 2026, 1, 'AT260001', 101, '20/11/2026',"
            " 10, 1, 1, 2026, 1, '20/11/2026', '', 0, 0, 7, 0.7, 0)");
        gestion.Execute(
            "INSERT INTO Proveedores_Cargos_Atipicos_Lineas (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo,"
            " Num_Linea, Cod_Articulo, Descripcion, Unidades, Precio, Observ) VALUES (1, 2026, 1, 'AT260001',"
            " 1, 0, 'x', 1, 10, '')");
        gestion.Execute(
            "INSERT INTO Contador_Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen,"
            " Numero) VALUES (1, 2026, 1, 260001)");
        EXPECT_THAT(verifica(banco.bases()).diferencias,
            ElementsAre(
                "cargo AT260001 (empresa 1, ejercicio 2026, almacén 1): su asiento 1 (empresa contable 1, "
                "ejercicio 2026) es del documento AT260001 del almacén 2."));
    }

    TEST(Verificacion, of_two_charges_alike_the_entry_is_the_later_ones)
    {
        pruebas::Banco banco;
        auto& gestion = *banco.bases().orvalin;
        gestion.Execute("UPDATE Almacenes SET CtaIngresosAtipicos = '75900001' WHERE Codigo = 2");
        banco.guarda({}, 2);
        banco.guarda({}, 1); // the same amount, the same day, the same code, the same accounts
        gestion.Execute(
            "UPDATE Proveedores_Cargos_Atipicos SET Asiento = 1, Hora = '21/11/2026 8:00:00' WHERE "
            "Cod_Almacen = 1");
        EXPECT_EQ(verifica(banco.bases()).sin_asiento.at(0).cargo.almacen, 1);
        gestion.Execute("UPDATE Proveedores_Cargos_Atipicos SET Hora = '21/11/2026 9:30:00' WHERE "
                        "Cod_Almacen = 1");
        const auto otra = verifica(banco.bases());
        ASSERT_EQ(otra.sin_asiento.size(), 1U);
        EXPECT_EQ(otra.sin_asiento.at(0).cargo.almacen, 2);
        EXPECT_EQ(otra.sin_asiento.at(0).asiento, (ClaveAsiento{ 1, 2026, 1 }));
    }

    TEST(Verificacion, counts_everything_and_an_entry_left_without_charge_is_no_difference)
    {
        pruebas::Banco banco;
        banco.guarda();
        const auto segundo = banco.guarda().Codigo;
        banco.guarda(segundo); // posts again; the first entry stays
        const auto resultado = verifica(banco.bases());
        EXPECT_THAT(resultado.diferencias, IsEmpty());
        EXPECT_EQ(resultado.cargos, 2U);
        EXPECT_EQ(resultado.lineas, 6U);
        EXPECT_EQ(resultado.asientos, 3U);
        EXPECT_EQ(resultado.apuntes, 21U);
        EXPECT_EQ(resultado.registros, 3U);
        EXPECT_EQ(resultado.previsiones, 9U);
        EXPECT_EQ(resultado.sin_cargo.size(), 1U);
    }

}
}
