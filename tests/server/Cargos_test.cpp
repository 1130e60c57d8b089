// A host in another language, as far as the component can tell: it brings its own company object and its own
// ADO connection, and keeps charges in a database through the public classes.
#include "engines/sql/Guion.hpp"
#include "engines/sqlite/Connection.hpp"
#include "host/sql/Guiones.hpp"
#include "tests/server/Cargado.hpp"
#include "tests/support/AdoDePrueba.hpp"
#include "tests/support/CarpetaTemporal.hpp"

#include <fstream>

namespace atipicos::pruebas {
namespace {

    using testing::HasSubstr;

    Anfitrion::Miembro fijo(const char* nombre, Valor valor)
    {
        return { nombre, [valor](const Argumentos&) { return valor; } };
    }

    Despacho empresa_de_prueba()
    {
        return Anfitrion::crea({
            fijo("Codigo", std::int16_t{ 1 }),
            fijo("DecimalesImporte", 2),
            { "Parametro",
                [](const Argumentos& a) {
                    const auto clave = a.valor(0).texto();
                    return clave == "UsuarioActual"              ? Valor("1")
                        : clave == "Proveedores_AtipcosImpuesto" ? Valor(1)
                                                                 : Valor();
                } },
            { "PorcentajeImpuesto",
                [](const Argumentos& a) {
                    if (a.valor(0).entero() != 1)
                        throw Fallo(1000, "QVOREMP:Empresa", "No existe el tipo de impuesto.");
                    return Valor(7.0);
                } },
        });
    }

    struct Cargos : Cargado {
        CarpetaTemporal carpeta;
        std::shared_ptr<sqlite::Connection> base = sqlite::Connection::Abrir(
            { .fichero = carpeta / "orvalin.db", .crear = true, .sincronizacion_completa = false });
        Despacho cargo;

        Cargos()
        {
            sql::ejecuta_guion(*base, guiones::orvalin());
            setenv("QVORCOMPRASATIP_AVISOS", "consola", 1);
            base->Execute("PRAGMA foreign_keys = OFF"); // suppliers and the like are not this test's business
            cargo = crea("QVORComprasAtip.clsAtipico");
            cargo.pon("EmpresaOrvalin", empresa_de_prueba().valor());
            cargo.pon("ConexionOrvalin", ado_de(base).valor());
            cargo.pon("Cod_Ejercicio", 2026);
            cargo.pon("Cod_Almacen", 4);
            cargo.pon("Proveedor", 106);
            cargo.pon("Fecha", Fecha{ 46347 });
            cargo.pon("Hora", Fecha{ 0.375 });
            cargo.pon("Importe", Moneda{ 1234500 });
            cargo.pon("AplicarImpuesto", true);
        }
        ~Cargos() override { cargo = {}; }
        Cargos(const Cargos&) = delete;
        Cargos& operator=(const Cargos&) = delete;

        void agrega(const char* descripcion) const
        {
            cargo.objeto("Lineas").llama("Add", 1010, descripcion, 2, 3);
        }
        bool existe() const { return cargo.llama("Existe", 2026, 4, cargo.llama("Codigo").texto()).logico(); }
        std::string primero(const char* sql) const
        {
            const auto rs = base->CreateRecordset();
            rs->Open(sql, adodb::CursorType::Static, adodb::LockType::ReadOnly);
            return rs->Eof() ? "sin filas" : CStr(rs->Fields(std::size_t{ 0 }).Value());
        }
        /// What a call says to the person while it runs.
        template <class Uso> static std::string dicho(Uso uso)
        {
            testing::internal::CaptureStderr();
            uso();
            return testing::internal::GetCapturedStderr();
        }
    };

    TEST_F(Cargos, a_charge_is_numbered_inserted_changed_and_deleted)
    {
        EXPECT_EQ(cargo.llama("Devuelve_Codigo", false, 2026).texto(), "AT260001");
        EXPECT_EQ(cargo.llama("Devuelve_Codigo", true, 2026).texto(), "AT260001");
        const auto codigo = cargo.llama("Devuelve_Codigo", true, 2026).texto();
        EXPECT_EQ(codigo, "AT260002");
        cargo.pon("Codigo", codigo);
        agrega("Queso añejo");
        agrega("Queso tierno");
        EXPECT_FALSE(existe());
        EXPECT_FALSE(cargo.llama("Insertar").logico());
        EXPECT_TRUE(existe());
        EXPECT_EQ(
            primero("SELECT Impuesto_Importe FROM Proveedores_Cargos_Atipicos"), "8,64"); // 7 % of 123,45

        cargo.pon("Impuesto", 7);
        cargo.objeto("Lineas", 1).pon("Descripcion", "Queso ahumado");
        EXPECT_FALSE(cargo.llama("Modificar_Atipico").logico());
        EXPECT_EQ(primero("SELECT Descripcion FROM Proveedores_Cargos_Atipicos_Lineas WHERE Num_Linea = 1"),
            "Queso ahumado");

        cargo.llama("Eliminar_Atipico");
        EXPECT_FALSE(existe());
        EXPECT_EQ(primero("SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos_Lineas"), "0");
    }

    TEST_F(Cargos, an_error_that_the_component_shows_is_shown_and_told_by_the_result)
    {
        cargo.pon("Codigo", "AT260001");
        agrega("L'antic"); // a quote ends the text
        EXPECT_THAT(dicho([&] { EXPECT_TRUE(cargo.llama("Insertar").logico()); }),
            HasSubstr("clsAtipico:Insertar: "));
        EXPECT_TRUE(existe()) << "the header was written before";
        EXPECT_THAT(dicho([&] { EXPECT_TRUE(cargo.llama("Modificar_Atipico").logico()); }),
            testing::MatchesRegex("clsAtipico:Modificar: \\[[0-9]+\\] .*\n"));
        base->Execute("DROP TABLE Proveedores_Cargos_Atipicos_Lineas");
        EXPECT_THAT(
            dicho([&] { cargo.llama("Eliminar_Atipico"); }), HasSubstr("clsAtipico:Eliminar_Atipico: ["));
    }

    TEST_F(Cargos, a_charge_without_lines_at_all_is_told_and_the_process_goes_on)
    {
        cargo.pon("Codigo", "AT260001");
        cargo.pon("Lineas", Despacho().valor());
        const auto esta_sin = HasSubstr("La variable de objeto no está establecida");
        EXPECT_THAT(dicho([&] { EXPECT_TRUE(cargo.llama("Insertar").logico()); }), esta_sin);
        EXPECT_TRUE(existe()) << "the header was written before";
        EXPECT_THAT(dicho([&] { EXPECT_TRUE(cargo.llama("Modificar_Atipico").logico()); }), esta_sin);
        cargo.pon("Lineas", crea("clsAtipico_Lineas").valor());
        agrega("Queso añejo");
        EXPECT_EQ(dicho([&] { EXPECT_FALSE(cargo.llama("Modificar_Atipico").logico()); }), "");
        EXPECT_EQ(primero("SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos_Lineas"), "1");
    }

    TEST_F(Cargos, an_error_of_the_database_reaches_a_caller_with_its_number)
    {
        base->Execute("DROP TABLE Proveedores_Cargos_Atipicos");
        try {
            existe();
            FAIL() << "it raised nothing";
        } catch (const Fallo& fallo) {
            EXPECT_EQ(fallo.numero(), -2147217900);
            EXPECT_EQ(fallo.fuente(), "SQLite");
            EXPECT_THAT(fallo.what(), HasSubstr("Proveedores_Cargos_Atipicos"));
        }
    }

    TEST_F(Cargos, an_error_of_the_company_object_keeps_its_number_and_words)
    {
        cargo.pon("EmpresaOrvalin",
            Anfitrion::crea({ { "Codigo",
                                [](const Argumentos&) -> Valor {
                                    throw Fallo(1000, "QVOREMP:Empresa", "No hay empresa.");
                                } } })
                .valor());
        const Crudo codigo(cargo, cargo.id("Devuelve_Codigo"), DISPATCH_METHOD, { true, 2026 });
        EXPECT_EQ(codigo.numero, 1000);
        EXPECT_EQ(codigo.fuente, "QVOREMP:Empresa");
        EXPECT_EQ(codigo.descripcion, "No hay empresa.");

        cargo.pon("EmpresaOrvalin", Anfitrion::crea({}).valor());
        EXPECT_EQ(error_de([&] { cargo.llama("Devuelve_Codigo", true, 2026); }), 438);
        cargo.pon("EmpresaOrvalin", Valor(static_cast<IDispatch*>(nullptr)));
        EXPECT_EQ(error_de([&] { cargo.llama("Devuelve_Codigo", true, 2026); }), 91);
    }

    TEST_F(Cargos, what_one_charge_is_given_serves_all)
    {
        const auto otro = crea("clsAtipico");
        otro.pon("Cod_Almacen", 4);
        otro.pon("Fecha", Fecha{ 46347 });
        EXPECT_EQ(otro.llama("Devuelve_Codigo", true, 2026).texto(), "AT260001");
    }

    TEST_F(Cargos, a_connection_without_recordsets_of_its_own_is_told)
    {
        cargo.pon("ConexionOrvalin", Anfitrion::crea({}).valor());
        EXPECT_EQ(error_de([&] { cargo.llama("Devuelve_Codigo", true, 2026); }), 429);
        EXPECT_THAT(dicho([&] { cargo.llama("Insertar"); }), HasSubstr("El objeto no admite"));
    }

}
}
