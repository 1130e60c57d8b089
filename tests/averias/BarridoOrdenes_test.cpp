// One statement after the other of every command of the command line fails, or loses its connection, on
// SQLite and PostgreSQL: the program says so and ends with status 1, or does all the same what it does
// without the fault. Then the same command, given again, finds everything in order. Of the commands that
// write every sixth statement, of the many of `crear` every fortieth; with ATIPICOS_PRUEBA_LARGA every one.
#include "host/comprobacion/Verificacion.hpp"
#include "host/ordenes/LineaDeOrdenes.hpp"
#include "host/sql/Guiones.hpp"
#include "tests/averias/Averia.hpp"
#include "tests/integracion/Sedes.hpp"
#include "tests/integracion/Volcado.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>

namespace atipicos {
namespace {

    using pruebas::averia::Clase;

    struct Ejecutada {
        int estado = 0;
        std::string salida;
        std::string errores;
    };

    /// Each sample company has a place of its own.
    std::string sin_lugar(std::string texto, const std::string& lugar)
    {
        for (auto aqui = texto.find(lugar); aqui != std::string::npos; aqui = texto.find(lugar, aqui))
            texto.replace(aqui, lugar.size(), "@");
        return texto;
    }

    /// The program itself, in this process.
    Ejecutada ejecuta(const bases::Lugar& lugar, std::vector<std::string> palabras)
    {
        palabras.insert(palabras.begin(), "atipicos");
        const bool en_carpeta = lugar.clase() == bases::Lugar::Clase::carpeta;
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
            { [](const app::OpcionesVentana&) { return 3; }, &app::imprimir, nullptr });
        std::cout.rdbuf(antes_salida);
        std::cerr.rdbuf(antes_errores);
        pruebas::vacia_contexto();
        return { estado, sin_lugar(salida.str(), lugar.texto()), errores.str() };
    }

    struct Orden {
        const char* nombre;
        std::vector<std::string> palabras;
        std::size_t paso = 1; ///< 1: it only reads, so that the databases can stay

        [[nodiscard]] bool escribe() const { return paso > 1; }
        [[nodiscard]] bool es(std::string_view otro) const { return otro == nombre; }
    };

    /// What a folder holds, with the bytes of its files.
    std::map<std::string, std::string> entradas(const std::filesystem::path& carpeta)
    {
        std::map<std::string, std::string> todas;
        if (std::filesystem::exists(carpeta))
            for (const auto& una : std::filesystem::directory_iterator(carpeta)) {
                auto& bytes = todas[una.path().filename()];
                if (std::ifstream fichero(una.path(), std::ios::binary); una.is_regular_file())
                    bytes.assign(std::istreambuf_iterator(fichero), {});
            }
        return todas;
    }

    /// Every row of both databases.
    std::vector<std::string> contenido(const bases::Lugar& lugar)
    {
        const auto bases = bases::abre_bases(lugar);
        auto filas = pruebas::vuelca(*bases.orvalin, guiones::orvalin());
        for (const auto guion : { guiones::bexmor(), guiones::regularizaciones() }) {
            const auto otras = pruebas::vuelca(*bases.bexmor, guion);
            filas.insert(filas.end(), otras.begin(), otras.end());
        }
        return filas;
    }

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
            std::vector<Orden> todas{ { "crear", { "crear" }, 40 },
                { "registrar", { "registrar", (carpeta / "otro.csv").string() }, 6 },
                { "eliminar", con("eliminar", { "--si" }), 6 },
                { "contabilizar", { "contabilizar", "AT260002", "--ejercicio", "2026", "--almacen", "1" },
                    6 },
                { "regularizar", { "regularizar", "--si", "--fecha", "25/11/2026" }, 6 },
                { "listar",
                    { "listar", "--desde", "01/01/2026", "--hasta", "31/12/2026", "--formato", "csv" } },
                { "mostrar", con("mostrar") }, { "verificar", { "verificar", "--proponer" } } };
            if (ATIPICOS_CON_VENTANAS)
                todas.push_back({ "imprimir",
                    { "imprimir", "--desde", "01/01/2026", "--hasta", "31/12/2026", "--salida",
                        (impresos() / "cargos.pdf").string() } });
            return todas;
        }

        [[nodiscard]] std::filesystem::path impresos() const { return carpeta / "impresos"; }

        /// For `crear` nothing; for the others two charges of a file, the second of which has lost its entry,
        /// or for `regularizar` the first of which was deleted.
        [[nodiscard]] std::unique_ptr<pruebas::Muestra> preparada(const Orden& orden) const
        {
            std::filesystem::remove_all(impresos());
            std::filesystem::create_directory(impresos());
            if (orden.es("crear"))
                return GetParam().por_crear();
            auto muestra = GetParam().muestra();
            EXPECT_EQ(ejecuta(muestra->lugar(), { "registrar", (carpeta / "uno.csv").string() }).estado, 0);
            if (orden.es("regularizar")) {
                EXPECT_EQ(ejecuta(muestra->lugar(),
                              { "eliminar", "AT260001", "--ejercicio", "2026", "--almacen", "1", "--si" })
                              .estado,
                    0);
                return muestra;
            }
            const auto bases = bases::abre_bases(muestra->lugar());
            for (const auto* tabla : { "Previsiones", "Registro_Impuestos", "Apuntes" })
                bases.bexmor->Execute(std::string("DELETE FROM ") + tabla + " WHERE Asiento = 2");
            bases.bexmor->Execute("DELETE FROM Asientos WHERE Numero = 2");
            return muestra;
        }

        static std::string filas(const bases::Lugar& lugar, const char* tabla)
        {
            const auto bases = bases::abre_bases(lugar);
            auto rs = bases.orvalin->CreateRecordset();
            rs->Open(std::string("SELECT COUNT(*) AS N FROM ") + tabla, adodb::CursorType::Static,
                adodb::LockType::ReadOnly);
            return CStr(rs->Fields("N").Value());
        }

        /// What a command that was told to have failed must not have left.
        void expect_nada_a_medias(const Orden& orden, const bases::Lugar& lugar) const
        {
            if (orden.es("crear") && lugar.clase() == bases::Lugar::Clase::carpeta) {
                EXPECT_THAT(entradas(lugar.carpeta()), testing::IsEmpty());
            }
            EXPECT_THAT(entradas(impresos()), testing::IsEmpty()) << "a document that is not whole";
        }

        /// What must hold once the command has been given again without a fault, as `entera` was.
        static void expect_acabada(
            const Orden& orden, const bases::Lugar& lugar, const Ejecutada& otra_vez, const Ejecutada& entera)
        {
            if (orden.es("registrar")) {
                EXPECT_EQ(filas(lugar, "Proveedores_Cargos_Atipicos"), "4")
                    << "once each: " << otra_vez.errores;
                EXPECT_EQ(filas(lugar, "Importaciones"), "4");
            } else if (orden.es("eliminar")) {
                EXPECT_EQ(filas(lugar, "Proveedores_Cargos_Atipicos"), "1");
                EXPECT_EQ(filas(lugar, "Proveedores_Cargos_Atipicos_Lineas"), "1");
            } else if (orden.es("regularizar")) {
                EXPECT_EQ(filas(lugar, "Bexmor.dbo.Regularizaciones"), "1") << "once: " << otra_vez.errores;
                EXPECT_EQ(filas(lugar, "Bexmor.dbo.Asientos"), "3");
                EXPECT_THAT(app::verifica(bases::abre_bases(lugar)).saldos, testing::IsEmpty());
            } else if (orden.es("contabilizar")) {
                EXPECT_THAT(app::verifica(bases::abre_bases(lugar)).diferencias, testing::IsEmpty());
            } else {
                EXPECT_EQ(otra_vez.estado, entera.estado) << otra_vez.errores;
                EXPECT_EQ(otra_vez.salida, entera.salida);
            }
        }

        /// What the command leaves when it says that it is done: whole databases, a whole document.
        void expect_entero(const Orden& orden, const bases::Lugar& lugar) const
        {
            if (orden.es("crear")) {
                static const auto como_debe = contenido(GetParam().muestra()->lugar());
                EXPECT_EQ(contenido(lugar), como_debe);
            } else if (orden.es("imprimir")) {
                const auto pdf = entradas(impresos());
                ASSERT_THAT(pdf, testing::ElementsAre(testing::Key("cargos.pdf")));
                EXPECT_THAT(pdf.at("cargos.pdf"),
                    testing::AllOf(testing::StartsWith("%PDF-"), testing::HasSubstr("/Count 2"),
                        testing::EndsWith("%%EOF\n")));
            }
        }

        /// What was printed of each claim is so: it is there with all that hangs on it, or nothing of it is.
        static void expect_verdad(
            const Ejecutada& averiada, const bases::Lugar& lugar, std::size_t diferencias)
        {
            const auto bases = bases::abre_bases(lugar);
            const auto hechas = referencias(averiada.salida, "registrada");
            std::set<std::string> guardadas;
            auto rs = bases.orvalin->CreateRecordset();
            rs->Open("SELECT Referencia FROM Importaciones WHERE Referencia LIKE 'S%'",
                adodb::CursorType::Static, adodb::LockType::ReadOnly);
            for (; !rs->Eof(); rs->MoveNext())
                guardadas.insert(CStr(rs->Fields("Referencia").Value()));
            for (const auto* una : { "S1", "S2" })
                if (averiada.errores.find(std::string("no se sabe si «") + una + "»") == std::string::npos) {
                    EXPECT_EQ(hechas.contains(una), guardadas.contains(una))
                        << una << '\n'
                        << averiada.salida << averiada.errores;
                }
            EXPECT_EQ(filas(lugar, "Proveedores_Cargos_Atipicos"), std::to_string(2 + guardadas.size()));
            const auto verificacion = app::verifica(bases);
            EXPECT_EQ(verificacion.diferencias.size(), diferencias) << averiada.errores;
            EXPECT_EQ(filas(lugar, "Bexmor.dbo.Asientos"), std::to_string(1 + guardadas.size()));
        }

        /// The references of the lines of a text that end in so.
        static std::set<std::string> referencias(const std::string& texto, const std::string& final)
        {
            std::set<std::string> todas;
            std::istringstream lineas(texto);
            for (std::string linea; std::getline(lineas, linea);)
                if (linea.ends_with(final))
                    todas.insert(linea.substr(0, linea.find(' ')));
            return todas;
        }

        void barre(const Orden& orden, Clase clase, bool todas)
        {
            auto muestra = preparada(orden);
            pruebas::averia::prepara(Clase::ninguna, 0);
            const auto entera = ejecuta(muestra->lugar(), orden.palabras);
            expect_entero(orden, muestra->lugar());
            const auto diferencias = orden.es("registrar")
                ? app::verifica(bases::abre_bases(muestra->lugar())).diferencias.size()
                : 0;
            for (std::size_t n = 1;; n += todas ? 1 : orden.paso) {
                SCOPED_TRACE(std::string(orden.nombre) + ", statement " + std::to_string(n));
                if (orden.escribe())
                    muestra = preparada(orden);
                std::filesystem::remove(impresos() / "cargos.pdf");
                pruebas::averia::prepara(clase, n);
                const auto averiada = ejecuta(muestra->lugar(), orden.palabras);
                const bool ocurrida = pruebas::averia::ha_ocurrido();
                pruebas::averia::prepara(Clase::ninguna, 0);
                if (!ocurrida)
                    break;
                ++averias;
                if (orden.es("registrar"))
                    expect_verdad(averiada, muestra->lugar(), diferencias);
                // Else it did not need the statement, or found its way back.
                if (averiada.estado != entera.estado || averiada.salida != entera.salida) {
                    EXPECT_EQ(averiada.estado, app::no_hecho);
                    EXPECT_NE(averiada.errores, "");
                    if (clase == Clase::conexion
                        && muestra->lugar().clase() != bases::Lugar::Clase::carpeta) {
                        EXPECT_THAT(averiada.errores, testing::HasSubstr("conexión"));
                    }
                    expect_nada_a_medias(orden, muestra->lugar());
                    const auto otra_vez = ejecuta(muestra->lugar(), orden.palabras);
                    expect_acabada(orden, muestra->lugar(), otra_vez, entera);
                }
                expect_entero(orden, muestra->lugar());
            }
        }
    };

    TEST_P(BarridoOrdenes, a_statement_that_fails_is_told_and_the_command_can_be_given_again)
    {
        const bool todas = std::getenv("ATIPICOS_PRUEBA_LARGA") != nullptr;
        for (const auto& orden : ordenes())
            barre(orden, Clase::instruccion, todas);
        std::cout << averias << " failed statements\n";
    }

    TEST_P(BarridoOrdenes, a_connection_that_is_lost_is_told_and_the_command_can_be_given_again)
    {
        const bool todas = std::getenv("ATIPICOS_PRUEBA_LARGA") != nullptr;
        for (const auto& orden : ordenes())
            barre(orden, Clase::conexion, todas);
        std::cout << averias << " lost connections\n";
    }

    INSTANTIATE_TEST_SUITE_P(sedes, BarridoOrdenes, testing::ValuesIn(pruebas::sedes_sin_odbc()),
        [](const auto& caso) { return caso.param.nombre; });

}
}
