#include "editor/BorradorDelEditor.hpp"

#include "context/modComun.hpp"
#include "tests/support/BorradoresDePrueba.hpp"
#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using namespace pruebas;
    using testing::ElementsAre;
    using testing::IsEmpty;

    class BorradorDelEditor_ : public testing::Test {
    protected:
        Contexto contexto;
        std::shared_ptr<BorradoresDePrueba> host = std::make_shared<BorradoresDePrueba>();
        BorradorDelEditor borrador;

        BorradorDelEditor_() { modComun::set_Borradores(host); }

        static Borrador con_una_linea()
        {
            Borrador uno;
            uno.Proveedor = 106;
            uno.Lineas.emplace_back().Unidades = moneda("12.485");
            return uno;
        }
    };

    TEST_F(BorradorDelEditor_, only_what_a_person_would_miss_is_kept)
    {
        borrador.Empezar({});
        Borrador cabecera;
        cabecera.Proveedor = 106;
        EXPECT_EQ(borrador.Guardar(cabecera), "");
        EXPECT_THAT(host->sucesos, ElementsAre("abre"));
        cabecera.HayEnCurso = true;
        EXPECT_EQ(borrador.Guardar(cabecera), "");
        EXPECT_TRUE(host->ultimo == cabecera);
    }

    TEST_F(BorradorDelEditor_, the_same_is_not_written_twice_and_nothing_left_is_taken_away)
    {
        borrador.Empezar({});
        EXPECT_EQ(borrador.Guardar(con_una_linea()), "");
        EXPECT_EQ(borrador.Guardar(con_una_linea()), "");
        EXPECT_THAT(host->sucesos, ElementsAre("abre", "guarda"));
        EXPECT_EQ(borrador.Guardar({}), ""); // the last line was removed
        borrador.Quitar();
        EXPECT_THAT(host->sucesos, ElementsAre("abre", "guarda", "quita"));
        EXPECT_EQ(borrador.Guardar(con_una_linea()), ""); // the next charge of the same window
        borrador.Dejar();
        EXPECT_THAT(host->sucesos, ElementsAre("abre", "guarda", "quita", "guarda", "deja"));
        EXPECT_TRUE(host->ultimo == con_una_linea());
    }

    TEST_F(BorradorDelEditor_, a_stored_charge_is_kept_from_its_first_change_on)
    {
        auto abierto = con_una_linea();
        abierto.Codigo = "AT260018";
        borrador.Empezar(abierto);
        EXPECT_EQ(borrador.Guardar(abierto), "");
        EXPECT_FALSE(host->ultimo.has_value());
        auto cambiado = abierto;
        cambiado.Lineas.clear();
        EXPECT_EQ(borrador.Guardar(cambiado), "");
        EXPECT_TRUE(host->ultimo == cambiado); // also without lines
        EXPECT_EQ(borrador.Guardar(abierto), ""); // changed back
        EXPECT_FALSE(host->ultimo.has_value());
    }

    TEST_F(BorradorDelEditor_, why_it_cannot_be_kept_is_told_until_it_can)
    {
        borrador.Empezar({});
        host->falla = "no queda sitio";
        EXPECT_EQ(borrador.Guardar(con_una_linea()), "no queda sitio");
        EXPECT_EQ(borrador.Guardar(con_una_linea()), "no queda sitio");
        host->falla.clear();
        EXPECT_EQ(borrador.Guardar(con_una_linea()), "");
        EXPECT_TRUE(host->ultimo == con_una_linea());
    }

    TEST_F(BorradorDelEditor_, without_a_host_that_keeps_drafts_nothing_happens)
    {
        modComun::set_Borradores(nullptr);
        borrador.Empezar({});
        EXPECT_EQ(borrador.Guardar(con_una_linea()), "");
        borrador.Quitar();
        borrador.Dejar();
        EXPECT_THAT(host->sucesos, IsEmpty());
    }

    TEST_F(BorradorDelEditor_, a_line_is_kept_with_all_its_decimals_its_account_and_where_it_comes_from)
    {
        EdicionAtipico edicion;
        edicion.Nuevo_Atipico();
        const auto sin_cuenta = [](std::int32_t) { return std::string("759"); };
        edicion.Cargar_Linea({ 1003, "Vino", "", moneda("12.4851"), moneda("9.7512") }, 7, "75900010");
        edicion.Cargar_Linea({ 1004, "Malvasía", "x", moneda("1"), moneda("2") }, 8, "");
        edicion.Cargar_Linea({ 1005, "Aceite", "", moneda("3"), moneda("4") }, 9, "");
        edicion.Eliminar_Linea(2);
        edicion.Comentar_Linea(2, "CAJA 4");
        edicion.Aceptar_Linea({ 1006, "Atún", "lata", moneda("2"), moneda("5") }, sin_cuenta);
        edicion.Modificar_Linea(3);
        edicion.Aceptar_Linea({ 1010, "Queso", "lata", moneda("2.125"), moneda("5") }, sin_cuenta);
        edicion.Modificar_Linea(1);

        Borrador hecho;
        rellena(hecho, edicion);
        const std::vector<LineaBorrador> debidas{ { 1003, "Vino", "", moneda("12.4851"), moneda("9.7512"),
                                                      1003, 1, true },
            { 1005, "Aceite", "CAJA 4", moneda("3"), moneda("4"), 1005, 3, false },
            { 1010, "Queso", "lata", moneda("2.125"), moneda("5"), 1006, 0, false } };
        EXPECT_TRUE(hecho.Lineas == debidas);
        EXPECT_EQ(hecho.Total, edicion.Total());
        EXPECT_EQ(hecho.FilaEnCambio, 1);
    }

}
}
