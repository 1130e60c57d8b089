// Hostile texts in every option of the command line and in every column of a claims file: status 1 or 2 with
// a message of one program, no signal, and databases that hold what they held.
#include "tests/app/Programa.hpp"
#include "tests/hostil/Textos.hpp"

#include <gmock/gmock.h>

#include <algorithm>

namespace atipicos {
namespace {

    using testing::EndsWith;
    using testing::HasSubstr;

    std::string entrecomilla(const std::string& texto)
    {
        std::string palabra = "'";
        for (const char c : texto)
            palabra += c == '\'' ? std::string("'\\''") : std::string(1, c);
        return palabra + "'";
    }

    /// What can stand on a command line at all: no NUL, and no more than the system takes in one word.
    std::vector<pruebas::TextoHostil> en_una_palabra()
    {
        auto todos = pruebas::textos_hostiles();
        std::erase_if(todos, [](const auto& uno) { return uno.texto.find('\0') != std::string::npos; });
        for (auto& uno : todos)
            uno.texto.resize(std::min<std::size_t>(uno.texto.size(), 100'000));
        return todos;
    }

    struct TextosEnOrdenes : testing::Test {
        pruebas::Programa programa;
        TextosEnOrdenes()
        {
            programa.escribe("r.csv", cabecera() + "R1;1;101;21/11/2026;;;;Agua;1;10;\n");
            EXPECT_EQ(programa("crear").estado, 0);
            EXPECT_EQ(programa("registrar r.csv").estado, 0);
        }

        static std::string cabecera()
        {
            return "referencia;almacen;proveedor;fecha;observaciones;franquiciado;articulo;descripcion;"
                   "unidades;"
                   "costo;observaciones_linea\n";
        }

        [[nodiscard]] std::string verificado() const { return programa("verificar").salida; }

        /// The program ran to its end and said why it refused.
        static void expect_rechazo(const pruebas::Ejecucion& ejecucion, const std::string& orden)
        {
            EXPECT_TRUE(ejecucion.estado == 1 || ejecucion.estado == 2) << orden << ": " << ejecucion.estado;
            EXPECT_THAT(ejecucion.errores, testing::StartsWith("atipicos: ")) << orden;
            EXPECT_EQ(ejecucion.salida, "") << orden;
        }
    };

    TEST_F(TextosEnOrdenes, in_every_argument_are_refused_and_nothing_changes)
    {
        const auto antes = verificado();
        for (const std::string orden :
            { "mostrar @ --ejercicio 2026 --almacen 1", "mostrar AT260001 --ejercicio @ --almacen 1",
                "mostrar AT260001 --ejercicio 2026 --almacen @",
                "mostrar AT260001 --ejercicio 2026 --almacen 1 --formato @",
                "eliminar @ --ejercicio 2026 --almacen 1 --si", "contabilizar @ --ejercicio 2026 --almacen 1",
                "listar --desde @ --hasta 31/12/2026", "listar --desde 01/01/2026 --hasta @",
                "listar --desde 01/01/2026 --hasta 31/12/2026 --almacen @",
                "listar --desde 01/01/2026 --hasta 31/12/2026 --proveedor @",
                "listar --desde 01/01/2026 --hasta 31/12/2026 --formato @", "registrar @",
                "verificar --datos @", "verificar --conexion @", "verificar --empresa @",
                "verificar --usuario @", "@" })
            for (const auto& hostil : en_una_palabra()) {
                auto completa = orden;
                completa.replace(completa.find('@'), 1, entrecomilla(hostil.texto));
                expect_rechazo(programa(completa), orden + " with " + hostil.nombre);
            }
        EXPECT_EQ(verificado(), antes);
    }

    TEST_F(TextosEnOrdenes, in_every_column_of_a_file_are_refused_or_stored_and_the_rest_is_recorded)
    {
        const std::vector<std::string> buena{ "R", "1", "101", "21/11/2026", "", "", "", "Agua", "1", "10",
            "" };
        int casos = 0;
        for (const auto& hostil : pruebas::textos_hostiles()) {
            auto fichero = cabecera();
            for (std::size_t columna = 0; columna < buena.size(); ++columna) {
                auto fila = buena;
                std::string entre_comillas = "\"";
                for (const char c : hostil.texto)
                    entre_comillas += c == '"' ? std::string("\"\"") : std::string(1, c);
                fila[0] += std::to_string(columna);
                fila[columna] = entre_comillas + "\"";
                for (std::size_t i = 0; i < fila.size(); ++i)
                    fichero += (i == 0 ? "" : ";") + fila[i];
                fichero += "\n";
            }
            fichero += "BUENA;1;101;21/11/2026;;;;Agua;1;10;\n";
            programa.escribe("h.csv", fichero);
            const auto ejecucion = programa("registrar h.csv");
            EXPECT_EQ(ejecucion.estado, 1) << hostil.nombre; // the numbers and the date at least are refused
            EXPECT_THAT(ejecucion.salida, HasSubstr("BUENA")) << hostil.nombre << ejecucion.errores;
            EXPECT_THAT(verificado(), EndsWith(": sin diferencias.\n")) << hostil.nombre;
            ++casos;
        }
        EXPECT_EQ(casos, static_cast<int>(pruebas::textos_hostiles().size()));
    }

}
}
