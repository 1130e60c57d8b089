#include "editor/GuardarAtipico.hpp"

#include "charges/clsAtipico.hpp"
#include "posting/GenerarPrev.hpp"
#include "tests/support/ConexionEspia.hpp"
#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using pruebas::dia;
    using pruebas::moneda;
    using testing::ElementsAre;
    using testing::HasSubstr;
    using testing::IsEmpty;
    using testing::SizeIs;
    using testing::StartsWith;
    using Estado = ResultadoGuardado::Estado;

    /// A charge of one line that has been keyed in, both connections watched by one list.
    struct Guardado : testing::Test {
        pruebas::Contexto contexto;
        std::shared_ptr<pruebas::Parte> parte = std::make_shared<pruebas::Parte>();
        clsAtipico cargo;
        CargoTecleado tecleado;
        std::vector<Contabilizacion> preguntado;
        std::optional<std::vector<Prevision>> previsiones = std::vector<Prevision>{};
        std::vector<Mensaje>& avisos = contexto.avisos->dichos;

        Guardado()
        {
            modComun::set_ConexionOrvalin(
                std::make_shared<pruebas::ConexionEspia>("gestion", contexto.gestion, parte));
            modComun::set_ConexionBexmor(
                std::make_shared<pruebas::ConexionEspia>("contabilidad", contexto.contabilidad, parte));
            contexto.gestion->responde("SELECT EmpContable", { { "EmpContable" }, { { 1 } } });
            contexto.gestion->responde(
                "SELECT CtaIngresosAtipicos", { { "CtaIngresosAtipicos" }, { { "75900003" } } });
            cargo.Lineas->Add(1001, "Botella rota", moneda("2"), moneda("50"));
            tecleado = { "", 3, 17, "Ñandú e Hijos, S.L.", dia("15/03/2025"), "Palé dañado", false,
                moneda("100"), { { moneda("100"), "" } } };
        }

        ResultadoGuardado guarda()
        {
            return GuardarAtipico(cargo, tecleado, [this](const Contabilizacion& datos) {
                preguntado.push_back(datos);
                parte->dichas.emplace_back("previsiones");
                return previsiones;
            });
        }
    };

    TEST_F(Guardado, a_new_charge_goes_through_its_steps_in_order)
    {
        const auto resultado = guarda();
        EXPECT_EQ(resultado.estado, Estado::Guardado);
        EXPECT_EQ(resultado.Codigo, "AT250001");
        EXPECT_EQ(resultado.Asiento, 7001);
        EXPECT_FALSE(resultado.InsertarFallido);
        EXPECT_THAT(parte->dichas,
            ElementsAre("gestion OPEN SELECT EmpContable FROM Almacenes WHERE Cod_Empresa =1 AND Codigo =3",
                "previsiones", "gestion BEGIN", "contabilidad BEGIN",
                StartsWith("gestion OPEN SELECT * FROM Contador_Proveedores_Cargos_Atipicos"),
                "gestion UPDATE", StartsWith("gestion OPEN SELECT Cta_Proveedor"),
                StartsWith("gestion OPEN SELECT CtaIngresosAtipicos"),
                StartsWith("gestion EXEC INSERT INTO Proveedores_Cargos_Atipicos ("),
                StartsWith("gestion EXEC INSERT INTO Proveedores_Cargos_Atipicos_Lineas ("), "gestion COMMIT",
                "contabilidad COMMIT"));
        EXPECT_THAT(avisos, IsEmpty());
    }

    TEST_F(Guardado, fills_the_charge_with_what_was_keyed_in_and_posted)
    {
        guarda();
        EXPECT_EQ(cargo.Cod_Ejercicio, 2025);
        EXPECT_EQ(cargo.Codigo, "AT250001");
        EXPECT_EQ(cargo.Cod_Almacen, 3);
        EXPECT_EQ(cargo.Proveedor, 17);
        EXPECT_EQ(cargo.Fecha, dia("15/03/2025"));
        EXPECT_EQ(cargo.Importe, moneda("100"));
        EXPECT_EQ(cargo.Hora, contexto.reloj->valor);
        EXPECT_EQ(cargo.Observ, "Palé dañado");
        EXPECT_TRUE(cargo.AplicarImpuesto);
        EXPECT_EQ(cargo.Asiento, 7001);
        EXPECT_EQ(cargo.EmpContable, 1);
        EXPECT_EQ(cargo.EjContable, 2026) << "the current year, not that of the charge";
    }

    TEST_F(Guardado, the_number_is_counted_by_the_year_of_the_charge_and_its_warehouse)
    {
        guarda();
        EXPECT_THAT(
            parte->dichas.at(4), HasSubstr("Cod_Empresa =1 AND Cod_Ejercicio =2025 AND Cod_Almacen =3"));
    }

    TEST_F(Guardado, asks_for_forecasts_of_total_plus_tax)
    {
        guarda();
        ASSERT_THAT(preguntado, SizeIs(1));
        EXPECT_EQ(preguntado[0].Importe, moneda("107"));
        EXPECT_EQ(preguntado[0].Proveedor, 17);
        EXPECT_EQ(preguntado[0].Fecha, dia("15/03/2025"));
        EXPECT_EQ(preguntado[0].EmpresaContable, 1);
        EXPECT_TRUE(preguntado[0].GenerarPrevisiones);
    }

    TEST_F(Guardado, a_warehouse_that_is_not_there_posts_in_company_0_which_has_none)
    {
        contexto.gestion->responde("SELECT EmpContable", { { "EmpContable" }, {} });
        const auto resultado = guarda();
        EXPECT_EQ(preguntado.at(0).EmpresaContable, 0);
        EXPECT_EQ(resultado.estado, Estado::Guardado);
        EXPECT_EQ(resultado.Asiento, 0);
        EXPECT_EQ(cargo.EmpContable, 0);
        ASSERT_THAT(avisos, SizeIs(1));
        EXPECT_THAT(avisos[0].texto, testing::EndsWith("] No existe empresa Contable en el Cargo"));
    }

    TEST_F(Guardado, without_forecasts_key_none_are_to_be_generated)
    {
        contexto.empresa->parametros["GenerarPrevPagos"] = "0";
        guarda();
        EXPECT_FALSE(preguntado.at(0).GenerarPrevisiones);
    }

    TEST_F(Guardado, a_charge_without_lines_does_nothing_and_shows_nothing)
    {
        cargo.Lineas->Clear();
        EXPECT_EQ(guarda().estado, Estado::SinLineas);
        EXPECT_THAT(parte->dichas, IsEmpty());
        EXPECT_THAT(avisos, IsEmpty());
    }

    TEST_F(Guardado, forecasts_that_are_not_accepted_write_nothing)
    {
        previsiones = std::nullopt;
        EXPECT_EQ(guarda().estado, Estado::NoAceptado);
        EXPECT_THAT(parte->dichas, ElementsAre(StartsWith("gestion OPEN SELECT EmpContable"), "previsiones"));
        EXPECT_THAT(avisos, IsEmpty());
    }

    TEST_F(Guardado, with_another_accounting_link_no_entry_is_generated)
    {
        contexto.empresa->enlace = 2;
        const auto resultado = guarda();
        EXPECT_EQ(resultado.estado, Estado::Guardado);
        EXPECT_EQ(resultado.Asiento, 0);
        EXPECT_THAT(contexto.biblioteca->diario->escrito, IsEmpty());
        EXPECT_EQ(cargo.Asiento, 0);
    }

    TEST_F(Guardado, a_changed_charge_keeps_its_code_and_is_replaced_whole)
    {
        tecleado.Codigo = "AT250009";
        const auto resultado = guarda();
        EXPECT_EQ(resultado.Codigo, "AT250009");
        EXPECT_THAT(parte->dichas,
            ElementsAre(StartsWith("gestion OPEN SELECT EmpContable"), "previsiones", "gestion BEGIN",
                "contabilidad BEGIN", StartsWith("gestion OPEN SELECT Cta_Proveedor"),
                StartsWith("gestion OPEN SELECT CtaIngresosAtipicos"),
                StartsWith("gestion EXEC DELETE FROM Proveedores_Cargos_Atipicos_Lineas"),
                StartsWith("gestion EXEC DELETE FROM Proveedores_Cargos_Atipicos "),
                StartsWith("gestion EXEC INSERT INTO Proveedores_Cargos_Atipicos ("),
                StartsWith("gestion EXEC INSERT INTO Proveedores_Cargos_Atipicos_Lineas ("), "gestion COMMIT",
                "contabilidad COMMIT"));
        EXPECT_THAT(parte->dichas.at(6), HasSubstr("Codigo ='AT250009'"));
    }

    TEST_F(Guardado, a_failing_entry_is_shown_and_the_charge_is_saved_without_it)
    {
        contexto.biblioteca->diario->cuentas_rechazadas.insert("40000017");
        const auto resultado = guarda();
        EXPECT_EQ(resultado.estado, Estado::Guardado);
        EXPECT_EQ(resultado.Asiento, 0);
        ASSERT_THAT(avisos, SizeIs(1));
        EXPECT_EQ(avisos[0].titulo, "frmCompras_Atipicos:GenerarAsiento");
        EXPECT_EQ(parte->dichas.back(), "contabilidad COMMIT");
    }

    TEST_F(Guardado, a_failing_insert_is_shown_and_both_transactions_are_committed)
    {
        contexto.gestion->falla("INSERT INTO Proveedores_Cargos_Atipicos_Lineas", "unrecognized token");
        const auto resultado = guarda();
        EXPECT_EQ(resultado.estado, Estado::Guardado);
        EXPECT_TRUE(resultado.InsertarFallido);
        EXPECT_THAT(
            avisos, ElementsAre(Mensaje{ "unrecognized token", "clsAtipico:Insertar", Icono::critico }));
        EXPECT_EQ(parte->dichas.back(), "contabilidad COMMIT");
    }

    TEST_F(Guardado, a_refused_date_rolls_back_management_then_accounting_and_shows_the_error)
    {
        tecleado.Fecha = dia("31/12/1999");
        EXPECT_EQ(guarda().estado, Estado::Fallido);
        ASSERT_THAT(avisos, SizeIs(1));
        EXPECT_EQ(avisos[0].titulo, "frmCompras_Atipicos:cmdAceptar_Click");
        EXPECT_THAT(avisos[0].texto,
            testing::EndsWith("] Se necesita la fecha para devolver el código de cargo/abono"));
        EXPECT_THAT(parte->dichas,
            ElementsAre(StartsWith("gestion OPEN"), "previsiones", "gestion BEGIN", "contabilidad BEGIN",
                "gestion ROLLBACK", "contabilidad ROLLBACK"));
    }

    TEST_F(Guardado, the_roll_back_comes_before_the_box)
    {
        struct Miron final : MsgBox {
            std::shared_ptr<pruebas::Parte> parte;
            Respuesta mostrar(const Mensaje&) override
            {
                parte->dichas.emplace_back("aviso");
                return Respuesta::Aceptar;
            }
        };
        const auto miron = std::make_shared<Miron>();
        miron->parte = parte;
        modComun::set_MsgBox(miron);
        tecleado.Fecha = dia("31/12/1999");
        guarda();
        ASSERT_GE(parte->dichas.size(), 3U);
        EXPECT_THAT(std::vector<std::string>(parte->dichas.end() - 3, parte->dichas.end()),
            ElementsAre("gestion ROLLBACK", "contabilidad ROLLBACK", "aviso"));
    }

    TEST_F(Guardado, an_unset_accounting_connection_rolls_management_back)
    {
        modComun::set_ConexionBexmor(nullptr);
        EXPECT_EQ(guarda().estado, Estado::Fallido);
        EXPECT_EQ(parte->dichas.back(), "gestion ROLLBACK");
        EXPECT_THAT(avisos.at(0).texto, HasSubstr("La variable de objeto no está establecida"));
        EXPECT_EQ(pruebas::linea_nombrada(avisos.at(0).texto, "editor/GuardarAtipico.cpp"),
            "contabilidad.emplace(modComun::ConexionBexmor());");
    }

    TEST_F(Guardado, a_lost_connection_in_the_middle_shows_one_box_for_each_procedure_it_meets)
    {
        parte->falla_en = 9; // the header insert
        parte->conexion_perdida = true;
        EXPECT_EQ(guarda().estado, Estado::Fallido);
        ASSERT_THAT(avisos, SizeIs(2));
        EXPECT_EQ(avisos[0].titulo, "clsAtipico:Insertar");
        EXPECT_EQ(avisos[1].titulo, "frmCompras_Atipicos:cmdAceptar_Click");
        EXPECT_THAT(contexto.contabilidad->dichas, ElementsAre("BEGIN", "ROLLBACK"));
    }

    TEST(MensajeGuardado, tells_code_and_entry_and_only_the_code_of_one_that_was_not_posted)
    {
        ResultadoGuardado resultado;
        resultado.Codigo = "AT260007";
        EXPECT_EQ(mensaje_guardado(resultado),
            (Mensaje{ "Atípico AT260007 generado correctamente.", "¡ Atención !", Icono::informacion }));
        resultado.Asiento = 1;
        EXPECT_EQ(
            mensaje_guardado(resultado).texto, "Atípico AT260007 generado correctamente.\r\nAsiento: 1");
    }

}
}
