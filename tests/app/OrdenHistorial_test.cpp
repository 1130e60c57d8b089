// What `historial` tells of a charge that several people have had in their hands.
#include "tests/app/Programa.hpp"
#include "tests/support/ServidorPostgresql.hpp"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <array>
#include <memory>
#include <regex>

namespace atipicos {
namespace {

    using testing::ElementsAre;
    using testing::HasSubstr;

    struct OrdenHistorial : testing::Test {
        pruebas::Programa programa;

        static constexpr auto dos_lineas
            = "referencia;almacen;proveedor;fecha;observaciones;franquiciado;articulo;descripcion;unidades;"
              "costo;"
              "observaciones_linea\nR9;4;106;10/02/2026;Piezas rajadas;;1010;Queso con grietas;12,485;9,75;\n"
              "R9;4;106;10/02/2026;Piezas rajadas;;1010;Queso pequeño;8,915;1,15;Segunda\n";
        static constexpr auto cual = " AT260001 --ejercicio 2026 --almacen 4 ";

        void SetUp() override
        {
            programa.escribe("r.csv", dos_lineas);
            ASSERT_EQ(programa("crear").estado, 0);
        }

        /// Of each event: what, of which part, and what it says.
        static std::vector<std::string> en_breve(const std::string& texto)
        {
            std::vector<std::string> todos;
            for (const auto& uno : nlohmann::json::parse(texto)) {
                auto breve = uno["accion"].get<std::string>();
                if (uno.contains("linea"))
                    breve += " " + std::to_string(uno["linea"].get<int>());
                for (const auto* fila : { "antes", "despues" })
                    if (uno.contains(fila) && !uno[fila].is_null())
                        breve += std::string(" ") + fila + " "
                            + uno[fila].value(uno["linea"] == 0 ? "Importe" : "Precio", "?");
                if (uno.contains("asiento"))
                    breve += " " + uno["asiento"].get<std::string>();
                todos.push_back(breve);
            }
            return todos;
        }
    };

    /// What the first events left behind, each value of it.
    nlohmann::json dejado(const std::string& texto)
    {
        auto todo = nlohmann::json::array();
        const auto sucesos = nlohmann::json::parse(texto);
        for (std::size_t i = 0; i < 3; ++i)
            todo.push_back(sucesos.at(i).at("despues"));
        return todo;
    }

    constexpr std::array de_una_vida{ "alta 0 despues 131,98", "alta 1 despues 9,75", "alta 2 despues 1,15",
        "cambio 2 antes 1,15 despues 1,25", "cambio 0 antes 131,98 despues 133", "baja 1 antes 9,75",
        "baja 2 antes 1,25", "baja 0 antes 133", "anulación 2/2026/1, con el 2/2027/1" };
    constexpr std::array cambios{
        "UPDATE Proveedores_Cargos_Atipicos_Lineas SET Precio = 1.25 WHERE Num_Linea = 2",
        "UPDATE Proveedores_Cargos_Atipicos SET Importe = 133"
    };

    TEST_F(OrdenHistorial, tells_a_charge_from_its_beginning_to_its_end_with_what_it_was_and_what_it_became)
    {
        ASSERT_EQ(programa("registrar r.csv").estado, 0);
        const auto primera = programa("historial" + std::string(cual) + "--formato json");
        EXPECT_THAT(en_breve(primera.salida), ElementsAre(de_una_vida[0], de_una_vida[1], de_una_vida[2]));
        for (const auto* uno : cambios)
            ASSERT_EQ(std::system(
                          ("sqlite3 '" + (programa.carpeta / "datos/empresa.db").string() + "' '" + uno + "'")
                              .c_str()),
                0);
        const auto cambiado = programa("historial" + std::string(cual)).salida;
        EXPECT_THAT(cambiado, HasSubstr("otro programa")) << "whose user nobody knows";
        EXPECT_THAT(cambiado, HasSubstr("  Precio 1,15 → 1,25\n"));
        EXPECT_THAT(cambiado, HasSubstr("  Importe 131,98 → 133\n"));
        ASSERT_EQ(programa("eliminar" + std::string(cual) + "--si").estado, 0);
        ASSERT_EQ(programa("regularizar --si --fecha 15/01/2027").estado, 0);
        const auto ultima = programa("historial" + std::string(cual) + "--formato json");
        EXPECT_THAT(en_breve(ultima.salida), testing::ElementsAreArray(de_una_vida));
        EXPECT_EQ(ultima.errores, "");
        EXPECT_EQ(dejado(ultima.salida), dejado(primera.salida)) << "as it was read where it stood";
        EXPECT_THAT(programa("historial" + std::string(cual)).salida, HasSubstr("anulación  asiento"));
    }

    TEST_F(OrdenHistorial, of_a_charge_that_never_was_says_that_and_of_one_from_before_too)
    {
        const auto nunca = programa("historial AT260099 --ejercicio 2026 --almacen 4");
        EXPECT_EQ(nunca.estado, 1);
        EXPECT_EQ(
            nunca.errores, "atipicos: No existe el cargo AT260099 del ejercicio 2026 en el almacén 4.\n");
        ASSERT_EQ(programa("registrar r.csv").estado, 0);
        const auto base = (programa.carpeta / "datos/empresa.db").string();
        ASSERT_EQ(
            std::system(
                ("sqlite3 '" + base + "' 'DROP TRIGGER Historial_Entero; DELETE FROM Historial'").c_str()),
            0);
        EXPECT_EQ(programa("historial" + std::string(cual)).salida,
            "El cargo AT260001 está como estaba cuando se empezó a llevar el historial.\n");
    }

    TEST_F(OrdenHistorial, on_a_server_names_who_did_what_and_is_for_those_who_may_read_it)
    {
        if (const auto falta = pruebas::ServidorPostgresql::falta(); !falta.empty())
            GTEST_SKIP() << falta;
        const pruebas::ServidorPostgresql servidor;
        servidor.crea_base("empresa");
        const auto como = [&](const char* quien) {
            return " --conexion '" + servidor.direccion("empresa", quien) + "' ";
        };
        ASSERT_EQ(programa("crear" + como("atipicos")).estado, 0);
        std::string dicho;
        ASSERT_EQ(servidor.guion(
                      "empresa", ATIPICOS_FUENTES "/host/sql/permisos_postgresql.sql", "atipicos", dicho),
            0)
            << dicho;
        servidor.psql("empresa",
            "CREATE ROLE begona LOGIN IN ROLE atipicos_puesto; CREATE ROLE juan LOGIN IN ROLE "
            "atipicos_puesto;"
            "CREATE ROLE auditora LOGIN IN ROLE atipicos_historial");
        for (const std::string quien : { "begona 1", "juan 2" })
            ASSERT_EQ(programa("accesos " + quien + como("atipicos")).estado, 0);
        ASSERT_EQ(programa("registrar r.csv" + como("begona")).estado, 0);
        const auto primero = programa("historial" + std::string(cual) + "--formato json" + como("auditora"));
        for (const std::string uno : cambios)
            servidor.psql("empresa", "SET ROLE juan; SET search_path TO orvalin; " + uno);
        ASSERT_EQ(programa("eliminar" + std::string(cual) + "--si" + como("juan")).estado, 0);
        ASSERT_EQ(programa("regularizar --si --fecha 15/01/2027" + como("begona")).estado, 0);
        const auto suyo = programa("historial" + std::string(cual) + "--formato json" + como("auditora"));
        EXPECT_THAT(en_breve(suyo.salida), testing::ElementsAreArray(de_una_vida)) << suyo.errores;
        EXPECT_EQ(dejado(suyo.salida), dejado(primero.salida)) << "as it was read where it stood";
        std::string logins;
        for (const auto& uno : nlohmann::json::parse(suyo.salida)) {
            logins += uno["login"].get<std::string>() + " ";
            EXPECT_EQ(uno["puesto"], uno["login"] == "atipicos" ? "local psql" : "local atipicos");
        }
        EXPECT_EQ(logins, "begona begona begona atipicos atipicos juan juan juan begona ")
            << "who logged in, whatever he made of himself afterwards";
        const auto negado = programa("historial" + std::string(cual) + como("begona"));
        EXPECT_EQ(negado.estado, 1);
        EXPECT_EQ(negado.salida, "");
        EXPECT_THAT(negado.errores, testing::StartsWith("atipicos: El usuario no tiene permiso ("));
    }

}
}
