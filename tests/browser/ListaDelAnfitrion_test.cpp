// The list and the lines of a charge from a host whose rows go forward only, give each value once, and leave
// out what they have not.
#include "browser/DetalleAtipico.hpp"
#include "browser/ListaAtipicos.hpp"
#include "engines/ado/Connection.hpp"
#include "tests/support/ConexionAjena.hpp"
#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using automation::Fecha;
    using automation::Moneda;
    using automation::Valor;
    using pruebas::valor_decimal;
    using testing::ElementsAre;

    struct DelAnfitrion : testing::Test {
        pruebas::Contexto contexto;
        pruebas::ConexionAjena ajena;

        DelAnfitrion() { modComun::set_ConexionOrvalin(std::make_shared<ado::Connection>(ajena.objeto())); }
    };

    TEST_F(DelAnfitrion, the_list_reads_null_empty_decimals_and_dates_with_a_time)
    {
        ajena.estado->campos = { "Codigo", "Cod_Almacen", "Nombre_Almacen", "Proveedor", "Nombre_Proveedor",
            "Fecha", "Importe", "Impuesto_Importe", "Impuesto", "Asiento", "Usuario", "Nombre_Usuario",
            "Observ" };
        ajena.estado->filas = {
            { "AT250034", std::int16_t{ 8 }, "Güímar", 40'077, "Ñandú", Fecha{ 45'691.75 },
                valor_decimal(false, 4, 12'345'000), valor_decimal(false, 6, 86'415'000), 6.5,
                valor_decimal(false, 0, 881), std::int16_t{ 12 }, "Begoña", "Palé" },
            { "AT250033", 3, Valor::nulo(), 40'078, Valor(), Fecha{ 45'690 }, Moneda{ -5'000 }, Valor::nulo(),
                Valor(), Valor::nulo(), Valor::nulo(), Valor(), Valor::nulo() },
        };
        std::vector<std::string> filas;
        Cargar_Atipicos({ "01/01/2025", "31/12/2025" },
            [&](const CargoListado& cargo) { anexa_fila(filas.emplace_back(), cargo); });
        EXPECT_THAT(filas,
            ElementsAre("AT250034\t8\tGüímar\t40077\tÑandú\t03/02/2025\t1.234,50\t86,42\t6,50 "
                        "%\t881\t12\tBegoña\tPalé",
                "AT250033\t3\t\t40078\t\t02/02/2025\t-0,50\t0,00\t0,00 %\t\t0\t\t"));
        EXPECT_EQ(ajena.estado->abiertas, 0);
    }

    TEST_F(DelAnfitrion, the_lines_read_null_empty_and_decimals)
    {
        ajena.estado->campos = { "Codigo", "Cod_Articulo", "Descripcion", "Unidades", "Precio", "Observ" };
        ajena.estado->filas = {
            { "AT250034", 2001, "Caja", valor_decimal(false, 3, 2'500), valor_decimal(false, 6, 1'250'000),
                "rota" },
            { "AT250034", std::int16_t{ 0 }, Valor::nulo(), Moneda{ 10'000 }, 0.25, Valor() },
        };
        std::vector<std::string> filas;
        Cargar_Detalles({ 2025, 8, "AT250034" },
            [&](const LineaDetalle& linea) { anexa_fila(filas.emplace_back(), linea, 4); });
        EXPECT_THAT(filas,
            ElementsAre(
                "AT250034\t2001\tCaja\t2,500\t1,2500\t3,13\trota", "AT250034\t0\t\t1,000\t0,2500\t0,25\t"));
        EXPECT_EQ(ajena.estado->abiertas, 0);
    }

    TEST_F(DelAnfitrion, a_connection_lost_in_the_middle_reaches_the_caller_and_leaves_nothing_open)
    {
        ajena.estado->campos = { "Codigo", "Cod_Articulo", "Descripcion", "Unidades", "Precio", "Observ" };
        ajena.estado->filas.assign(3, { "AT250034", 2001, "Caja", 1.0, 2.0, "" });
        int leidas = 0;
        EXPECT_THROW(Cargar_Detalles({ 2025, 8, "AT250034" },
                         [&](const LineaDetalle&) {
                             ++leidas;
                             ajena.estado->fallos.emplace("MoveNext",
                                 automation::Fallo(-2147467259, "Proveedor", "Se ha perdido la conexión."));
                         }),
            adodb::ErrorBaseDatos);
        EXPECT_EQ(leidas, 1);
        EXPECT_EQ(ajena.estado->abiertas, 0);
    }

}
}
