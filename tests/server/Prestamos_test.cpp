// What the host lends is let go when the library is, all of it; and a walk over lines may begin again.
#include "tests/server/Cargado.hpp"

namespace atipicos::pruebas {
namespace {

    ULONG sostenes_de(const Despacho& objeto)
    {
        objeto.get()->AddRef();
        return objeto.get()->Release();
    }

    using Prestamos = Cargado;

    TEST_F(Prestamos, company_and_connection_are_let_go_when_the_library_is_unloaded)
    {
        const auto empresa = Anfitrion::crea({});
        const auto conexion = Anfitrion::crea({});
        crea("clsAtipico").pon("EmpresaOrvalin", empresa.valor());
        crea("clsAtipico").pon("ConexionOrvalin", conexion.valor());
        EXPECT_EQ(sostenes_de(empresa), 2U);
        EXPECT_EQ(sostenes_de(conexion), 2U);
        EXPECT_EQ(descargable(), HRESULT{ S_OK });
        dlclose(biblioteca);
        EXPECT_EQ(sostenes_de(empresa), 1U);
        EXPECT_EQ(sostenes_de(conexion), 1U);
        biblioteca = dlopen(ATIPICOS_COMPONENTE, RTLD_NOW | RTLD_LOCAL);
    }

#if ATIPICOS_CON_VENTANAS
    TEST_F(Prestamos, company_and_connection_of_accounting_too_while_no_window_has_been_opened)
    {
        const auto empresa = Anfitrion::crea({});
        const auto conexion = Anfitrion::crea({});
        crea("frmclsCompras_Atipicos").pon("EmpresaBexmor", empresa.valor());
        crea("frmclsComprasAtipVisor").pon("ConexionBexmor", conexion.valor());
        EXPECT_GT(sostenes_de(empresa), 1U);
        EXPECT_GT(sostenes_de(conexion), 1U);
        EXPECT_EQ(descargable(), HRESULT{ S_OK });
        dlclose(biblioteca);
        EXPECT_EQ(sostenes_de(empresa), 1U);
        EXPECT_EQ(sostenes_de(conexion), 1U);
        biblioteca = dlopen(ATIPICOS_COMPONENTE, RTLD_NOW | RTLD_LOCAL);
    }
#endif

    TEST_F(Prestamos, one_that_takes_the_place_of_another_lets_that_go)
    {
        const auto primera = Anfitrion::crea({});
        const auto segunda = Anfitrion::crea({});
        for (const auto* propiedad : { "EmpresaOrvalin", "ConexionOrvalin" }) {
            crea("clsAtipico").pon(propiedad, primera.valor());
            crea("clsAtipico").pon(propiedad, segunda.valor());
            EXPECT_EQ(sostenes_de(primera), 1U) << propiedad;
            EXPECT_EQ(sostenes_de(segunda), 2U) << propiedad;
            crea("clsAtipico").pon(propiedad, Despacho().valor());
            EXPECT_EQ(sostenes_de(segunda), 1U) << propiedad;
        }
    }

    TEST_F(Prestamos, a_walk_that_is_begun_again_begins_with_the_first_line)
    {
        const auto lineas = crea("clsAtipico_Lineas");
        for (const std::int32_t articulo : { 2001, 2002, 2003 })
            lineas.llama("Add", articulo);
        const auto nuevo = lineas.invoca(DISPID_NEWENUM, DISPATCH_PROPERTYGET, {});
        void* cara = nullptr;
        ASSERT_EQ(nuevo.get().punkVal->QueryInterface(iid_enumerador, &cara), HRESULT{ S_OK });
        auto* paseo = static_cast<IEnumVARIANT*>(cara);
        const auto siguiente = [](IEnumVARIANT* suyo) {
            Valor valor;
            ULONG dados = 0;
            return suyo->Next(1, &valor.get(), &dados) == S_OK && dados == 1
                ? Despacho::de(valor.get()).llama("Cod_Articulo").entero()
                : 0;
        };
        EXPECT_EQ(siguiente(paseo), 2001);
        EXPECT_EQ(siguiente(paseo), 2002);
        IEnumVARIANT* otro = nullptr;
        ASSERT_EQ(paseo->Clone(&otro), HRESULT{ S_OK });
        EXPECT_EQ(paseo->Reset(), HRESULT{ S_OK });
        EXPECT_EQ(siguiente(paseo), 2001);
        EXPECT_EQ(siguiente(otro), 2003) << "the copy stays where it was taken";
        EXPECT_EQ(siguiente(otro), 0);
        EXPECT_EQ(paseo->Skip(1), HRESULT{ S_OK });
        EXPECT_EQ(siguiente(paseo), 2003);
        otro->Release();
        paseo->Release();
    }

}
}
