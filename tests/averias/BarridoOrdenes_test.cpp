// One statement after the other of every command of the command line fails, or loses its connection, on
// SQLite and PostgreSQL: the program says so and ends with status 1, or does all the same what it does
// without the fault. Then the same command, given again, finds everything in order. Of the commands that
// write every sixth statement; with ATIPICOS_PRUEBA_LARGA every one.
#include "host/app/LineaDeOrdenes.hpp"
#include "host/app/Verificacion.hpp"
#include "tests/averias/Averia.hpp"
#include "tests/integracion/Sedes.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>

namespace atipicos {
namespace {

    using pruebas::averia::Clase;

    struct Ejecutada {
        int estado = 0;
        std::string salida;
        std::string errores;
    };

    /// The program itself, in this process.
    Ejecutada ejecuta(const orvalin::Lugar& lugar, std::vector<std::string> palabras)
    {
        palabras.insert(palabras.begin(), "atipicos");
        const bool en_carpeta = lugar.clase() == orvalin::Lugar::Clase::carpeta;
        palabras.push_back(
            en_carpeta ? "--datos=" + lugar.carpeta().string() : "--conexion=" + lugar.direccion());
        std::vector<const char*> argv;
        for (const auto& palabra : palabras)
            argv.push_back(palabra.c_str());
        std::ostringstream salida;
        std::ostringstream errores;
        auto* antes_salida = std::cout.rdbuf(salida.rdbuf());
        auto* antes_errores = std::cerr.rdbuf(errores.rdbuf());
        const int estado = app::ejecuta(static_cast<int>(argv.size()), argv.data(),
            { [](const app::OpcionesVentana&) { return 3; },
                [](const app::OpcionesComunes&, const app::OpcionesImprimir&) { return 3; } });
        std::cout.rdbuf(antes_salida);
        std::cerr.rdbuf(antes_errores);
        pruebas::vacia_contexto();
        return { estado, salida.str(), errores.str() };
    }

    struct Orden {
        const char* nombre;
        std::vector<std::string> palabras;
        bool escribe = false;
    };

    struct BarridoOrdenes : testing::TestWithParam<pruebas::Sede> {
        pruebas::CarpetaTemporal carpeta;
        int averias = 0;

        void SetUp() override
        {
            if (const auto& falta = GetParam().falta; !falta.empty())
                GTEST_SKIP() << falta;
            escribe(
                "uno.csv", "R1;1;101;21/11/2026;;;;Agua;1;10;\nR2;1;104;20/11/2026;;;1003;Vino;2;30,555;\n");
            escribe("otro.csv", "S1;2;103;19/11/2026;;;;Queso;3;7;\nS2;1;101;18/11/2026;;;;Sal;1;1;\n");
        }

        void escribe(const char* fichero, const char* filas) const
        {
            std::ofstream(carpeta / fichero) << "referencia;almacen;proveedor;fecha;observaciones;"
                                                "franquiciado;articulo;descripcion;unidades;costo;"
                                                "observaciones_linea\n"
                                             << filas;
        }

        [[nodiscard]] std::vector<Orden> ordenes() const
        {
            const std::vector<std::string> cargo{ "AT260001", "--ejercicio", "2026", "--almacen", "1" };
            const auto con = [&](const char* orden, std::vector<std::string> mas = {}) {
                std::vector<std::string> palabras{ orden };
                palabras.insert(palabras.end(), cargo.begin(), cargo.end());
                palabras.insert(palabras.end(), mas.begin(), mas.end());
                return palabras;
            };
            return { { "registrar", { "registrar", (carpeta / "otro.csv").string() }, true },
                { "eliminar", con("eliminar", { "--si" }), true },
                { "contabilizar", { "contabilizar", "AT260002", "--ejercicio", "2026", "--almacen", "1" },
                    true },
                { "listar",
                    { "listar", "--desde", "01/01/2026", "--hasta", "31/12/2026", "--formato", "csv" },
                    false },
                { "mostrar", con("mostrar"), false }, { "verificar", { "verificar", "--proponer" }, false } };
        }

        /// Two charges of a file; the second has lost its entry.
        [[nodiscard]] std::unique_ptr<pruebas::Muestra> preparada() const
        {
            auto muestra = GetParam().muestra();
            EXPECT_EQ(ejecuta(muestra->lugar(), { "registrar", (carpeta / "uno.csv").string() }).estado, 0);
            const auto bases = orvalin::abre_bases(muestra->lugar());
            for (const auto* tabla : { "Previsiones", "Registro_Impuestos", "Apuntes" })
                bases.bexmor->Execute(std::string("DELETE FROM ") + tabla + " WHERE Asiento = 2");
            bases.bexmor->Execute("DELETE FROM Asientos WHERE Numero = 2");
            return muestra;
        }

        static std::string filas(const orvalin::Lugar& lugar, const char* tabla)
        {
            const auto bases = orvalin::abre_bases(lugar);
            auto rs = bases.orvalin->CreateRecordset();
            rs->Open(std::string("SELECT COUNT(*) AS N FROM ") + tabla, adodb::CursorType::Static,
                adodb::LockType::ReadOnly);
            return CStr(rs->Fields("N").Value());
        }

        /// What must hold once the command has been given again without a fault.
        static void expect_acabada(const Orden& orden, const orvalin::Lugar& lugar)
        {
            const auto otra_vez = ejecuta(lugar, orden.palabras);
            const std::string nombre = orden.nombre;
            if (nombre == "registrar") {
                EXPECT_EQ(filas(lugar, "Proveedores_Cargos_Atipicos"), "4")
                    << "once each: " << otra_vez.errores;
                EXPECT_EQ(filas(lugar, "Importaciones"), "4");
            } else if (nombre == "eliminar") {
                EXPECT_EQ(filas(lugar, "Proveedores_Cargos_Atipicos"), "1");
                EXPECT_EQ(filas(lugar, "Proveedores_Cargos_Atipicos_Lineas"), "1");
            } else {
                EXPECT_THAT(app::verifica(orvalin::abre_bases(lugar)).diferencias, testing::IsEmpty());
            }
        }

        void barre(const Orden& orden, Clase clase, std::size_t paso)
        {
            std::unique_ptr<pruebas::Muestra> muestra = preparada();
            pruebas::averia::prepara(Clase::ninguna, 0);
            const auto entera = ejecuta(muestra->lugar(), orden.palabras);
            for (std::size_t n = 1;; n += paso) {
                SCOPED_TRACE(std::string(orden.nombre) + ", statement " + std::to_string(n));
                if (orden.escribe)
                    muestra = preparada();
                pruebas::averia::prepara(clase, n);
                const auto averiada = ejecuta(muestra->lugar(), orden.palabras);
                const bool ocurrida = pruebas::averia::ha_ocurrido();
                pruebas::averia::prepara(Clase::ninguna, 0);
                if (!ocurrida)
                    break;
                ++averias;
                if (averiada.estado == entera.estado && averiada.salida == entera.salida)
                    continue; // it did not need the statement, or found its way back
                EXPECT_EQ(averiada.estado, app::no_hecho);
                EXPECT_NE(averiada.errores, "");
                if (orden.escribe)
                    expect_acabada(orden, muestra->lugar());
            }
        }
    };

    TEST_P(BarridoOrdenes, a_statement_that_fails_is_told_and_the_command_can_be_given_again)
    {
        const bool todas = std::getenv("ATIPICOS_PRUEBA_LARGA") != nullptr;
        for (const auto& orden : ordenes())
            barre(orden, Clase::instruccion, todas || !orden.escribe ? 1 : 6);
        std::cout << averias << " failed statements\n";
    }

    TEST_P(BarridoOrdenes, a_connection_that_is_lost_is_told_and_the_command_can_be_given_again)
    {
        const bool todas = std::getenv("ATIPICOS_PRUEBA_LARGA") != nullptr;
        for (const auto& orden : ordenes())
            barre(orden, Clase::conexion, todas || !orden.escribe ? 1 : 6);
        std::cout << averias << " lost connections\n";
    }

    INSTANTIATE_TEST_SUITE_P(sedes, BarridoOrdenes, testing::ValuesIn(pruebas::sedes_sin_odbc()),
        [](const auto& caso) { return caso.param.nombre; });

}
}
