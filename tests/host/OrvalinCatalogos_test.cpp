#include "host/orvalin/Catalogos.hpp"

#include "tests/host/BasesDeMuestra.hpp"

namespace atipicos::orvalin {

void PrintTo(const Ficha& ficha, std::ostream* salida) { *salida << ficha.Codigo << " " << ficha.Nombre; }

namespace {

    struct OrvalinCatalogos : pruebas::BasesDeMuestra {
        Catalogos catalogos{ bases.orvalin, 1 };
    };

    TEST_F(OrvalinCatalogos, know_a_warehouse_and_its_accounting_company)
    {
        const auto almacen = catalogos.almacen(3);
        ASSERT_TRUE(almacen);
        EXPECT_EQ(almacen->Nombre, "Arrecife");
        EXPECT_EQ(almacen->EmpContable, 2);
        EXPECT_FALSE(catalogos.almacen(99));
        EXPECT_FALSE(catalogos.almacen(-1));
    }

    TEST_F(OrvalinCatalogos, know_a_supplier_by_its_name)
    {
        EXPECT_EQ(catalogos.proveedor(103), "Ñandú Exportaciones, S.L.");
        EXPECT_EQ(catalogos.proveedor(7), std::nullopt);
    }

    TEST_F(OrvalinCatalogos, know_an_article_and_its_income_account)
    {
        EXPECT_EQ(catalogos.articulo(1003).value().CtaIngresosAtipicos, "75900010");
        EXPECT_EQ(catalogos.articulo(1022).value().Nombre, "Caja de cartón 60×40×40");
        EXPECT_EQ(catalogos.articulo(1022).value().CtaIngresosAtipicos, "");
        EXPECT_FALSE(catalogos.articulo(0));
    }

    TEST_F(OrvalinCatalogos, know_the_accounts_of_a_supplier)
    {
        bases.orvalin->Execute("UPDATE Proveedores SET Cta_Proveedor ='40000001', Cta_Deudor ='44000002', "
                               "Cta_DeudaCortoPlazo ='52100003' WHERE Codigo =103");
        const auto cuentas = catalogos.cuentas_proveedor(103).value();
        EXPECT_EQ(cuentas.Proveedor, "40000001");
        EXPECT_EQ(cuentas.Deudor, "44000002");
        EXPECT_EQ(cuentas.DeudaCortoPlazo, "52100003");
        EXPECT_FALSE(catalogos.cuentas_proveedor(7));
    }

    TEST_F(OrvalinCatalogos, hand_over_an_accent_for_each_quote)
    {
        for (const auto* tabla : { "Proveedores", "Articulos", "Almacenes" })
            bases.orvalin->Execute(
                std::string("UPDATE ") + tabla + " SET Nombre ='''d''Or''' WHERE Codigo IN (103, 1003, 3)");
        EXPECT_EQ(catalogos.proveedor(103), "´d´Or´");
        EXPECT_EQ(catalogos.articulo(1003).value().Nombre, "´d´Or´");
        EXPECT_EQ(catalogos.almacen(3).value().Nombre, "´d´Or´");
        EXPECT_EQ(catalogos.almacenes().at(2).Nombre, "´d´Or´");
    }

    TEST_F(OrvalinCatalogos, see_only_what_belongs_to_their_company)
    {
        const Catalogos segunda(bases.orvalin, 2);
        EXPECT_EQ(segunda.almacen(1).value().Nombre, "Muelle de Arrecife");
        EXPECT_FALSE(segunda.almacen(2));
        EXPECT_FALSE(segunda.proveedor(101));
        EXPECT_EQ(segunda.proveedor(104), "Conservas La Graciosa, S.A.");
        EXPECT_FALSE(segunda.articulo(1001));
    }

    TEST_F(OrvalinCatalogos, list_companies_and_users_and_warehouses_in_order)
    {
        EXPECT_THAT(catalogos.empresas(),
            testing::ElementsAre(
                Ficha{ 1, "Comercial Drago Sur, S.L." }, Ficha{ 2, "Drago Logística Insular, S.L." }));
        EXPECT_THAT(catalogos.usuarios(),
            testing::ElementsAre(Ficha{ 1, "Begoña Hernández" }, Ficha{ 2, "Íñigo Cabrera" },
                Ficha{ 3, "Candelaria Méndez" }, Ficha{ 12, "Turno de noche" }));
        EXPECT_THAT(catalogos.almacenes(), testing::SizeIs(5));
    }

    TEST_F(OrvalinCatalogos, without_a_connection_raise_an_error)
    {
        const Catalogos ninguno(nullptr, 1);
        EXPECT_THROW(static_cast<void>(ninguno.empresas()), Error);
    }

}
} // namespace atipicos::orvalin
