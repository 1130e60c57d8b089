#include "engines/postgresql/Apertura.hpp"

#include <gmock/gmock.h>

namespace atipicos::postgresql {
namespace {

    using testing::ElementsAre;

    std::vector<std::string> de_cada_uno(const Parametros& parametros, const std::string& cual)
    {
        std::vector<std::string> valores;
        for (const auto& uno : servidores(parametros))
            valores.push_back(uno.contains(cual) ? uno.at(cual) : "-");
        return valores;
    }

    TEST(Apertura, each_server_of_an_address_is_tried_alone_with_its_own_port)
    {
        const Parametros tres{ { "host", "uno,/dos,tres" }, { "port", "5433,5434,5435" }, { "dbname", "x" } };
        EXPECT_THAT(de_cada_uno(tres, "host"), ElementsAre("uno", "/dos", "tres"));
        EXPECT_THAT(de_cada_uno(tres, "port"), ElementsAre("5433", "5434", "5435"));
        EXPECT_THAT(de_cada_uno(tres, "dbname"), ElementsAre("x", "x", "x"));
    }

    TEST(Apertura, one_port_is_that_of_all_and_an_address_without_servers_is_one)
    {
        EXPECT_THAT(de_cada_uno({ { "hostaddr", "10.0.0.1,10.0.0.2" }, { "port", "5433" } }, "port"),
            ElementsAre("5433", "5433"));
        EXPECT_THAT(de_cada_uno({ { "host", "uno" } }, "port"), ElementsAre("-"));
        EXPECT_THAT(de_cada_uno({ { "dbname", "x" } }, "dbname"), ElementsAre("x"));
    }

    TEST(Apertura, who_prefers_a_standby_is_given_any_server_only_when_none_is_one)
    {
        const Parametros dos{ { "host", "uno,dos" }, { "target_session_attrs", "prefer-standby" } };
        EXPECT_THAT(de_cada_uno(dos, "host"), ElementsAre("uno", "dos", "uno", "dos"));
        EXPECT_THAT(
            de_cada_uno(dos, "target_session_attrs"), ElementsAre("standby", "standby", "any", "any"));
    }

}
}
