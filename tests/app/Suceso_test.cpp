#include "host/comprobacion/Suceso.hpp"

#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos::app {
namespace {

    using Que = Suceso::Que;
    using testing::ElementsAre;
    using testing::IsEmpty;

    Suceso suceso(Que que, std::int32_t linea, const char* valor, int segundo = 3, const char* login = "ana")
    {
        Suceso uno;
        uno.que = que;
        uno.momento = pruebas::dia_y_hora("10/02/2026", 9, 5, segundo);
        uno.linea = linea;
        uno.usuario = que == Que::alta ? "2" : "";
        uno.login = login;
        uno.puesto = "caja atipicos";
        if (que == Que::baja)
            uno.antes = FilaLeida{ { "Precio", valor } };
        else
            uno.despues = FilaLeida{ { "Precio", valor } };
        return uno;
    }

    std::string texto(const Suceso& uno)
    {
        const auto precio
            = [](const std::optional<FilaLeida>& fila) { return fila ? fila->at("Precio") : "-"; };
        const char* que = uno.que == Que::alta ? "alta" : uno.que == Que::baja ? "baja" : "cambio";
        return std::string(que) + ' ' + std::to_string(uno.linea) + ' ' + precio(uno.antes) + ' '
            + precio(uno.despues) + ' ' + uno.usuario;
    }

    std::vector<std::string> textos(const std::vector<Suceso>& sucesos)
    {
        std::vector<std::string> todos;
        for (const auto& uno : sin_reescritos(sucesos))
            todos.push_back(texto(uno));
        return todos;
    }

    TEST(Suceso, what_a_save_deletes_and_writes_again_is_changed_or_nothing)
    {
        EXPECT_THAT(textos({ suceso(Que::baja, 1, "7"), suceso(Que::baja, 2, "8"), suceso(Que::baja, 3, "9"),
                        suceso(Que::baja, 0, "24"), suceso(Que::alta, 0, "24", 5), suceso(Que::alta, 1, "7"),
                        suceso(Que::alta, 2, "8,5") }),
            ElementsAre("baja 3 9 - ", "cambio 0 24 24 2", "cambio 2 8 8,5 2"))
            << "a line that is not written again is deleted; a header always has another hour";
    }

    TEST(Suceso, what_comes_back_later_or_by_another_hand_is_no_change)
    {
        EXPECT_THAT(textos({ suceso(Que::baja, 1, "7"), suceso(Que::alta, 1, "7", 6) }),
            ElementsAre("baja 1 7 - ", "alta 1 - 7 2"));
        EXPECT_THAT(textos({ suceso(Que::baja, 1, "7"), suceso(Que::alta, 1, "8", 3, "eva") }),
            ElementsAre("baja 1 7 - ", "alta 1 - 8 2"));
        auto de_otro_puesto = suceso(Que::alta, 1, "8");
        de_otro_puesto.puesto = "oficina atipicos";
        EXPECT_THAT(textos({ suceso(Que::baja, 1, "7"), de_otro_puesto }),
            ElementsAre("baja 1 7 - ", "alta 1 - 8 2"));
    }

    TEST(Suceso, saves_one_behind_the_other_are_each_told)
    {
        EXPECT_THAT(textos({ suceso(Que::alta, 1, "7"), suceso(Que::baja, 1, "7"), suceso(Que::alta, 1, "8"),
                        suceso(Que::baja, 1, "8"), suceso(Que::alta, 1, "9"), suceso(Que::baja, 1, "9") }),
            ElementsAre("alta 1 - 7 2", "cambio 1 7 8 2", "cambio 1 8 9 2", "baja 1 9 - "));
        EXPECT_THAT(textos({}), IsEmpty());
    }

}
}
