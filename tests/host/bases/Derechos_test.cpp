// What a clerk's login cannot do on a server, tried with that login on a real one: whatever his program
// sends.
#include "host/bases/Derechos.hpp"

#include "host/bases/Acceso.hpp"
#include "tests/host/BasesDeMuestra.hpp"
#include "tests/support/ServidorPostgresql.hpp"

#include <functional>
#include <memory>

namespace atipicos::bases {
namespace {

    using pruebas::columna;
    using pruebas::cuenta;
    using pruebas::error_de;
    using pruebas::inserta_cargo;
    using testing::ElementsAre;
    using testing::HasSubstr;

    constexpr auto negado = "SQLSTATE 42501";

    struct Derechos : testing::Test {
        static inline std::unique_ptr<pruebas::ServidorPostgresql> servidor;

        static void TearDownTestSuite() { servidor.reset(); }

        void SetUp() override
        {
            if (const auto falta = pruebas::ServidorPostgresql::falta(); !falta.empty())
                GTEST_SKIP() << falta;
            const bool nuevo = !servidor;
            if (nuevo)
                servidor = std::make_unique<pruebas::ServidorPostgresql>();
            servidor->crea_base("derechos");
            crea_bases(Lugar::de_conexion(servidor->direccion("derechos")), false);
            std::string dicho;
            ASSERT_EQ(servidor->guion("derechos", ATIPICOS_FUENTES "/host/sql/permisos_postgresql.sql",
                          "atipicos", dicho),
                0)
                << dicho;
            if (nuevo)
                servidor->psql("derechos",
                    "CREATE ROLE ana LOGIN IN ROLE atipicos_puesto; CREATE ROLE eva LOGIN IN ROLE "
                    "atipicos_puesto; CREATE ROLE sara LOGIN IN ROLE atipicos_suplencia; CREATE ROLE luz "
                    "LOGIN IN ROLE atipicos_consulta");
            asigna_acceso(como("atipicos"), { "ana", 2 });
        }
        void TearDown() override
        {
            if (servidor)
                servidor->borra_base("derechos");
        }

        static Lugar lugar(const std::string& usuario)
        {
            return Lugar::de_conexion(servidor->direccion("derechos", usuario));
        }
        static Bases como(const std::string& usuario) { return abre_bases(lugar(usuario)); }
    };

    void inserta_asiento(const Bases& bases, int numero, const std::string& usuario = "2")
    {
        bases.bexmor->Execute(
            "INSERT INTO Asientos (Cod_Empresa, Cod_Ejercicio, Numero, Fecha, Usuario) VALUES (1, 2026, "
            + std::to_string(numero) + ", '10/02/2026', '" + usuario + "')");
    }
    void inserta_apunte(const Bases& bases, int asiento, int linea, const char* debe, const char* haber)
    {
        bases.bexmor->Execute(
            "INSERT INTO Apuntes (Cod_Empresa, Cod_Ejercicio, Asiento, Linea, Cuenta, ConceptoAutomatico, "
            "Concepto, Documento, Departamento, Debe, Haber, TipoImpuesto, PorcentajeImpuesto, BaseImpuesto)"
            " VALUES (1, 2026, "
            + std::to_string(asiento) + ", " + std::to_string(linea) + ", '75900001', '', 'Palé', 'AT260001',"
            + " '90', " + debe + ", " + haber + ", 0, 0, 0)");
    }
    /// What is said of it at its commit, or at once; an entry is kept or nothing of it.
    std::string al_contabilizar(const Bases& bases, const std::function<void()>& accion)
    {
        bases.bexmor->BeginTrans();
        auto dicho = error_de(accion);
        if (dicho == "no error")
            dicho = error_de([&] { bases.bexmor->CommitTrans(); });
        if (dicho != "no error")
            bases.bexmor->RollbackTrans();
        return dicho;
    }
    void contabiliza(const Bases& bases, int numero)
    {
        EXPECT_EQ(al_contabilizar(bases,
                      [&] {
                          inserta_asiento(bases, numero);
                          inserta_apunte(bases, numero, 1, "131.98", "0");
                          inserta_apunte(bases, numero, 2, "0", "131.98");
                      }),
            "no error");
    }

    TEST_F(Derechos, a_login_is_one_user_and_acts_as_no_other)
    {
        const auto ana = como("ana");
        EXPECT_THAT(error_de([&] { inserta_cargo(*ana.orvalin, { .codigo = "AT260007", .usuario = 3 }); }),
            testing::AllOf(HasSubstr("«ana» no puede actuar como el usuario 3."), HasSubstr(negado)));
        inserta_cargo(*ana.orvalin, { .codigo = "AT260007" });
        EXPECT_THAT(
            error_de([&] { ana.orvalin->Execute("UPDATE Proveedores_Cargos_Atipicos SET Usuario =12"); }),
            HasSubstr("«ana» no puede actuar como el usuario 12."));
        ana.orvalin->Execute("UPDATE Proveedores_Cargos_Atipicos SET Importe =140, Usuario =2");
        EXPECT_THAT(error_de([&] { inserta_asiento(ana, 8, "3"); }), HasSubstr("como el usuario 3."));
        inserta_asiento(ana, 8, "2");
        const std::string regulariza = "INSERT INTO Regularizaciones (Cod_Empresa, Cod_Ejercicio, Asiento, "
                                       "Por_Ejercicio, Por_Asiento, Usuario, Hora) VALUES (1, 2026, 8, 2026, "
                                       "9, '";
        EXPECT_THAT(error_de([&] { ana.bexmor->Execute(regulariza + "1', '21/11/2026')"); }),
            HasSubstr("como el usuario 1."));
        ana.bexmor->Execute(regulariza + "2', '21/11/2026')");
        EXPECT_THAT(error_de([&] { inserta_cargo(*como("eva").orvalin, { .codigo = "AT260008" }); }),
            HasSubstr("«eva» no puede actuar como el usuario 2."))
            << "who is no user acts as none";
        inserta_cargo(*como("sara").orvalin, { .codigo = "AT260009", .usuario = 12 });
        inserta_cargo(*como("atipicos").orvalin, { .codigo = "AT260010", .usuario = 3 });
        EXPECT_EQ(cuenta(*ana.orvalin, "Proveedores_Cargos_Atipicos"), 3);
    }

    TEST_F(Derechos, of_who_is_who_nobody_says_but_the_owner)
    {
        const auto ana = como("ana");
        for (const auto* sql : { "INSERT INTO Accesos (Login, Usuario) VALUES ('eva', 1)",
                 "UPDATE Accesos SET Usuario =3", "DELETE FROM Accesos", "SET SESSION AUTHORIZATION atipicos",
                 "SET ROLE atipicos_suplencia", "GRANT atipicos_suplencia TO ana",
                 "CREATE OR REPLACE FUNCTION orvalin.actua_por_otros() RETURNS boolean LANGUAGE sql AS "
                 "'SELECT true'",
                 "DROP FUNCTION dbo.asiento_cuadra() CASCADE", "ALTER TABLE dbo.Apuntes DISABLE TRIGGER ALL",
                 "SET session_replication_role TO replica" })
            EXPECT_THAT(error_de([&] { ana.orvalin->Execute(sql); }), HasSubstr(negado)) << sql;
        EXPECT_THAT(columna(*ana.orvalin, "SELECT Login FROM Accesos"), ElementsAre("ana"));
    }

    TEST_F(Derechos, say_of_each_login_who_it_is_and_what_it_may)
    {
        const auto de = [](const char* quien) {
            const auto acceso = acceso_de(como(quien), lugar(quien));
            return acceso.login + " " + std::to_string(acceso.usuario.value_or(0))
                + (acceso.por_otros ? " por otros" : "") + (acceso.registra ? "" : " mira");
        };
        EXPECT_EQ(de("ana"), "ana 2");
        EXPECT_EQ(de("eva"), "eva 0");
        EXPECT_EQ(de("sara"), "sara 0 por otros");
        EXPECT_EQ(de("luz"), "luz 0 mira");
        EXPECT_EQ(de("atipicos"), "atipicos 0 por otros");
        const auto propietario = como("atipicos");
        asigna_acceso(propietario, { "ana", 12 });
        EXPECT_EQ(de("ana"), "ana 12");
        EXPECT_TRUE(quita_acceso(propietario, "ana"));
        EXPECT_FALSE(quita_acceso(propietario, "ana"));
        EXPECT_EQ(de("ana"), "ana 0");
    }

    TEST_F(Derechos, an_entry_that_does_not_balance_is_not_committed)
    {
        const auto ana = como("ana");
        contabiliza(ana, 7);
        EXPECT_THAT(al_contabilizar(ana,
                        [&] {
                            inserta_asiento(ana, 8);
                            inserta_apunte(ana, 8, 1, "131.98", "0");
                            inserta_apunte(ana, 8, 2, "0", "24.98");
                        }),
            HasSubstr("El asiento 1/2026/8 no cuadra: el debe menos el haber es 107.0000."));
        EXPECT_THAT(al_contabilizar(ana,
                        [&] {
                            inserta_asiento(ana, 8);
                            ana.bexmor->Execute("SET CONSTRAINTS ALL IMMEDIATE");
                            ana.bexmor->Execute("SET CONSTRAINTS ALL DEFERRED");
                            inserta_apunte(ana, 8, 3, "131.98", "0");
                        }),
            HasSubstr("131.9800"))
            << "not even one that was looked at before";
        EXPECT_THAT(columna(*ana.bexmor, "SELECT Numero FROM Asientos"), ElementsAre("7"));
        const auto propietario = como("atipicos");
        EXPECT_THAT(al_contabilizar(propietario,
                        [&] {
                            inserta_asiento(propietario, 9);
                            inserta_apunte(propietario, 9, 1, "1", "0");
                        }),
            HasSubstr("no cuadra"))
            << "not the owner's either";
    }

    TEST_F(Derechos, an_entry_that_is_known_to_be_incomplete_is_committed)
    {
        const auto ana = como("ana");
        const auto sabiendo = [&](const std::string& cual) {
            return al_contabilizar(ana, [&] {
                inserta_asiento(ana, 8);
                inserta_apunte(ana, 8, 1, "131.98", "0");
                ana.bexmor->Execute("INSERT INTO Asientos_Incompletos (Cod_Empresa, Cod_Ejercicio, Numero, "
                                    "Motivo) VALUES ("
                    + cual + ", 'cuenta')");
            });
        };
        for (const auto* otro : { "2, 2026, 8", "1, 2025, 8", "1, 2026, 9" })
            EXPECT_THAT(sabiendo(otro), HasSubstr("no cuadra")) << otro;
        EXPECT_EQ(sabiendo("1, 2026, 8"), "no error");
        EXPECT_THAT(
            error_de([&] { ana.bexmor->Execute("DELETE FROM Asientos_Incompletos"); }), HasSubstr(negado))
            << "and stays known";
    }

    TEST_F(Derechos, what_is_posted_is_not_changed_and_gets_no_more_lines)
    {
        const auto ana = como("ana");
        contabiliza(ana, 7);
        const auto anade = [&](const Bases& quien, int asiento) {
            return al_contabilizar(quien, [&] {
                inserta_apunte(quien, asiento, 3, "5", "0");
                inserta_apunte(quien, asiento, 4, "0", "5");
            });
        };
        EXPECT_THAT(anade(ana, 7), HasSubstr("El asiento 1/2026/7 ya está contabilizado"));
        for (const auto* tabla : { "Asientos", "Apuntes", "Registro_Impuestos", "Previsiones",
                 "Regularizaciones", "Asientos_Incompletos" })
            for (const auto* sql : { "DELETE FROM ", "TRUNCATE TABLE dbo.", "UPDATE " })
                EXPECT_THAT(error_de([&] {
                    ana.bexmor->Execute(
                        std::string(sql) + tabla + (*sql == 'U' ? " SET Cod_Empresa =2" : ""));
                }),
                    HasSubstr(negado))
                    << sql << tabla;
        EXPECT_EQ(anade(como("atipicos"), 7), "no error") << "the accounting product does as it likes";
        EXPECT_EQ(cuenta(*ana.bexmor, "Apuntes"), 4);
    }

    TEST_F(Derechos, an_entry_that_another_has_posted_meanwhile_is_posted)
    {
        const auto ana = como("ana");
        EXPECT_THAT(al_contabilizar(ana,
                        [&] {
                            inserta_asiento(ana, 6); // her transaction has its number before the other's
                            contabiliza(como("sara"), 7);
                            inserta_apunte(ana, 7, 3, "5", "0");
                        }),
            HasSubstr("El asiento 1/2026/7 ya está contabilizado"));
    }

    TEST(DerechosDeFichero, are_those_of_its_owner)
    {
        const pruebas::CarpetaTemporal carpeta;
        crea_bases(carpeta.ruta(), false);
        const auto bases = abre_bases(carpeta.ruta());
        const auto acceso = acceso_de(bases, carpeta.ruta());
        EXPECT_NE(acceso.login, "");
        EXPECT_TRUE(acceso.por_otros);
        EXPECT_TRUE(acceso.registra);
        EXPECT_EQ(acceso.usuario, std::nullopt);
        asigna_acceso(bases, { acceso.login, 12 });
        asigna_acceso(bases, { "otro", 3 });
        EXPECT_EQ(acceso_de(bases, carpeta.ruta()).usuario, 12);
        EXPECT_EQ(accesos(bases).size(), 2U);
    }

}
} // namespace atipicos::bases
