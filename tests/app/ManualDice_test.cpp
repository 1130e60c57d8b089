// The commands and options that the manual names are those of the program, and all of them.
#include "host/ordenes/Argumentos.hpp"
#include "host/ordenes/TablaDeOrdenes.hpp"
#include "tests/app/ManualEscrito.hpp"
#include "tests/app/Programa.hpp"

#include <CLI/CLI.hpp>
#include <gmock/gmock.h>

#include <filesystem>
#include <regex>
#include <set>

namespace atipicos {
namespace {

    namespace fs = std::filesystem;
    using pruebas::apartados_de;
    using pruebas::pagina_del_manual;
    using testing::IsEmpty;

    using Nombres = std::set<std::string>;

    Nombres todos(const std::string& texto, const std::string& patron)
    {
        const std::regex expresion(patron);
        Nombres hallados;
        for (std::sregex_iterator uno(texto.begin(), texto.end(), expresion), fin; uno != fin; ++uno)
            hallados.insert((*uno)[1]);
        return hallados;
    }

    Nombres opciones_en(const std::string& texto) { return todos(texto, R"((--[a-z][a-z-]*))"); }

    Nombres declaradas(const CLI::App& orden)
    {
        Nombres nombres;
        for (const auto* opcion : orden.get_options())
            for (const auto& nombre : opcion->get_lnames())
                nombres.insert("--" + nombre);
        return nombres;
    }

    Nombres menos(Nombres unas, const Nombres& otras)
    {
        std::erase_if(unas, [&](const auto& una) { return otras.contains(una); });
        return unas;
    }

    const Nombres de_todas{ "--datos", "--conexion", "--empresa", "--usuario", "--help" };

    /// The options of each command, in the order of the help.
    std::vector<std::pair<std::string, Nombres>> ordenes_del_programa()
    {
        static app::OpcionesComunes comunes;
        static const app::Ventanas sin_ventanas{ nullptr, nullptr, nullptr };
        std::vector<std::pair<std::string, Nombres>> todas;
        for (const auto& una : app::ordenes()) {
            CLI::App orden;
            static_cast<void>(una.declara(orden, { comunes, sin_ventanas }));
            todas.emplace_back(una.nombre, declaradas(orden));
        }
        return todas;
    }

    std::string todo_el_manual()
    {
        std::string todo;
        for (const auto& fichero : fs::directory_iterator(ATIPICOS_FUENTES "/docs/manual"))
            if (fichero.path().extension() == ".md")
                todo += pruebas::lee_fichero(fichero.path());
        return todo;
    }

    TEST(ManualDice, every_command_has_its_section_with_all_its_options_and_no_other)
    {
        const auto secciones = apartados_de(pagina_del_manual("ordenes"), "##");
        ASSERT_EQ(secciones.size(), ordenes_del_programa().size() + 1);
        EXPECT_EQ(secciones.front().first, "Opciones de todas");
        auto seccion = secciones.begin();
        for (const auto& [nombre, opciones] : ordenes_del_programa()) {
            ++seccion;
            EXPECT_EQ(seccion->first, nombre);
            EXPECT_EQ(menos(opciones_en(seccion->second), de_todas), menos(opciones, de_todas)) << nombre;
        }
        auto generales = de_todas;
        generales.insert("--version");
        EXPECT_EQ(opciones_en(secciones.front().second), generales);
    }

    TEST(ManualDice, no_page_names_an_option_or_a_command_that_there_is_not)
    {
        auto opciones = de_todas;
        opciones.insert("--version");
        Nombres nombres;
        for (const auto& [nombre, suyas] : ordenes_del_programa()) {
            nombres.insert(nombre);
            opciones.insert(suyas.begin(), suyas.end());
        }
        const auto texto = todo_el_manual();
        EXPECT_THAT(menos(opciones_en(texto), opciones), IsEmpty());
        const auto nombradas = todos(texto, R"((?:^|[`\n])atipicos ([a-z]+))");
        EXPECT_EQ(nombradas, nombres)
            << "- those that the manual gives as they are typed, + those that there are";
        for (const auto& [orden, opcion] :
            { std::pair{ "registrar", "--comprobar" }, { "listar", "--formato" } })
            EXPECT_TRUE(nombres.contains(orden) && opciones.contains(opcion)); // the lists are not empty
    }

    /// The values that an option takes are told where it is told.
    TEST(ManualDice, the_formats_are_those_of_the_program)
    {
        CLI::App listar;
        app::OpcionesComunes comunes;
        const app::Ventanas sin_ventanas{ nullptr, nullptr, nullptr };
        for (const auto& una : app::ordenes())
            if (una.nombre == std::string("listar"))
                static_cast<void>(una.declara(listar, { comunes, sin_ventanas }));
        const std::string ayuda = listar.get_option("--formato")->get_description();
        const auto secciones = apartados_de(pagina_del_manual("ordenes"), "##");
        const auto suya = std::find_if(
            secciones.begin(), secciones.end(), [](const auto& una) { return una.first == "listar"; });
        ASSERT_NE(suya, secciones.end());
        const std::string& seccion = suya->second;
        for (const auto* formato : { "tabla", "csv", "json", "xlsx" }) {
            EXPECT_NE(ayuda.find(formato), std::string::npos);
            EXPECT_NE(seccion.find("`" + std::string(formato) + "`"), std::string::npos) << formato;
        }
    }

    /// The first piece of code below a heading.
    std::string ejemplo(const std::string& pagina, const std::string& titulo, int cual = 0)
    {
        for (const auto& [suyo, texto] : apartados_de(pagina_del_manual(pagina), "##"))
            if (suyo == titulo) {
                std::size_t lugar = 0;
                for (int marca = 0; marca < 2 * cual + 1; ++marca)
                    lugar = texto.find("```\n", lugar) + 4;
                return texto.substr(lugar, texto.find("```", lugar) - lugar);
            }
        ADD_FAILURE() << "docs/manual/" << pagina << ".md has no " << titulo;
        return {};
    }

    TEST(ManualDice, its_good_claims_file_is_good_and_its_bad_one_as_bad_as_it_tells)
    {
        const pruebas::Programa programa;
        programa.escribe("bueno.csv", ejemplo("reclamaciones", "Uno bueno"));
        programa.escribe("malo.csv", ejemplo("reclamaciones", "Uno malo"));
        ASSERT_EQ(programa("crear").estado, 0);
        const auto bueno = programa("registrar bueno.csv");
        EXPECT_EQ(bueno.estado, 0) << bueno.errores;
        EXPECT_THAT(bueno.salida, testing::HasSubstr("2 registradas, 0 ya lo estaban, 0 rechazadas."));
        const auto malo = programa("registrar malo.csv");
        EXPECT_EQ(malo.estado, 1);
        EXPECT_EQ(malo.errores, ejemplo("reclamaciones", "Uno malo", 1));
        EXPECT_THAT(malo.salida, testing::HasSubstr("0 registradas, 0 ya lo estaban, 4 rechazadas."));
    }

}
}
