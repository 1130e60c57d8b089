#include "host/comprobacion/HistorialEnPalabras.hpp"

#include <gmock/gmock.h>

namespace atipicos::app {
namespace {

    using testing::ElementsAre;
    using testing::IsEmpty;
    using Que = Suceso::Que;

    FilaLeida cabecera(const std::string& importe, const std::string& observ)
    {
        return { { "Proveedor", "106" }, { "Fecha", "10/02/2026" }, { "Importe", importe },
            { "Impuesto", "7" }, { "Impuesto_Importe", "9,24" }, { "Asiento", "31" }, { "EmpContable", "2" },
            { "EjContable", "2025" }, { "Cod_Compra", "0" }, { "Documento", "14" }, { "Tipo", "0" },
            { "Observ", observ }, { "Usuario", "3" }, { "Hora", "10/02/2026 09:05:03" } };
    }

    Suceso suceso(Que que, std::int32_t linea = 0)
    {
        Suceso uno;
        uno.que = que;
        uno.linea = linea;
        return uno;
    }

    TEST(HistorialEnPalabras, says_what_it_was_of_what_and_who)
    {
        EXPECT_EQ(que_fue(suceso(Que::alta)), "alta");
        EXPECT_EQ(que_fue(suceso(Que::cambio)), "cambio");
        EXPECT_EQ(que_fue(suceso(Que::baja)), "baja");
        EXPECT_EQ(que_fue(suceso(Que::anulacion)), "anulación");
        EXPECT_EQ(de_que_fue(suceso(Que::alta)), "cabecera");
        EXPECT_EQ(de_que_fue(suceso(Que::baja, 2)), "línea 2");
        EXPECT_EQ(de_que_fue(suceso(Que::anulacion)), "asiento");
        auto uno = suceso(Que::cambio);
        EXPECT_EQ(quien_fue(uno), "otro programa");
        uno.login = "begona";
        EXPECT_EQ(quien_fue(uno), "begona");
    }

    TEST(HistorialEnPalabras, of_a_change_says_what_differs_in_the_order_of_the_columns)
    {
        auto uno = suceso(Que::cambio);
        uno.antes = cabecera("131,98", "");
        uno.despues = cabecera("0", "Piezas rajadas");
        uno.despues->at("Hora") = "11/02/2026 10:00:00";
        EXPECT_THAT(lo_cambiado(uno),
            ElementsAre(DatoCambiado{ "Importe", "131,98", "0" },
                DatoCambiado{ "Observaciones", "", "Piezas rajadas" }));
        EXPECT_EQ(en_una_frase(uno), "Importe 131,98 → 0; Observaciones vacío → Piezas rajadas");
        uno.despues.reset();
        EXPECT_THAT(lo_cambiado(uno), IsEmpty()) << "what it became nobody knows";
    }

    TEST(HistorialEnPalabras, of_a_row_that_came_or_went_says_what_says_something)
    {
        auto alta = suceso(Que::alta);
        alta.despues = cabecera("131,98", "");
        EXPECT_EQ(en_una_frase(alta),
            "Proveedor 106; Fecha 10/02/2026; Importe 131,98; Tipo de impuesto 7; Impuesto 9,24; Asiento 31; "
            "Empresa contable 2; Ejercicio contable 2025; Documento 14");
        auto baja = suceso(Que::baja, 3);
        baja.antes = FilaLeida{ { "Cod_Articulo", "1010" }, { "Descripcion", "Queso" },
            { "Unidades", "12,485" }, { "Precio", "9,75" }, { "Observ", "Segunda" } };
        EXPECT_THAT(lo_cambiado(baja),
            ElementsAre(DatoCambiado{ "Artículo", "1010", "" }, DatoCambiado{ "Descripción", "Queso", "" },
                DatoCambiado{ "Unidades", "12,485", "" }, DatoCambiado{ "Precio", "9,75", "" },
                DatoCambiado{ "Observaciones", "Segunda", "" }));
        EXPECT_EQ(en_una_frase(baja),
            "Artículo 1010; Descripción Queso; Unidades 12,485; Precio 9,75; Observaciones Segunda");
    }

    TEST(HistorialEnPalabras, of_a_reversal_says_the_entries)
    {
        auto uno = suceso(Que::anulacion);
        uno.asiento = "2/2026/1, con el 2/2027/1";
        EXPECT_EQ(en_una_frase(uno), uno.asiento);
        EXPECT_THAT(lo_cambiado(uno), IsEmpty());
    }

}
}
