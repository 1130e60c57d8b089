// A statement gives the same whether it goes as it is written or as a prepared shape with its values: the
// component and statements at random, on two sample companies of which one knows no shapes.
// ATIPICOS_PRUEBA_LARGA makes many more statements, of another seed.
#include "browser/EliminarAtipico.hpp"
#include "browser/ListaAtipicos.hpp"
#include "charges/clsAtipico.hpp"
#include "charges/Impuesto.hpp"
#include "engines/sql/Guion.hpp"
#include "engines/sqlite/Connection.hpp"
#include "host/sql/Guiones.hpp"
#include "posting/GenerarPrev.hpp"
#include "tests/integracion/Banco.hpp"
#include "tests/integracion/ConexionGemela.hpp"
#include "tests/integracion/SentenciasAlAzar.hpp"
#include "tests/integracion/Volcado.hpp"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <cstdlib>
#include <functional>
#include <iostream>

namespace atipicos {
namespace {

    using pruebas::Banco;
    using pruebas::ConexionGemela;
    using pruebas::vuelca;

    constexpr auto tabla_al_azar
        = "CREATE TABLE Pruebas (Id INT NOT NULL PRIMARY KEY, Corto SMALLINT,"
          " Entero INT, Dinero MONEY, Fecha DATETIME, Marca BIT, Texto NVARCHAR(20))";

    bases::Bases abre_sin_formas(const bases::Lugar& lugar)
    {
        if (lugar.clase() == bases::Lugar::Clase::postgresql)
            return bases::abre_bases(bases::Lugar::de_conexion(lugar.direccion() + "&preparadas=no"));
        const auto pareja = sqlite::Connection::AbrirPareja(
            { .fichero = lugar.carpeta() / "empresa.db", .preparadas = false });
        return { pareja.gestion, pareja.contabilidad, pareja.transacciones };
    }

    /// How many statements with values the session of a connection holds prepared.
    int con_valores(const std::shared_ptr<adodb::Connection>& conexion)
    {
        int cuantas = 0;
        if (const auto fichero = std::dynamic_pointer_cast<sqlite::Connection>(conexion)) {
            for (auto* una = sqlite3_next_stmt(fichero->base(), nullptr); una != nullptr;
                 una = sqlite3_next_stmt(fichero->base(), una))
                cuantas += sqlite3_bind_parameter_count(una) > 0 ? 1 : 0;
            return cuantas;
        }
        auto rs = conexion->CreateRecordset();
        rs->Open("SELECT statement AS orden FROM pg_prepared_statements", adodb::CursorType::ForwardOnly,
            adodb::LockType::ReadOnly);
        for (; !rs->Eof(); rs->MoveNext())
            cuantas += CStr(rs->Fields("orden").Value()).find("$1") != std::string::npos ? 1 : 0;
        return cuantas;
    }

    struct Gemelas : testing::TestWithParam<pruebas::Sede> {
        std::unique_ptr<pruebas::Muestra> una;
        std::unique_ptr<pruebas::Muestra> otra;
        bases::Bases con_formas;
        bases::Bases sin_formas;
        bases::Bases las_dos;

        void SetUp() override
        {
            if (const auto& falta = GetParam().falta; !falta.empty())
                GTEST_SKIP() << falta;
            una = GetParam().muestra();
            otra = GetParam().muestra();
            for (const auto* muestra : { una.get(), otra.get() })
                sql::ejecuta_guion(*bases::abre_bases(muestra->lugar()).orvalin, tabla_al_azar);
            con_formas = bases::abre_bases(una->lugar());
            sin_formas = abre_sin_formas(otra->lugar());
            las_dos = { std::make_shared<ConexionGemela>(con_formas.orvalin, sin_formas.orvalin),
                std::make_shared<ConexionGemela>(con_formas.bexmor, sin_formas.bexmor) };
        }

        void TearDown() override
        {
            las_dos = con_formas = sin_formas = {}; // before what they are connected to goes
        }

        void quedan_iguales() const
        {
            EXPECT_EQ(vuelca(*con_formas.orvalin, guiones::orvalin()),
                vuelca(*sin_formas.orvalin, guiones::orvalin()));
            EXPECT_EQ(
                vuelca(*con_formas.bexmor, guiones::bexmor()), vuelca(*sin_formas.bexmor, guiones::bexmor()));
        }
    };

    struct Tecleado {
        std::int16_t almacen;
        std::int32_t proveedor;
        const char* fecha;
        const char* observaciones;
        bool franquiciado;
        std::vector<std::pair<const char*, const char*>> lineas; ///< units, cost
        std::string codigo = {};
    };

    ResultadoGuardado guarda(const Tecleado& lo)
    {
        clsAtipico cargo;
        CargoTecleado tecleado{ lo.codigo, lo.almacen, lo.proveedor, "Conservas La Graciosa, S.A.",
            pruebas::dia(lo.fecha), lo.observaciones, lo.franquiciado, {}, {} };
        for (const auto& [unidades, costo] : lo.lineas) {
            const Currency importe = importe_linea(pruebas::moneda(unidades), pruebas::moneda(costo));
            cargo.Lineas->Add(
                1006, "Lata abollada ñ", pruebas::moneda(unidades), pruebas::moneda(costo), "de la 3.ª caja");
            tecleado.Cargos.push_back({ importe, "" });
            tecleado.Total += importe;
        }
        return GuardarAtipico(cargo, tecleado, [](const Contabilizacion& datos) {
            std::vector<Prevision> previsiones;
            for (const auto& propuesta : GenerarPrev(datos).previsiones)
                previsiones.push_back(propuesta.prevision);
            return std::optional(previsiones);
        });
    }

    std::size_t listados(const FiltroAtipicos& filtro)
    {
        std::size_t cuantos = 0;
        Cargar_Atipicos(filtro, [&](const CargoListado&) { ++cuantos; });
        return cuantos;
    }

    /// A round of what a person does, the same with other values at each turn.
    void una_ronda(int vuelta)
    {
        const std::string numero = std::to_string(vuelta);
        const std::string fecha = (vuelta < 9 ? "0" : "") + std::to_string(vuelta + 1) + "/11/2026";
        const std::string costo = "33.333" + numero;
        const std::string observaciones = "Palé dañado ´" + numero + "´";
        const auto primero
            = guarda({ 1, 104, fecha.c_str(), observaciones.c_str(), false, { { "12", costo.c_str() } } });
        EXPECT_EQ(primero.estado, ResultadoGuardado::Estado::Guardado);
        for (const std::int16_t almacen : { std::int16_t{ 1 }, std::int16_t{ 2 }, std::int16_t{ 3 } })
            guarda(
                { almacen, 111, "29/02/2024", "", true, { { "-1.005", costo.c_str() }, { "1", "0.0001" } } });
        guarda({ 4, 104, fecha.c_str(), "", false, { { "1", "99999999.99" }, { "0", "0" } } });
        guarda(
            { 5, 104, fecha.c_str(), "de ninguna empresa contable", false, { { numero.c_str(), "2.5" } } });
        EXPECT_TRUE(guarda({ 1, 104, fecha.c_str(), "d'Or", false, { { "1", "1" } } }).InsertarFallido);
        guarda({ 1, 104, "21/11/2031", "de otro año", false, { { "1", costo.c_str() } } });
        guarda({ 1, 104, fecha.c_str(), "cambiado", false, { { "3", costo.c_str() }, { "2", "-0.5" } },
            primero.Codigo });

        std::size_t lineas = 0;
        Cargar_Detalles({ 2026, 1, primero.Codigo }, [&](const LineaDetalle&) { ++lineas; });
        EXPECT_EQ(lineas, 2U);
        for (const FiltroAtipicos& filtro : { FiltroAtipicos{ "01/01/2024", "31/12/2026" },
                 FiltroAtipicos{ fecha, fecha, 1 }, FiltroAtipicos{ "01/11/2026", fecha, 0, 104 },
                 FiltroAtipicos{ "01/01/2026", fecha, 4, 104 } })
            EXPECT_GT(listados(filtro), 0U);
        EXPECT_THROW(listados({ "31/02/2026", fecha }), adodb::ErrorBaseDatos);
        EXPECT_FALSE(
            GenerarPrev({ pruebas::moneda(costo.c_str()), 104, pruebas::dia(fecha.c_str()), 1, true })
                .previsiones.empty());
        if (vuelta % 2 == 0) {
            EXPECT_TRUE(EliminarAtipico({ 2026, 1, primero.Codigo }));
        }
        EXPECT_EQ(clsAtipico().Existe(2026, 1, primero.Codigo), vuelta % 2 != 0);
    }

    TEST_P(Gemelas, what_the_component_does_gives_the_same_with_shapes_and_without)
    {
        {
            Banco banco(las_dos);
            for (int vuelta = 0; vuelta < 6 && !HasFailure(); ++vuelta)
                una_ronda(vuelta);
            EXPECT_GE(banco.avisos->dichos.size(), 6U) << "the apostrophes, at least";
            EXPECT_GT(banco.estado().at("Bexmor.dbo.Apuntes"), 0);
        }
        EXPECT_GT(con_valores(con_formas.orvalin), con_valores(sin_formas.orvalin) + 10)
            << "beside those of the engine itself";
        quedan_iguales();
    }

    bool va_bien(const std::function<void()>& uso)
    {
        try {
            uso();
            return true;
        } catch (const Error&) { // also a value that no variable holds
            return false;
        }
    }

    /// How many rows it gives. Twins compare each of them.
    int leidas(adodb::Connection& conexion, const std::string& sql)
    {
        int filas = 0;
        auto rs = conexion.CreateRecordset();
        for (rs->Open(sql, adodb::CursorType::Static, adodb::LockType::ReadOnly); !rs->Eof(); rs->MoveNext())
            ++filas;
        return filas;
    }

    void ejecuta(adodb::Connection& conexion, const std::string& sql)
    {
        if (sql.starts_with("SELECT"))
            leidas(conexion, sql);
        else
            conexion.Execute(sql);
    }

    TEST_P(Gemelas, of_two_bad_values_the_same_one_is_named)
    {
        for (const auto* valores : { "1, 7, 1", "2, 8, 0", "3, 1234567890123456789.5, '-1'", "4, 9.5, '1'",
                 "5, 1234567890123456789.5, '-1'", "6, 1234567890123456789.5, '-1'" })
            va_bien([&] {
                las_dos.orvalin->Execute(
                    std::string("INSERT INTO Pruebas (Id, Corto, Marca) VALUES (") + valores + ")");
            });
        EXPECT_GE(leidas(*las_dos.orvalin, "SELECT * FROM Pruebas ORDER BY Id"), 3);
    }

    TEST_P(Gemelas, statements_at_random_give_the_same_with_shapes_and_without)
    {
        const bool larga = std::getenv("ATIPICOS_PRUEBA_LARGA") != nullptr;
        const int sentencias = larga ? 30'000 : 3'000;
        pruebas::SentenciasAlAzar azar(larga ? 4'711 : 20'261'121);
        auto& conexion = *las_dos.orvalin;
        int bien = 0;
        int mal = 0;
        bool dentro = false;
        for (int n = 0; n < sentencias && !HasFailure(); ++n) {
            if (azar.uno_de(40) == 0) {
                dentro ? (azar.uno_de(2) == 0 ? conexion.CommitTrans() : conexion.RollbackTrans())
                       : conexion.BeginTrans();
                dentro = !dentro;
            }
            const auto sql = azar.una();
            for (int vez = 0; vez < 2; ++vez)
                ++(va_bien([&] { ejecuta(conexion, sql); }) ? bien : mal);
        }
        if (dentro)
            conexion.CommitTrans();
        EXPECT_GT(bien, 1'000);
        EXPECT_GT(mal, 200);
        EXPECT_GT(con_valores(con_formas.orvalin), con_valores(sin_formas.orvalin) + 50)
            << "beside those of the engine itself";
        EXPECT_GT(leidas(conexion, "SELECT * FROM Pruebas ORDER BY Id"), 20);
        if (GetParam().nombre == pruebas::en_carpeta().nombre) // a column holds values of every kind there
            leidas(conexion,
                "SELECT Id, quote(Corto) AS a, quote(Entero) AS b, quote(Dinero) AS c, quote(Fecha) AS d,"
                " quote(Marca) AS e, quote(Texto) AS f FROM Pruebas ORDER BY Id");
        quedan_iguales();
        std::cout << bien << " statements went well and " << mal << " failed\n";
    }

    INSTANTIATE_TEST_SUITE_P(sedes, Gemelas, testing::ValuesIn(pruebas::sedes_sin_odbc()),
        [](const auto& caso) { return caso.param.nombre; });

}
}
