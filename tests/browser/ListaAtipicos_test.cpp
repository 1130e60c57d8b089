#include "browser/ListaAtipicos.hpp"

#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using pruebas::dia;
    using pruebas::dia_y_hora;
    using pruebas::moneda;
    using testing::ElementsAre;

    const std::string comienzo
        = "SELECT pc.* , ISNULL(prov.Nombre ,'') as Nombre_Proveedor , ISNULL(alm.Nombre ,'') as "
          "Nombre_Almacen,  "
          "ISNULL(usu.Nombre, '') AS Nombre_Usuario FROM Proveedores_Cargos_Atipicos pc LEFT JOIN Almacenes "
          "alm ON "
          "alm.Cod_Empresa = pc.Cod_Empresa AND alm.Codigo = pc.Cod_Almacen LEFT JOIN Proveedores prov ON "
          "prov.Cod_Empresa =2 AND prov.Codigo = pc.Proveedor LEFT JOIN SGD_Usuarios usu ON usu.Codigo = "
          "pc.Usuario "
          "WHERE pc.Cod_Empresa =1";
    const std::string final = " AND pc.Fecha BETWEEN '01/01/2026' AND '31/12/2026' ORDER BY pc.Fecha DESC, "
                              "pc.Cod_Almacen ASC, pc.Codigo DESC";

    TEST(ListaAtipicos, statement_for_all_four_combinations_of_filters)
    {
        FiltroAtipicos filtro{ "01/01/2026", "31/12/2026" };
        EXPECT_EQ(instruccion_lista(filtro, 1, 2), comienzo + final);
        filtro.Almacen = 3;
        EXPECT_EQ(instruccion_lista(filtro, 1, 2), comienzo + " AND pc.Cod_Almacen =3" + final);
        filtro.Proveedor = 40012;
        EXPECT_EQ(instruccion_lista(filtro, 1, 2),
            comienzo + " AND pc.Cod_Almacen =3 AND pc.Proveedor =40012" + final);
        filtro.Almacen = 0;
        EXPECT_EQ(instruccion_lista(filtro, 1, 2), comienzo + " AND pc.Proveedor =40012" + final);
    }

    TEST(ListaAtipicos, code_1_is_a_filter)
    {
        EXPECT_EQ(instruccion_lista({ "01/01/2026", "31/12/2026", 1, 1 }, 1, 2),
            comienzo + " AND pc.Cod_Almacen =1 AND pc.Proveedor =1" + final);
    }

    TEST(ListaAtipicos, codes_below_1_mean_no_filter)
    {
        EXPECT_EQ(instruccion_lista({ "01/01/2026", "31/12/2026", -1, -40012 }, 1, 2), comienzo + final);
    }

    CargoListado un_cargo()
    {
        return { "AT260017", 3, "Almacén Güímar", 40012, "Ñandú e Hijos, S.L.",
            dia_y_hora("21/11/2026", 9, 5, 3), moneda("1234.5"), moneda("86.42"), moneda("7"), 881, 12,
            "Begoña", "Palé dañado" };
    }

    TEST(ListaAtipicos, a_row_has_thirteen_cells_in_order)
    {
        std::string fila;
        anexa_fila(fila, un_cargo());
        EXPECT_EQ(fila,
            "AT260017\t3\tAlmacén Güímar\t40012\tÑandú e Hijos, "
            "S.L.\t21/11/2026\t1.234,50\t86,42\t7,00 %\t881\t12\tBegoña\tPalé dañado");
    }

    TEST(ListaAtipicos, no_entry_no_tax_and_vanished_names_give_empty_cells_and_zeros)
    {
        CargoListado cargo = un_cargo();
        cargo.Asiento = -1;
        cargo.Impuesto_Importe = cargo.Impuesto = Currency();
        cargo.Nombre_Almacen = cargo.Nombre_Proveedor = cargo.Nombre_Usuario = cargo.Observ = "";
        std::string fila;
        anexa_fila(fila, cargo);
        EXPECT_EQ(fila, "AT260017\t3\t\t40012\t\t21/11/2026\t1.234,50\t0,00\t0,00 %\t\t12\t\t");
        cargo.Asiento = 0;
        std::string otra;
        anexa_fila(otra, cargo);
        EXPECT_EQ(otra, fila);
    }

    TEST(ListaAtipicos, a_tab_in_a_text_becomes_a_blank_and_a_line_break_stays)
    {
        CargoListado cargo = un_cargo();
        cargo.Observ = "uno\tdos\r\ntres";
        std::string fila;
        anexa_fila(fila, cargo);
        EXPECT_THAT(fila, testing::EndsWith("\tuno dos\r\ntres"));
        EXPECT_EQ(std::count(fila.begin(), fila.end(), '\t'), 12);
    }

    TEST(ListaAtipicos, reads_rows_with_nulls_through_a_forward_only_cursor)
    {
        const pruebas::Contexto contexto;
        contexto.empresa->empresa_proveedores = 2;
        const Variant nulo{ Nulo{} };
        contexto.gestion->responde("SELECT pc.*",
            { { "Codigo", "Cod_Almacen", "Nombre_Almacen", "Proveedor", "Nombre_Proveedor", "Fecha",
                  "Importe", "Impuesto_Importe", "Impuesto", "Asiento", "Usuario", "Nombre_Usuario",
                  "Observ" },
                { { "AT1", 3, "A", 4, "P", dia("21/11/2026"), moneda("1"), moneda("2"), moneda("3"), 5, 6,
                      "U", "O" },
                    { "AT2", nulo, nulo, nulo, nulo, nulo, nulo, nulo, nulo, nulo, nulo, nulo, nulo } } });
        std::vector<std::string> filas;
        Cargar_Atipicos({ "01/01/2026", "31/12/2026" },
            [&](const CargoListado& cargo) { anexa_fila(filas.emplace_back(), cargo); });
        EXPECT_THAT(filas,
            ElementsAre("AT1\t3\tA\t4\tP\t21/11/2026\t1,00\t2,00\t3,00 %\t5\t6\tU\tO",
                "AT2\t0\t\t0\t\t30/12/1899\t0,00\t0,00\t0,00 %\t\t0\t\t"));
        EXPECT_THAT(contexto.gestion->dichas,
            ElementsAre("OPEN forward-only read-only " + comienzo + final, "CLOSE"));
    }

}
}
