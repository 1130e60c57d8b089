// Each reference of the component goes to its own place and comes back from there, and from no other.
#include "context/modComun.hpp"

#include "tests/support/BorradoresDePrueba.hpp"
#include "tests/support/Contexto.hpp"

#include <gtest/gtest.h>

namespace atipicos {
namespace {

    /// Neither prints nor loads anything.
    class BibliotecaMuda final : public qvoremp::Biblioteca {
    public:
        std::unique_ptr<qvoremp::Almacen> NuevoAlmacen(const qvoremp::Empresa&, Donde) const override
        {
            return nullptr;
        }
        std::unique_ptr<qvoremp::Proveedor> NuevoProveedor(const qvoremp::Empresa&, Donde) const override
        {
            return nullptr;
        }
        std::unique_ptr<qvoremp::ImpresionCargo> NuevaImpresionCargo(
            const qvoremp::Empresa&, Donde) const override
        {
            return nullptr;
        }
    };

    TEST(Referencias, there_is_a_company_only_while_one_is_set)
    {
        pruebas::vacia_contexto();
        EXPECT_FALSE(modComun::hay_EmpresaOrvalin());
        {
            const pruebas::Contexto contexto;
            EXPECT_TRUE(modComun::hay_EmpresaOrvalin());
            modComun::set_EmpresaOrvalin(nullptr);
            EXPECT_FALSE(modComun::hay_EmpresaOrvalin());
        }
        EXPECT_FALSE(modComun::hay_EmpresaOrvalin());
    }

    TEST(Referencias, both_connections_and_both_companies_are_kept_apart)
    {
        const pruebas::Contexto contexto;
        EXPECT_EQ(modComun::ConexionOrvalin().get(), contexto.gestion.get());
        EXPECT_EQ(modComun::ConexionBexmor().get(), contexto.contabilidad.get());
        EXPECT_EQ(modComun::EmpresaOrvalin().get(), contexto.empresa.get());
        EXPECT_EQ(&modComun::EmpresaBexmor()->biblioteca(), contexto.biblioteca.get());
        EXPECT_EQ(modComun::Avisos().get(), contexto.avisos.get());
        EXPECT_EQ(&modComun::reloj(), contexto.reloj.get());

        const auto otra = std::make_shared<pruebas::ConexionDePrueba>();
        modComun::set_ConexionBexmor(otra);
        EXPECT_EQ(modComun::ConexionBexmor().get(), otra.get());
        EXPECT_EQ(modComun::ConexionOrvalin().get(), contexto.gestion.get())
            << "one does not take the other's place";
        const std::shared_ptr<qvbxemp::Empresa> contable = contexto.biblioteca->NuevaEmpresa(Donde::aqui());
        modComun::set_EmpresaBexmor(contable);
        EXPECT_EQ(modComun::EmpresaBexmor().get(), contable.get());
        EXPECT_EQ(modComun::EmpresaOrvalin().get(), contexto.empresa.get());
    }

    TEST(Referencias, what_may_be_missing_is_null_until_it_is_set)
    {
        const pruebas::Contexto contexto;
        EXPECT_EQ(modComun::PrevisionesCargo(), nullptr);
        EXPECT_EQ(modComun::comparte_Borradores(), nullptr);
        const auto biblioteca = std::make_shared<BibliotecaMuda>();
        modComun::set_BibliotecaOrvalin(biblioteca);
        EXPECT_EQ(modComun::BibliotecaOrvalin().get(), biblioteca.get());
        const auto borradores = std::make_shared<pruebas::BorradoresDePrueba>();
        modComun::set_Borradores(borradores);
        EXPECT_EQ(modComun::comparte_Borradores().get(), borradores.get());
    }

}
}
