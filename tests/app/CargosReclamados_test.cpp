#include "host/reclamaciones/CargosReclamados.hpp"

#include "charges/clsAtipico.hpp"
#include "editor/GuardarAtipico.hpp"
#include "tests/host/BasesDeMuestra.hpp"
#include "tests/support/ConexionEspia.hpp"

namespace atipicos::app {
namespace {

    struct CargosReclamadosDeMuestra : pruebas::BasesDeMuestra {
        std::shared_ptr<pruebas::Parte> parte = std::make_shared<pruebas::Parte>();
        orvalin::Catalogos catalogos{
            std::make_shared<pruebas::ConexionEspia>("gestion", bases.orvalin, parte), 1
        };
        CargosReclamados cargos{ catalogos };
        clsAtipico cargo;
        CargoTecleado tecleado;

        static Reclamacion reclamacion()
        {
            Reclamacion una;
            una.referencia = "R7";
            una.fila = 5;
            una.almacen = 3;
            una.proveedor = 106;
            una.fecha = Date::de_texto("10/02/2026").value();
            una.observaciones = "Piezas rajadas";
            una.franquiciado = true;
            una.lineas = { { 5, 1010, "", Currency::de_entero(2), Currency::de_texto("9.75"), "lote" },
                { 6, 0, "Portes", Currency::de_entero(1), Currency::de_texto("-4.5"), "" } };
            return una;
        }

        std::vector<std::string> errores(const Reclamacion& una) const
        {
            std::vector<std::string> todos;
            for (const auto& error : una.errores)
                todos.push_back(std::to_string(error.fila) + " " + error.columna + ": " + error.motivo);
            return todos;
        }
    };

    TEST_F(CargosReclamadosDeMuestra, have_what_the_claim_and_the_catalogues_say)
    {
        auto una = reclamacion();
        cargos.prepara(una, cargo, tecleado);
        EXPECT_TRUE(una.valida);
        EXPECT_EQ(tecleado.Almacen, 3);
        EXPECT_EQ(tecleado.Proveedor, 106);
        EXPECT_EQ(tecleado.NombreProveedor, "Quesería Majorera Tiscamanita");
        EXPECT_EQ(tecleado.Fecha, una.fecha);
        EXPECT_EQ(tecleado.Observaciones, "Piezas rajadas");
        EXPECT_TRUE(tecleado.Franquiciado);
        EXPECT_EQ(tecleado.Total, Currency::de_entero(15));
        ASSERT_EQ(tecleado.Cargos.size(), 2U);
        EXPECT_EQ(tecleado.Cargos[0].Cuenta, catalogos.articulo(1010).value().CtaIngresosAtipicos);
        EXPECT_EQ(tecleado.Cargos[1].Importe, Currency::de_texto("-4.5"));
        EXPECT_EQ(cargo.Lineas->Item(1)->Descripcion, catalogos.articulo(1010).value().Nombre);
        EXPECT_EQ(cargo.Lineas->Item(1)->Observaciones, "lote");
        EXPECT_EQ(cargo.Lineas->Item(2)->Descripcion, "Portes");
        EXPECT_EQ(cargo.Lineas->Item(2)->Cod_Articulo, 0);
    }

    TEST_F(CargosReclamadosDeMuestra, ask_once_for_each_code)
    {
        for (int i = 0; i < 3; ++i) {
            clsAtipico otro;
            auto una = reclamacion();
            cargos.prepara(una, otro, tecleado);
            EXPECT_EQ(tecleado.NombreProveedor, "Quesería Majorera Tiscamanita");
        }
        EXPECT_EQ(parte->dichas.size(), 3U);
        auto una = reclamacion();
        una.proveedor = 101;
        cargos.prepara(una, cargo, tecleado);
        EXPECT_EQ(parte->dichas.size(), 4U);
    }

    TEST_F(CargosReclamadosDeMuestra, of_codes_that_there_are_not_or_amounts_too_large_are_invalid_and_say_so)
    {
        auto una = reclamacion();
        una.almacen = 9;
        una.proveedor = 999;
        una.lineas[0].articulo = 7777;
        una.lineas[1].unidades = una.lineas[1].costo = Currency::de_entero(900'000'000);
        cargos.prepara(una, cargo, tecleado);
        EXPECT_FALSE(una.valida);
        EXPECT_THAT(errores(una),
            testing::ElementsAre("5 almacen: no existe el almacén 9.",
                "5 proveedor: no existe el proveedor 999.", "5 articulo: no existe el artículo 7777.",
                "6 costo: unidades por costo no cabe en un importe."));
    }

    TEST_F(CargosReclamadosDeMuestra, find_a_code_that_has_come_since_it_was_asked_for)
    {
        auto antes = reclamacion();
        antes.almacen = 9;
        cargos.prepara(antes, cargo, tecleado);
        EXPECT_FALSE(antes.valida);
        bases.orvalin->Execute("INSERT INTO Almacenes (Cod_Empresa, Codigo, Nombre, EmpContable, "
                               "CtaIngresosAtipicos) VALUES (1, 9, 'Nuevo', 1, '')");
        auto despues = reclamacion();
        despues.almacen = 9;
        clsAtipico otro;
        cargos.prepara(despues, otro, tecleado);
        EXPECT_TRUE(despues.valida);
    }

}
}
