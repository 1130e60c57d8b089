// An entry of which a line is refused, saved by a clerk with no more rights than he needs: what was stored
// before is committed, and the verification names it.
#include "host/bases/Acceso.hpp"
#include "host/comprobacion/Verificacion.hpp"
#include "tests/integracion/Banco.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using pruebas::Banco;
    using testing::Contains;
    using testing::ElementsAre;
    using testing::HasSubstr;

    /// Saves a charge whose supplier has no account in the plan.
    void guarda_sin_cuenta(const bases::Lugar& propietario, const bases::Lugar& puesto)
    {
        bases::abre_bases(propietario)
            .bexmor->Execute(
                "DELETE FROM Cuentas WHERE Cod_Empresa =1 AND Cod_Ejercicio =2026 AND Cuenta ='40000104'");
        Banco banco(puesto);
        const auto guardado = banco.guarda();
        EXPECT_EQ(guardado.estado, ResultadoGuardado::Estado::Guardado);
        EXPECT_THAT(banco.titulos(), ElementsAre("frmCompras_Atipicos:GenerarAsiento"));
        EXPECT_EQ(banco.estado()["Bexmor.dbo.Apuntes"], 5) << "debtor, income and tax";
        EXPECT_EQ(banco.estado()["Proveedores_Cargos_Atipicos"], 1);
        EXPECT_THAT(app::verifica(banco.bases()).diferencias,
            Contains(
                HasSubstr("quedó incompleto al contabilizarlo (La cuenta 40000104 no existe en el plan")));
    }

    TEST(AsientoIncompleto, is_kept_and_named_in_a_folder)
    {
        const auto muestra = pruebas::en_carpeta().muestra();
        guarda_sin_cuenta(muestra->lugar(), muestra->lugar());
    }

    TEST(AsientoIncompleto, is_kept_and_named_on_a_server_by_a_clerk)
    {
        if (const auto falta = pruebas::ServidorPostgresql::falta(); !falta.empty())
            GTEST_SKIP() << falta;
        const auto& servidor = pruebas::servidor_postgresql();
        servidor.crea_base("incompleto");
        const auto propietario = bases::Lugar::de_conexion(servidor.direccion("incompleto"));
        bases::crea_bases(propietario, false);
        std::string dicho;
        ASSERT_EQ(servidor.guion(
                      "incompleto", ATIPICOS_FUENTES "/host/sql/permisos_postgresql.sql", "atipicos", dicho),
            0)
            << dicho;
        servidor.psql("incompleto", "CREATE ROLE lola LOGIN IN ROLE atipicos_puesto");
        bases::asigna_acceso(bases::abre_bases(propietario), { "lola", 1 });
        guarda_sin_cuenta(propietario, bases::Lugar::de_conexion(servidor.direccion("incompleto", "lola")));
        servidor.borra_base("incompleto");
    }

}
}
