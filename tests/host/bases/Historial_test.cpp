// What the database writes down about charges by itself, and that nobody takes it back.
#include "host/bases/Historial.hpp"

#include "engines/sqlite/Connection.hpp"
#include "host/bases/BasesEnPostgresql.hpp"
#include "tests/host/BasesDeMuestra.hpp"
#include "tests/support/ControladorOdbc.hpp"
#include "tests/support/ServidorPostgresql.hpp"

#include <gmock/gmock.h>

#include <functional>

namespace atipicos::bases {
namespace {

    using pruebas::columna;
    using pruebas::cuenta;
    using pruebas::error_de;
    using testing::ElementsAre;
    using testing::HasSubstr;
    using testing::Not;

    enum class En : std::uint8_t { carpeta, carpeta_por_odbc, servidor, servidor_por_odbc };

    struct Historial : testing::TestWithParam<En> {
        static inline std::unique_ptr<pruebas::ServidorPostgresql> servidor;
        pruebas::CarpetaTemporal carpeta;
        Bases bases;

        static void TearDownTestSuite() { servidor.reset(); }
        static bool en_servidor()
        {
            return GetParam() == En::servidor || GetParam() == En::servidor_por_odbc;
        }

        void SetUp() override
        {
            auto falta = en_servidor() ? pruebas::ServidorPostgresql::falta() : std::string();
            if (GetParam() == En::carpeta_por_odbc)
                falta += pruebas::falta_controlador("SQLite3", "libsqliteodbc");
            if (GetParam() == En::servidor_por_odbc)
                falta += pruebas::falta_controlador("PostgreSQL Unicode", "odbc-postgresql");
            if (!falta.empty())
                GTEST_SKIP() << falta;
            if (en_servidor() && !servidor)
                servidor = std::make_unique<pruebas::ServidorPostgresql>();
            if (en_servidor())
                servidor->crea_base("historia");
            crea_bases(lugar(), false);
            bases = abre_bases(lugar());
        }
        void TearDown() override
        {
            bases = {};
            if (en_servidor() && servidor)
                servidor->borra_base("historia");
        }

        Lugar lugar() const
        {
            switch (GetParam()) {
            case En::carpeta:
                break;
            case En::carpeta_por_odbc:
                return Lugar::de_conexion(
                    "odbc:DRIVER={SQLite3};DATABASE=" + (carpeta / "empresa.db").string());
            case En::servidor:
                return Lugar::de_conexion(servidor->direccion("historia"));
            case En::servidor_por_odbc:
                return Lugar::de_conexion("odbc:" + servidor->cadena_odbc("historia"));
            }
            return carpeta.ruta();
        }

        void di(const std::string& sql) const { bases.orvalin->Execute(sql); }
        void inserta(const std::string& codigo, int asiento = 17) const
        {
            pruebas::inserta_cargo(
                *bases.orvalin, { .codigo = codigo, .ejercicio = 2025, .asiento = asiento });
        }
        void inserta_linea(const std::string& codigo, int numero) const
        {
            di("INSERT INTO Proveedores_Cargos_Atipicos_Lineas (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, "
               "Codigo,"
               " Num_Linea, Cod_Articulo, Descripcion, Unidades, Precio, Observ) VALUES (1, 2025, 3, '"
                + codigo + "', " + std::to_string(numero) + ", 1010, 'Queso', 12.485, 9.75, '')");
        }
        std::vector<std::string> dicho(const std::string& que) const
        {
            return columna(*bases.orvalin, "SELECT " + que + " FROM Historial ORDER BY Numero");
        }
        std::vector<std::string> sucesos() const
        {
            return dicho(
                "Accion || ' ' || Cod_Empresa || ' ' || Cod_Ejercicio || ' ' || Cod_Almacen || ' ' || Codigo"
                " || ' ' || Num_Linea || ' <' || Usuario || '>'");
        }
    };

    constexpr auto del_cargo
        = " WHERE Cod_Empresa =1 AND Cod_Ejercicio =2025 AND Cod_Almacen =3 AND Codigo ='AT250007'";

    TEST_P(Historial, says_of_each_row_of_a_charge_what_was_done_to_it_and_what_it_was)
    {
        inserta("AT250007");
        inserta_linea("AT250007", 1);
        inserta_linea("AT250007", 2);
        di(std::string("UPDATE Proveedores_Cargos_Atipicos SET Importe =140.5, Usuario =1") + del_cargo);
        di(std::string("UPDATE Proveedores_Cargos_Atipicos_Lineas SET Precio =9.75") + del_cargo);
        di(std::string("UPDATE Proveedores_Cargos_Atipicos_Lineas SET Precio =8.1") + del_cargo
            + " AND Num_Linea =2");
        di(std::string("DELETE FROM Proveedores_Cargos_Atipicos_Lineas") + del_cargo);
        di(std::string("DELETE FROM Proveedores_Cargos_Atipicos") + del_cargo);
        const std::string cargo = " 1 2025 3 AT250007 ";
        EXPECT_THAT(sucesos(),
            ElementsAre("alta" + cargo + "0 <2>", "alta" + cargo + "1 <>", "alta" + cargo + "2 <>",
                "cambio" + cargo + "0 <1>", "cambio" + cargo + "2 <>", "baja" + cargo + "1 <>",
                "baja" + cargo + "2 <>", "baja" + cargo + "0 <>"))
            << "lines that stay as they were are not changed";
        const auto antes = dicho("Antes");
        EXPECT_THAT(antes[0], "null");
        EXPECT_THAT(antes[3],
            testing::AllOf(HasSubstr("131.98"), HasSubstr("Piezas «rajadas»"), HasSubstr("2025-02-10")));
        EXPECT_THAT(antes[4], testing::AllOf(HasSubstr("9.75"), HasSubstr("12.485")));
        EXPECT_THAT(antes[6], HasSubstr("8.1"));
        EXPECT_THAT(antes[7], HasSubstr("140.5"));
    }

    TEST_P(Historial, says_who_did_it_and_from_where)
    {
        inserta("AT250007");
        const auto login = dicho("Login").at(0);
        const auto puesto = dicho("Puesto").at(0);
        EXPECT_THAT(dicho("Momento").at(0), HasSubstr("/20"));
        if (en_servidor()) {
            EXPECT_EQ(login, "atipicos");
            EXPECT_THAT(puesto, testing::StartsWith("local"));
        } else {
            EXPECT_NE(login, "");
            EXPECT_THAT(puesto, testing::EndsWith(" atipicos"));
        }
    }

    TEST_P(Historial, of_a_transaction_that_is_undone_says_nothing)
    {
        bases.orvalin->BeginTrans();
        inserta("AT250007");
        EXPECT_EQ(cuenta(*bases.orvalin, "Historial"), 1);
        bases.orvalin->RollbackTrans();
        EXPECT_EQ(cuenta(*bases.orvalin, "Historial"), 0);
    }

    TEST_P(Historial, of_a_charge_that_gets_another_code_says_that_one_went_and_another_came)
    {
        inserta("AT250007");
        di(std::string("UPDATE Proveedores_Cargos_Atipicos SET Codigo ='AT250099'") + del_cargo);
        const auto todos = sucesos();
        ASSERT_EQ(todos.size(), 3U);
        EXPECT_EQ(todos[1], "baja 1 2025 3 AT250007 0 <2>");
        EXPECT_EQ(todos[2], "alta 1 2025 3 AT250099 0 <2>");
    }

    TEST_P(Historial, says_which_entry_was_reversed)
    {
        bases.bexmor->Execute(
            "INSERT INTO Regularizaciones (Cod_Empresa, Cod_Ejercicio, Asiento, Por_Ejercicio,"
            " Por_Asiento, Usuario, Hora) VALUES (2, 2025, 17, 2026, 30, 'begona', '21/11/2026')");
        EXPECT_THAT(columna(*bases.orvalin,
                        "SELECT Cod_Empresa || ' ' || Cod_Ejercicio || ' ' || Asiento || ' ' || "
                        "Por_Ejercicio || ' ' ||"
                        " Por_Asiento || ' ' || Usuario FROM Historial_Anulaciones WHERE Login <> ''"),
            ElementsAre("2 2025 17 2026 30 begona"));
    }

    TEST_P(Historial, is_changed_and_deleted_by_nobody)
    {
        inserta("AT250007");
        bases.bexmor->Execute(
            "INSERT INTO Regularizaciones (Cod_Empresa, Cod_Ejercicio, Asiento, Por_Ejercicio,"
            " Por_Asiento, Usuario, Hora) VALUES (2, 2025, 17, 2026, 30, 'begona', '21/11/2026')");
        for (const auto* sql :
            { "UPDATE Historial SET Accion ='cambio'", "UPDATE Historial SET Login ='otro'",
                "UPDATE Historial SET Puesto =''", "UPDATE Historial SET Antes ='{}'",
                "DELETE FROM Historial", "UPDATE Historial_Anulaciones SET Usuario ='otro'",
                "UPDATE Historial_Anulaciones SET Login ='otro'", "DELETE FROM Historial_Anulaciones" })
            EXPECT_THAT(error_de([&] { di(sql); }), HasSubstr("El historial no se ")) << sql;
        EXPECT_THAT(sucesos(), ElementsAre("alta 1 2025 3 AT250007 0 <2>"));
    }

    TEST_P(Historial, tells_the_rows_that_a_statement_has_changed_without_its_own)
    {
        inserta("AT250007");
        std::int32_t afectadas = -1;
        bases.orvalin->Execute(
            std::string("UPDATE Proveedores_Cargos_Atipicos SET Importe =3") + del_cargo, &afectadas);
        EXPECT_EQ(afectadas, 1);
        bases.orvalin->Execute(
            "UPDATE Proveedores_Cargos_Atipicos SET Importe =3 WHERE Codigo ='no'", &afectadas);
        EXPECT_EQ(afectadas, 0);
    }

    INSTANTIATE_TEST_SUITE_P(en, Historial,
        testing::Values(En::carpeta, En::carpeta_por_odbc, En::servidor, En::servidor_por_odbc),
        [](const auto& caso) {
            switch (caso.param) {
            case En::carpeta:
                break;
            case En::carpeta_por_odbc:
                return "odbc_sqlite";
            case En::servidor:
                return "postgresql";
            case En::servidor_por_odbc:
                return "odbc_postgresql";
            }
            return "sqlite";
        });

    struct HistorialEnServidor : testing::Test {
        static inline std::unique_ptr<pruebas::ServidorPostgresql> servidor;
        static void TearDownTestSuite() { servidor.reset(); }

        void SetUp() override
        {
            if (const auto falta = pruebas::ServidorPostgresql::falta(); !falta.empty())
                GTEST_SKIP() << falta;
            servidor = std::make_unique<pruebas::ServidorPostgresql>();
            servidor->crea_base("derechos");
            crea_bases(Lugar::de_conexion(servidor->direccion("derechos")), false);
            std::string dicho;
            ASSERT_EQ(servidor->guion("derechos", ATIPICOS_FUENTES "/host/sql/permisos_postgresql.sql",
                          "atipicos", dicho),
                0)
                << dicho;
            servidor->psql("derechos",
                "CREATE ROLE ana LOGIN IN ROLE atipicos_puesto; CREATE ROLE ivan LOGIN IN ROLE "
                "atipicos_historial;"
                "CREATE ROLE luz LOGIN IN ROLE atipicos_consulta;"
                "INSERT INTO orvalin.Accesos VALUES ('ana', 2)");
        }

        static Bases como(const std::string& usuario)
        {
            return abre_bases(Lugar::de_conexion(servidor->direccion("derechos", usuario)));
        }
        static void expect_negado(const Bases& bases, const std::string& sql)
        {
            EXPECT_THAT(error_de([&] { bases.orvalin->Execute(sql); }), HasSubstr("SQLSTATE 42501")) << sql;
        }
    };

    TEST_F(HistorialEnServidor, is_written_for_who_may_not_read_it_and_read_by_a_role_of_its_own)
    {
        const auto ana = como("ana");
        ana.orvalin->Execute(
            "INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo,"
            " Proveedor, Fecha, Importe, Asiento, EmpContable, EjContable, Usuario, Hora, Observ,"
            " Cod_Compra, Documento, Impuesto, Impuesto_Importe, Tipo) VALUES (1, 2025, 3, 'AT250011',"
            " 106, '10/02/2025',1, 17, 2, 2025, 2, '9:05:03', '', 0, 0, 7, 0, 1)");
        ana.bexmor->Execute(
            "INSERT INTO Regularizaciones (Cod_Empresa, Cod_Ejercicio, Asiento, Por_Ejercicio,"
            " Por_Asiento, Usuario, Hora) VALUES (2, 2025, 17, 2026, 30, '2', '21/11/2026')");
        const auto ivan = como("ivan");
        for (const auto* tabla : { "Historial", "Historial_Anulaciones" })
            EXPECT_THAT(
                columna(*ivan.orvalin, std::string("SELECT Login FROM ") + tabla), ElementsAre("ana"));
        for (const auto& uno : { ana, ivan, como("luz") }) {
            for (const auto* tabla : { "Historial", "Historial_Anulaciones" }) {
                expect_negado(uno, std::string("DELETE FROM ") + tabla);
                expect_negado(uno, std::string("UPDATE ") + tabla + " SET Login ='luz'");
                expect_negado(uno, std::string("TRUNCATE TABLE ") + tabla);
                expect_negado(uno, std::string("INSERT INTO ") + tabla + " SELECT * FROM " + tabla);
                expect_negado(uno, std::string("DROP TABLE ") + tabla);
            }
            expect_negado(uno, "ALTER TABLE Proveedores_Cargos_Atipicos DISABLE TRIGGER ALL");
            expect_negado(uno, "DROP TRIGGER Cargo_Alta ON Proveedores_Cargos_Atipicos");
            expect_negado(uno, "SET session_replication_role TO replica");
            expect_negado(uno, "SELECT orvalin.historial_puesto()");
        }
        for (const auto& uno : { ana, como("luz") })
            for (const auto* tabla : { "Historial", "Historial_Anulaciones" })
                EXPECT_THAT(
                    error_de([&] { columna(*uno.orvalin, std::string("SELECT Login FROM ") + tabla); }),
                    HasSubstr("SQLSTATE 42501"));
        EXPECT_THAT(
            servidor->psql("derechos", "TRUNCATE orvalin.Historial"), HasSubstr("El historial no se cambia"))
            << "not even by a superuser";
    }

    TEST_F(HistorialEnServidor, numbers_are_given_out_forward_alone)
    {
        servidor->psql("derechos",
            "INSERT INTO orvalin.Contador_Proveedores_Cargos_Atipicos VALUES (1, 2025, 3, 250041);"
            "INSERT INTO dbo.Contador_Asientos VALUES (2, 2025, 17)");
        const auto ana = como("ana");
        const std::string cargos = "UPDATE Contador_Proveedores_Cargos_Atipicos SET ";
        const std::string asientos = "UPDATE Bexmor.dbo.Contador_Asientos SET ";
        for (const auto* cambio : { "Numero =16", "Cod_Ejercicio =2024", "Cod_Empresa =9" })
            for (const auto& tabla : { cargos, asientos })
                expect_negado(ana, tabla + cambio);
        expect_negado(ana, "DELETE FROM Contador_Proveedores_Cargos_Atipicos");
        ana.orvalin->Execute(cargos + "Numero =250042");
        ana.orvalin->Execute(asientos + "Numero =18");
        EXPECT_THAT(columna(*ana.orvalin, "SELECT Numero FROM Contador_Proveedores_Cargos_Atipicos"),
            ElementsAre("250042"));
        const auto propietario = como("atipicos");
        propietario.orvalin->Execute(cargos + "Numero =250040");
        propietario.orvalin->Execute(asientos + "Numero =7");
    }

    TEST(HistorialDeFichero, keeps_what_other_programs_do_without_their_name)
    {
        const pruebas::CarpetaTemporal carpeta;
        crea_bases(carpeta.ruta(), false);
        const auto otro = sqlite::Connection::Abrir({ .fichero = carpeta / "empresa.db" });
        otro->Execute(
            "INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo,"
            " Proveedor, Fecha, Importe, Asiento, EmpContable, EjContable, Usuario, Hora, Observ, Cod_Compra,"
            " Documento, Impuesto, Impuesto_Importe, Tipo) VALUES (1, 2025, 3, 'AT250011', 106, '10/02/2025',"
            "1, 0, 0, 0, 2, '9:05:03', '', 0, 0, 7, 0, 1)");
        EXPECT_THAT(
            columna(*otro, "SELECT Codigo || '<' || Login || '>' FROM Historial"), ElementsAre("AT250011<>"));
    }

}
} // namespace atipicos::bases
