#include "charges/clsAtipico.hpp"

#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

#include <limits>

namespace atipicos {
namespace {

    using pruebas::dia;
    using pruebas::dia_y_hora;
    using pruebas::moneda;
    using testing::ElementsAre;
    using testing::IsEmpty;
    using testing::SizeIs;

    struct Persistencia : testing::Test {
        pruebas::Contexto contexto;
        clsAtipico cargo;
        std::vector<std::string>& dichas = contexto.gestion->dichas;
        std::vector<Mensaje>& avisos = contexto.avisos->dichos;

        Persistencia()
        {
            contexto.empresa->codigo = 4;
            cargo.Cod_Ejercicio = 2026;
            cargo.Cod_Almacen = 3;
            cargo.Codigo = "AT260017";
            cargo.Proveedor = 40012;
            cargo.Fecha = dia("21/11/2026");
            cargo.Importe = moneda("150.25");
            cargo.Asiento = 881;
            cargo.EmpContable = 2;
            cargo.EjContable = 2026;
            cargo.Hora = dia_y_hora("21/11/2026", 9, 5, 3);
            cargo.Observ = "Palé nº 4, dañado (12 €)";
            cargo.Cod_Compra = 77;
            cargo.Documento = 5;
            cargo.Tipo = 1;
            cargo.AplicarImpuesto = true;
            cargo.Impuesto = moneda("3");
        }

        void con_linea() { cargo.Lineas->Add(1001, "Botella rota", moneda("2.5"), moneda("60.1"), "caja 3"); }
    };

    constexpr auto clave_eliminar
        = " WHERE Cod_Empresa =4   AND Cod_Ejercicio =2026   AND Cod_Almacen =3   AND "
          "Codigo ='AT260017'";
    constexpr auto clave
        = " WHERE Cod_Empresa=4 AND Cod_Ejercicio =2026 AND Cod_Almacen =3 AND Codigo ='AT260017'";
    constexpr auto insercion_linea_1 = "EXEC INSERT INTO Proveedores_Cargos_Atipicos_Lineas (Cod_Empresa, "
                                       "Cod_Ejercicio, Cod_Almacen, Codigo, "
                                       "Num_Linea, Cod_Articulo, Descripcion, Unidades, Precio, Observ) "
                                       "VALUES (4, 2026, 3, 'AT260017', 1, 1001, "
                                       "'Botella rota', 2.5, 60.1, 'caja 3')";
    constexpr auto columnas
        = "EXEC INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, "
          "Codigo, Proveedor, Fecha, Importe, Asiento, EmpContable, EjContable, Usuario, Hora, "
          "Observ, Cod_Compra, Documento, Impuesto, Impuesto_Importe, Tipo) VALUES ";

    TEST_F(Persistencia, existe_asks_on_the_column_almacen)
    {
        EXPECT_FALSE(cargo.Existe(2025, 7, "AT250003"));
        EXPECT_THAT(dichas,
            ElementsAre(
                "OPEN static read-only SELECT Codigo FROM Proveedores_Cargos_Atipicos WHERE Cod_Empresa =4 "
                "AND Cod_Ejercicio =2025 AND Almacen =7 AND Codigo ='AT250003'",
                "CLOSE"));
    }

    TEST_F(Persistencia, existe_is_true_when_a_row_comes_back)
    {
        contexto.gestion->responde("SELECT Codigo", { { "Codigo" }, { { "AT250003" } } });
        EXPECT_TRUE(cargo.Existe(2025, 7, "AT250003"));
    }

    TEST_F(Persistencia, existe_lets_the_error_of_the_database_reach_the_caller)
    {
        contexto.gestion->falla("SELECT Codigo", "no such column: Almacen");
        EXPECT_THROW(static_cast<void>(cargo.Existe(2025, 7, "X")), adodb::ErrorBaseDatos);
        EXPECT_THAT(avisos, IsEmpty());
    }

    TEST_F(Persistencia, insertar_writes_header_and_lines_letter_by_letter)
    {
        con_linea();
        cargo.Lineas->Add(0, "Portes", moneda("-1"), moneda("0.0001"));
        EXPECT_FALSE(cargo.Insertar());
        EXPECT_THAT(dichas,
            ElementsAre(std::string(columnas)
                    + "(4, 2026, 3, 'AT260017', 40012, '21/11/2026',150.25, 881, 2, 2026, 12, '21/11/2026 "
                      "9:05:03', "
                      "'Palé nº 4, dañado (12 €)', 77, 5, 7, 10.52, 1)",
                insercion_linea_1,
                "EXEC INSERT INTO Proveedores_Cargos_Atipicos_Lineas (Cod_Empresa, Cod_Ejercicio, "
                "Cod_Almacen, Codigo, "
                "Num_Linea, Cod_Articulo, Descripcion, Unidades, Precio, Observ) VALUES (4, 2026, 3, "
                "'AT260017', 2, 0, "
                "'Portes', -1, 0.0001, '')"));
        EXPECT_THAT(avisos, IsEmpty());
    }

    TEST_F(Persistencia, insertar_without_tax_stores_0_twice_whatever_impuesto_holds)
    {
        cargo.AplicarImpuesto = false;
        EXPECT_FALSE(cargo.Insertar());
        EXPECT_THAT(dichas,
            ElementsAre(std::string(columnas)
                + "(4, 2026, 3, 'AT260017', 40012, '21/11/2026',150.25, 881, 2, 2026, 12, '21/11/2026 "
                  "9:05:03', "
                  "'Palé nº 4, dañado (12 €)', 77, 5, 0, 0, 1)"));
        EXPECT_THAT(contexto.empresa->preguntas, ElementsAre("UsuarioActual"));
    }

    TEST_F(Persistencia, insertar_writes_the_limits_of_every_type)
    {
        cargo.AplicarImpuesto = false;
        cargo.Cod_Ejercicio = std::numeric_limits<std::int16_t>::min();
        cargo.Cod_Almacen = std::numeric_limits<std::int16_t>::max();
        cargo.Proveedor = std::numeric_limits<std::int32_t>::min();
        cargo.Asiento = std::numeric_limits<std::int32_t>::max();
        cargo.Importe = moneda("-1234567.8901");
        cargo.Fecha = dia_y_hora("01/02/2026", 23, 59, 59);
        cargo.Hora = Date::de_automatizacion(0.5);
        cargo.Observ = "";
        contexto.empresa->parametros["UsuarioActual"] = "ADMIN";
        EXPECT_FALSE(cargo.Insertar());
        EXPECT_THAT(dichas,
            ElementsAre(std::string(columnas)
                + "(4, -32768, 32767, 'AT260017', -2147483648, '01/02/2026 23:59:59',-1234567.8901, "
                  "2147483647, 2, "
                  "2026, 0, '12:00:00', '', 77, 5, 0, 0, 1)"));
    }

    TEST_F(Persistencia, insertar_writes_an_unset_date_as_a_bare_time_and_a_long_text_whole)
    {
        cargo.AplicarImpuesto = false;
        cargo.Fecha = Date();
        cargo.Observ = std::string(100'000, 'x');
        EXPECT_FALSE(cargo.Insertar());
        EXPECT_THAT(dichas.at(0), testing::HasSubstr("40012, '0:00:00',150.25, "));
        EXPECT_THAT(dichas.at(0), testing::HasSubstr("'" + cargo.Observ + "'"));
    }

    TEST_F(Persistencia, usuario_is_the_leading_number_of_the_key)
    {
        contexto.empresa->parametros["UsuarioActual"] = "15.5 turno de noche";
        cargo.AplicarImpuesto = false;
        cargo.Insertar();
        EXPECT_THAT(dichas.at(0), testing::HasSubstr(" 2026, 15.5, '"));
    }

    TEST_F(Persistencia, a_failing_insert_is_shown_without_line_number_and_returned_as_true)
    {
        con_linea();
        contexto.gestion->falla(
            "INSERT INTO Proveedores_Cargos_Atipicos_Lineas", "near \"caja\": syntax error");
        EXPECT_TRUE(cargo.Insertar());
        ASSERT_THAT(avisos, SizeIs(1));
        EXPECT_EQ(
            avisos[0], (Mensaje{ "near \"caja\": syntax error", "clsAtipico:Insertar", Icono::critico }));
        EXPECT_THAT(dichas, SizeIs(2)) << "stops at the failing statement";
    }

    TEST_F(Persistencia, insertar_before_the_connection_is_set_shows_error_91)
    {
        modComun::set_ConexionOrvalin(nullptr);
        EXPECT_TRUE(cargo.Insertar());
        EXPECT_EQ(avisos.at(0).texto, "La variable de objeto no está establecida");
    }

    TEST_F(Persistencia, modificar_updates_header_and_lines_letter_by_letter)
    {
        con_linea();
        cargo.Impuesto = moneda("3.125");
        EXPECT_FALSE(cargo.Modificar_Atipico());
        EXPECT_THAT(dichas,
            ElementsAre(
                "EXEC  UPDATE Proveedores_Cargos_Atipicos  SET Proveedor = 40012, Fecha = '21/11/2026', "
                "Importe = "
                "150.25, Asiento =881, EmpContable =2, EjContable =2026, Observ ='Palé nº 4, dañado (12 €)', "
                "Cod_Compra =77, Documento =5, Hora ='21/11/2026 9:05:03', Usuario =12, Impuesto =3.13, "
                "Impuesto_Importe =4.7, Tipo =1"
                    + std::string(clave),
                "EXEC UPDATE Proveedores_Cargos_Atipicos_Lineas SET  Cod_Articulo = 1001, Unidades= 2.5, "
                "Precio= 60.1, "
                "Observ ='caja 3', Descripcion ='Botella rota'"
                    + std::string(clave) + " AND Num_Linea =1"));
        EXPECT_THAT(contexto.empresa->preguntas, ElementsAre("UsuarioActual")) << "no tax type is asked for";
    }

    TEST_F(
        Persistencia, modificar_of_a_charge_that_is_not_stored_inserts_it_and_returns_what_insertar_returns)
    {
        con_linea();
        contexto.gestion->afecta(" UPDATE", 0);
        EXPECT_FALSE(cargo.Modificar_Atipico());
        ASSERT_THAT(dichas, SizeIs(3));
        EXPECT_THAT(dichas[1], testing::StartsWith(columnas));
        EXPECT_EQ(dichas[2], insercion_linea_1);

        contexto.gestion->falla("INSERT", "no");
        EXPECT_TRUE(cargo.Modificar_Atipico());
        ASSERT_THAT(avisos, SizeIs(1)) << "shown by Insertar, once";
        EXPECT_EQ(avisos[0].titulo, "clsAtipico:Insertar");
    }

    TEST_F(Persistencia, modificar_inserts_a_line_that_was_not_stored)
    {
        con_linea();
        contexto.gestion->afecta("UPDATE Proveedores_Cargos_Atipicos_Lineas", 0);
        EXPECT_FALSE(cargo.Modificar_Atipico());
        ASSERT_THAT(dichas, SizeIs(3));
        EXPECT_EQ(dichas[2], insercion_linea_1);
    }

    TEST_F(Persistencia, a_failing_update_names_the_line_of_the_procedure_that_ran_it)
    {
        contexto.gestion->falla(" UPDATE", "bloqueada");
        EXPECT_TRUE(cargo.Modificar_Atipico());
        ASSERT_THAT(avisos, SizeIs(1));
        EXPECT_EQ(avisos[0].titulo, "clsAtipico:Modificar");
        EXPECT_THAT(avisos[0].texto, testing::EndsWith("] bloqueada"));
        EXPECT_EQ(pruebas::linea_nombrada(avisos[0].texto, "charges/clsAtipico.cpp"),
            "conexion->Execute(instrucciones::modifica_cabecera(*this, contexto), &afectadas);");
    }

    TEST_F(Persistencia, without_a_collection_of_lines_the_header_is_written_and_error_91_shown)
    {
        cargo.Lineas = nullptr;
        EXPECT_TRUE(cargo.Insertar());
        ASSERT_THAT(dichas, SizeIs(1));
        EXPECT_THAT(dichas[0], testing::StartsWith(columnas));
        ASSERT_THAT(avisos, SizeIs(1));
        EXPECT_EQ(avisos[0].titulo, "clsAtipico:Insertar");
        EXPECT_EQ(avisos[0].texto, "La variable de objeto no está establecida");
        EXPECT_EQ(avisos[0].icono, Icono::critico);

        dichas.clear();
        EXPECT_TRUE(cargo.Modificar_Atipico());
        ASSERT_THAT(dichas, SizeIs(1));
        EXPECT_THAT(dichas[0], testing::StartsWith("EXEC  UPDATE Proveedores_Cargos_Atipicos  SET"));
        ASSERT_THAT(avisos, SizeIs(2));
        EXPECT_EQ(avisos[1].titulo, "clsAtipico:Modificar");
        EXPECT_THAT(avisos[1].texto, testing::EndsWith("] La variable de objeto no está establecida"));
        EXPECT_EQ(pruebas::linea_nombrada(avisos[1].texto, "charges/clsAtipico.cpp"),
            "const auto lineas = lineas_de(*this);");

        dichas.clear();
        cargo.Eliminar_Atipico();
        EXPECT_THAT(dichas, SizeIs(2)) << "a deletion needs no lines";
        EXPECT_THAT(avisos, SizeIs(2));
    }

    TEST_F(Persistencia, insertar_without_a_tax_type_shows_why)
    {
        contexto.empresa->parametros["Proveedores_AtipcosImpuesto"] = Nulo{};
        EXPECT_TRUE(cargo.Insertar());
        EXPECT_THAT(dichas, IsEmpty());
        ASSERT_THAT(avisos, SizeIs(1));
        EXPECT_EQ(avisos[0].texto, "Uso no válido de Null");
    }

    TEST_F(Persistencia, eliminar_deletes_lines_then_header_with_three_blanks_before_and)
    {
        cargo.Eliminar_Atipico();
        EXPECT_THAT(dichas,
            ElementsAre(std::string("EXEC DELETE FROM Proveedores_Cargos_Atipicos_Lineas ") + clave_eliminar,
                std::string("EXEC DELETE FROM Proveedores_Cargos_Atipicos ") + clave_eliminar));
    }

    TEST_F(Persistencia, a_failing_deletion_is_shown_with_its_line_and_swallowed)
    {
        contexto.gestion->falla("DELETE FROM Proveedores_Cargos_Atipicos ", "referenciada");
        cargo.Eliminar_Atipico();
        ASSERT_THAT(avisos, SizeIs(1));
        EXPECT_EQ(avisos[0].titulo, "clsAtipico:Eliminar_Atipico");
        EXPECT_EQ(pruebas::linea_nombrada(avisos[0].texto, "charges/clsAtipico.cpp"),
            "conexion->Execute(instrucciones::elimina_cabecera(*this, empresa));");
        EXPECT_TRUE(cargo.EliminarConResultado());
    }

    TEST_F(Persistencia, a_new_charge_is_empty_and_owns_an_empty_collection)
    {
        const clsAtipico nuevo;
        EXPECT_EQ(nuevo.Codigo, "");
        EXPECT_EQ(nuevo.Fecha, Date());
        EXPECT_FALSE(nuevo.AplicarImpuesto);
        EXPECT_EQ(nuevo.Lineas->Count(), 0);
        EXPECT_NE(nuevo.Lineas, clsAtipico().Lineas);
    }

    TEST_F(Persistencia, connection_and_company_set_through_any_charge_are_the_ones_of_every_charge)
    {
        const auto otra = std::make_shared<pruebas::ConexionDePrueba>();
        const auto otra_empresa = std::make_shared<pruebas::EmpresaDePrueba>();
        otra_empresa->codigo = 9;
        clsAtipico().set_ConexionOrvalin(otra);
        clsAtipico().set_EmpresaOrvalin(otra_empresa);
        static_cast<void>(cargo.Existe(1, 2, "X"));
        EXPECT_THAT(dichas, IsEmpty());
        EXPECT_THAT(otra->dichas.at(0), testing::HasSubstr("Cod_Empresa =9 "));
    }

}
}
