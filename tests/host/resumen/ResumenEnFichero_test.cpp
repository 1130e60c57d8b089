#include "host/resumen/ResumenEnFichero.hpp"

#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <sstream>

namespace atipicos::app {
namespace {

    using Json = nlohmann::json;
    using pruebas::dia;
    using pruebas::moneda;
    using testing::HasSubstr;

    const ResumenCargos& por_proveedor()
    {
        static const ResumenCargos resumen(
            { VistaResumen::proveedor, { dia("15/03/2026"), dia("20/11/2026") }, 3, 0 },
            { { 107, "Frío; \"Barranco\"", { 2, moneda("1234567.1"), moneda("86419.7") },
                  { 1, moneda("1000000"), moneda("0") } },
                { 103, "Ñandú", { 1, moneda("0.1"), moneda("0.01") }, {} } });
        return resumen;
    }

    std::string escrito(auto formato, const ResumenCargos& resumen)
    {
        std::ostringstream salida;
        formato(salida, resumen);
        return salida.str();
    }

    TEST(ResumenEnFichero, csv_is_what_a_spanish_spreadsheet_reads)
    {
        EXPECT_EQ(escrito(resumen_en_csv, por_proveedor()),
            "Código;Proveedor;Cargos;Base;Impuesto;Total;% del total;Total un año antes;% de cambio\r\n"
            "107;\"Frío; \"\"Barranco\"\"\";2;1.234.567,10;86.419,70;1.320.986,80;100,0000;1.000.000,00;"
            "32,0987\r\n"
            "103;Ñandú;1;0,10;0,01;0,11;0,0000;0,00;\r\n");
    }

    TEST(ResumenEnFichero, json_tells_what_was_asked_for_and_holds_exact_numbers)
    {
        const auto texto = escrito(resumen_en_json, por_proveedor());
        EXPECT_THAT(texto, HasSubstr("\"base\": 1234567.1,\n"));
        const auto json = Json::parse(texto);
        EXPECT_EQ(json["por"], "proveedor");
        EXPECT_EQ(json["desde"], "2026-03-15");
        EXPECT_EQ(json["hasta"], "2026-11-20");
        EXPECT_EQ(json["desde_un_anio_antes"], "2025-03-15");
        EXPECT_EQ(json["hasta_un_anio_antes"], "2025-11-20");
        EXPECT_EQ(json["almacen"], 3);
        EXPECT_TRUE(json["proveedor"].is_null());
        ASSERT_EQ(json["grupos"].size(), 2U);
        const auto primero = json["grupos"][0];
        EXPECT_EQ(primero["codigo"], "107");
        EXPECT_EQ(primero["nombre"], "Frío; \"Barranco\"");
        EXPECT_EQ(primero["cargos"], 2);
        EXPECT_EQ(primero["total"], 1320986.8);
        EXPECT_EQ(primero["total_un_anio_antes"], 1000000);
        EXPECT_EQ(primero["porcentaje_de_cambio"], 32.0987);
        EXPECT_TRUE(json["grupos"][1]["porcentaje_de_cambio"].is_null());
        EXPECT_EQ(json["total"]["cargos"], 3);
        EXPECT_EQ(json["total"]["total"], 1320986.91);
        EXPECT_EQ(json["total"]["porcentaje_del_total"], 100);
        EXPECT_FALSE(json["total"].contains("nombre"));
    }

    TEST(ResumenEnFichero, xlsx_holds_numbers_as_numbers)
    {
        const pruebas::CarpetaTemporal carpeta;
        {
            std::ofstream libro(carpeta / "r.xlsx", std::ios::binary);
            resumen_en_xlsx(libro, por_proveedor());
        }
        const auto orden
            = "cd '" + carpeta.ruta().string() + "' && unzip -p r.xlsx xl/worksheets/sheet1.xml >hoja";
        ASSERT_EQ(std::system(orden.c_str()), 0);
        const auto hoja = pruebas::lee_fichero(carpeta / "hoja");
        for (const auto* valor : { "<v>1234567.1</v>", "<v>86419.7</v>", "<v>1320986.8</v>", "<v>32.0987</v>",
                 "Frío; &quot;Barranco&quot;", "% del total" })
            EXPECT_THAT(hoja, HasSubstr(valor));
        EXPECT_EQ(hoja.find("Total<"), hoja.rfind("Total<")); // a heading, and no row with the total
    }

    TEST(ResumenEnFichero, of_no_charges_there_are_no_rows)
    {
        const ResumenCargos nada({ VistaResumen::almacen, { dia("15/03/2026"), dia("20/11/2026") } }, {});
        EXPECT_EQ(escrito(resumen_en_csv, nada),
            "Código;Almacén;Cargos;Base;Impuesto;Total;% del total;Total un año antes;% de cambio\r\n");
        const auto json = Json::parse(escrito(resumen_en_json, nada));
        EXPECT_TRUE(json["grupos"].is_array());
        EXPECT_TRUE(json["grupos"].empty());
        EXPECT_EQ(json["total"]["total"], 0);
    }

}
}
