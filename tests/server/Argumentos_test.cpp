// Arguments that look like others: what counts as missing and what is a value.
#include "tests/server/Cargado.hpp"

namespace atipicos::pruebas {
namespace {

    struct ArgumentosRaros : Cargado {
        Despacho lineas = crea("clsAtipico_Lineas");

        ~ArgumentosRaros() override { lineas = {}; }
        ArgumentosRaros() = default;
        ArgumentosRaros(const ArgumentosRaros&) = delete;
        ArgumentosRaros& operator=(const ArgumentosRaros&) = delete;

        Crudo agrega(std::vector<Valor> argumentos, std::vector<DISPID> nombrados = {}) const
        {
            return { lineas, lineas.id("Add"), DISPATCH_METHOD, std::move(argumentos), std::move(nombrados) };
        }
    };

    TEST_F(ArgumentosRaros, a_number_that_is_the_code_of_a_missing_argument_is_a_number)
    {
        constexpr std::int32_t como_omitido = DISP_E_PARAMNOTFOUND;
        EXPECT_EQ(agrega({ como_omitido }).codigo, HRESULT{ S_OK });
        EXPECT_EQ(lineas.objeto("Item", 1).llama("Cod_Articulo").entero(), como_omitido);
    }

    TEST_F(ArgumentosRaros, an_error_that_is_not_the_code_of_a_missing_argument_is_no_value)
    {
        auto otro_error = Valor::omitido();
        otro_error.get().scode = DISP_E_OVERFLOW;
        EXPECT_EQ(agrega({ otro_error }).codigo, HRESULT{ DISP_E_TYPEMISMATCH });
        EXPECT_EQ(agrega({ Valor::omitido() }).codigo, HRESULT{ S_OK });
        EXPECT_EQ(lineas.llama("Count").entero(), 1);
    }

    TEST_F(ArgumentosRaros, named_ones_go_to_their_places_among_the_others)
    {
        // Add lngId:=77, curPrecio:=2.5 after article and description
        EXPECT_EQ(agrega({ 2001, "Caja", 2.5, 77 }, { 5, 3 }).codigo, HRESULT{ S_OK });
        const auto linea = lineas.objeto("Item", 1);
        EXPECT_EQ(linea.llama("Cod_Articulo").entero(), 2001);
        EXPECT_EQ(linea.llama("Descripcion").texto(), "Caja");
        EXPECT_EQ(linea.llama("Unidades").moneda(), Moneda{});
        EXPECT_EQ(linea.llama("Precio").moneda(), Moneda{ 25'000 });
        EXPECT_EQ(linea.llama("Id").entero(), 77);
    }

    TEST_F(ArgumentosRaros, one_that_is_given_by_place_and_by_name_is_refused)
    {
        EXPECT_EQ(agrega({ 2001, 2002 }, { 0 }).codigo, HRESULT{ DISP_E_PARAMNOTFOUND });
        EXPECT_EQ(agrega({ 2001 }, { 7 }).codigo, HRESULT{ DISP_E_PARAMNOTFOUND }) << "there are seven";
        EXPECT_EQ(lineas.llama("Count").entero(), 0);
    }

}
}
