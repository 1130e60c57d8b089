#include "host/ordenes/FormatosDeLista.hpp"

#include "host/terminal/Tabla.hpp"
#include "tests/browser/CatorceColumnas.hpp"
#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <sstream>

namespace atipicos::app {
namespace {

    using Json = nlohmann::ordered_json;
    using testing::EndsWith;
    using testing::HasSubstr;
    using testing::StartsWith;

    CargoListado cargo(int numero)
    {
        return { "AT" + std::to_string(250000 + numero), 3, "Almacén Güímar", 40012,
            "Ñandú \"e\" Hijos\t\x1b[31m", pruebas::dia("03/02/2025"), pruebas::moneda("1234.5"),
            pruebas::moneda("86.42"), pruebas::moneda("7"), numero, 12, "Begoña", "roto: \xff\r\nfin" };
    }

    OrigenLista de(std::vector<CargoListado> cargos)
    {
        return [cargos = std::move(cargos)](const CadaCargo& cada) {
            for (const auto& uno : cargos)
                cada(uno);
        };
    }

    std::string como(
        auto formato, std::vector<CargoListado> cargos, ColumnasLista columnas = columnas_lista())
    {
        std::ostringstream salida;
        formato(salida, de(std::move(cargos)), columnas);
        return salida.str();
    }

    std::vector<std::string> renglones(const std::string& texto)
    {
        std::istringstream flujo(texto);
        std::vector<std::string> todas;
        for (std::string una; std::getline(flujo, una);)
            todas.push_back(una);
        return todas;
    }

    /// What the library makes of the whole array at once.
    std::string array_entero(const std::vector<CargoListado>& cargos)
    {
        auto todos = Json::array();
        for (const auto& uno : cargos) {
            Json json;
            json["codigo"] = uno.Codigo;
            json["almacen"] = uno.Cod_Almacen;
            json["nombre_almacen"] = uno.Nombre_Almacen;
            json["proveedor"] = uno.Proveedor;
            json["nombre_proveedor"] = uno.Nombre_Proveedor;
            json["fecha"] = "2025-02-03";
            json["importe"] = uno.Importe.a_double();
            json["impuesto"] = uno.Impuesto_Importe.a_double();
            json["porcentaje_impuesto"] = uno.Impuesto.a_double();
            json["asiento"] = uno.Asiento > 0 ? Json(uno.Asiento) : Json();
            json["usuario"] = uno.Usuario;
            json["nombre_usuario"] = uno.Nombre_Usuario;
            json["observaciones"] = uno.Observ;
            todos.push_back(std::move(json));
        }
        return todos.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
    }

    TEST(FormatosDeLista, json_written_charge_by_charge_is_the_json_of_all_of_them)
    {
        for (const auto& cargos :
            std::vector<std::vector<CargoListado>>{ {}, { cargo(0) }, { cargo(1), cargo(-2), cargo(3) } })
            EXPECT_EQ(como(lista_en_json, cargos), array_entero(cargos));
    }

    TEST(FormatosDeLista, a_table_has_its_totals_below)
    {
        const auto tabla = como(lista_en_tabla, { cargo(881), cargo(0) });
        const auto filas = renglones(tabla);
        ASSERT_EQ(filas.size(), 5U);
        EXPECT_THAT(filas[0], StartsWith("Código    Almacén  Nombre del almacén"));
        EXPECT_THAT(filas[2], HasSubstr("03/02/2025  1.234,50     86,42      7,00 %      881"));
        EXPECT_THAT(filas[3], HasSubstr("03/02/2025  1.234,50     86,42      7,00 %           "));
        EXPECT_EQ(filas[4], "2 cargos, importe 2.469,00, impuesto 172,84");
        EXPECT_EQ(tabla.find('\x1b'), std::string::npos);
    }

    TEST(FormatosDeLista, a_table_of_no_charge_is_nothing) { EXPECT_EQ(como(lista_en_tabla, {}), ""); }

    TEST(FormatosDeLista, a_long_table_is_aligned_block_by_block_and_never_narrower)
    {
        std::vector<CargoListado> cargos(filas_por_bloque + 2, cargo(5));
        cargos[filas_por_bloque].Nombre_Almacen = "Un almacén con un nombre bien largo";
        const auto filas = renglones(como(lista_en_tabla, cargos));
        ASSERT_EQ(filas.size(), cargos.size() + 3);
        const auto lugar = [&](std::size_t fila) {
            return ancho(std::string_view(filas[fila]).substr(0, filas[fila].find("Ñandú")));
        };
        const auto segundo = 2 + filas_por_bloque;
        EXPECT_EQ(lugar(2), lugar(segundo - 1));
        EXPECT_GT(lugar(segundo), lugar(2));
        EXPECT_EQ(lugar(segundo + 1), lugar(segundo));
        EXPECT_EQ(filas[segundo + 2], "1002 cargos, importe 1.236.969,00, impuesto 86.592,84");
    }

    TEST(FormatosDeLista, nothing_is_held_back_of_a_long_list)
    {
        std::ostringstream salida;
        std::size_t antes = 0;
        lista_en_tabla(salida, [&](const CadaCargo& cada) {
            for (std::size_t i = 0; i < 3 * filas_por_bloque; ++i) {
                cada(cargo(7));
                if ((i + 1) % filas_por_bloque == 0) {
                    EXPECT_GT(salida.str().size(), antes) << i;
                    antes = salida.str().size();
                }
            }
        });
        std::ostringstream json;
        lista_en_json(json, [&](const CadaCargo& cada) {
            cada(cargo(7));
            EXPECT_THAT(json.str(), EndsWith("}"));
        });
    }

    TEST(FormatosDeLista, a_fourteenth_column_is_in_both)
    {
        const auto catorce = pruebas::catorce_columnas();
        auto uno = cargo(9);
        uno.otros = { std::int32_t{ 41 } };
        EXPECT_THAT(
            como(lista_en_json, { uno }, catorce), EndsWith("\",\n    \"empresa_contable\": 41\n  }\n]\n"));
        const auto filas = renglones(como(lista_en_tabla, { uno }, catorce));
        EXPECT_THAT(filas[0], EndsWith("  Empresa contable"));
        EXPECT_THAT(filas[2], EndsWith("  41"));
    }

    TEST(FormatosDeLista, another_column_that_is_summed_is_in_the_totals)
    {
        auto columnas = pruebas::catorce_columnas();
        columnas.back()
            = { "Portes", TipoColumna::importe, OtroDato{ 0 }, "Portes", "Portes", "portes", 900, 0, true };
        auto uno = cargo(9);
        uno.otros = { pruebas::moneda("4.25") };
        EXPECT_THAT(
            como(lista_en_tabla, { uno, uno }, columnas), EndsWith(", impuesto 172,84, portes 8,50\n"));
    }

}
}
