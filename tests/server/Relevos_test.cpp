// A host that, while it answers the component, lends other objects or gives the charge itself up: the call
// ends as it began, and what was lent first is let go behind it.
#include "tests/server/Cargado.hpp"
#include "tests/support/ConexionAjena.hpp"

namespace atipicos::pruebas {
namespace {

    using testing::Each;
    using testing::IsEmpty;
    using testing::SizeIs;
    using testing::StartsWith;

    Anfitrion::Miembro siempre(const char* nombre, Valor valor)
    {
        return { nombre, [valor](const Argumentos&) { return valor; } };
    }

    struct Relevos : Cargado {
        ConexionAjena primera;
        ConexionAjena segunda;
        Despacho prestada = primera.objeto(); ///< seen by the test, which lets it go before the call
        Despacho cargo = crea("clsAtipico");

        Relevos()
        {
            setenv("QVORCOMPRASATIP_AVISOS", "consola", 1);
            cargo.pon("EmpresaOrvalin",
                Anfitrion::crea(
                    { siempre("Codigo", 4), siempre("DecimalesImporte", 2), siempre("Parametro", "7") })
                    .valor());
            cargo.pon("ConexionOrvalin", prestada.valor());
            prestada = {};
            cargo.pon("Cod_Almacen", 3);
            cargo.pon("Fecha", Fecha{ 46347 });
            cargo.objeto("Lineas").llama("Add", 1001, "Botella rota", 2.5, 3);
            cargo.objeto("Lineas").llama("Add", 1002, "Caja mojada", 1, 3);
            primera.estado->durante = [this](const std::string&) { releva(); };
        }
        ~Relevos() override
        {
            primera.estado->durante = nullptr;
            if (!cargo)
                cargo = crea("clsAtipico");
            for (const char* una : { "EmpresaOrvalin", "ConexionOrvalin" })
                cargo.pon(una, Despacho().valor());
            cargo = {};
        }
        Relevos(const Relevos&) = delete;
        Relevos& operator=(const Relevos&) = delete;

        void releva()
        {
            (cargo ? cargo : crea("clsAtipico")).pon("ConexionOrvalin", segunda.objeto().valor());
        }
        void va_entera_a_la_primera(std::size_t instrucciones) const
        {
            EXPECT_THAT(primera.estado->dichas, SizeIs(instrucciones));
            EXPECT_THAT(segunda.estado->dichas, IsEmpty());
            EXPECT_EQ(primera.estado.use_count(), 1) << "the connection lent first is held by somebody";
        }
    };

    TEST_F(Relevos, a_charge_is_inserted_on_one_connection)
    {
        EXPECT_FALSE(cargo.llama("Insertar").logico());
        va_entera_a_la_primera(3);
        EXPECT_FALSE(cargo.llama("Insertar").logico());
        EXPECT_THAT(segunda.estado->dichas, SizeIs(3)) << "the next one goes to the other";
    }

    TEST_F(Relevos, a_charge_is_changed_on_one_connection)
    {
        EXPECT_FALSE(cargo.llama("Modificar_Atipico").logico());
        va_entera_a_la_primera(3);
    }

    TEST_F(Relevos, a_charge_is_deleted_on_one_connection)
    {
        cargo.llama("Eliminar_Atipico");
        va_entera_a_la_primera(2);
    }

    TEST_F(Relevos, a_charge_is_looked_for_on_one_connection)
    {
        EXPECT_FALSE(cargo.llama("Existe", 2026, 3, "AT260001").logico());
        va_entera_a_la_primera(2); // Open, Close
    }

    TEST_F(Relevos, a_charge_is_numbered_on_one_connection)
    {
        primera.estado->campos = { "Numero" };
        primera.estado->filas = { { Valor(260'017) } };
        EXPECT_EQ(cargo.llama("Devuelve_Codigo", true, 2026).texto(), "AT260018");
        va_entera_a_la_primera(4); // Open, Value, Update, Close
    }

    TEST_F(Relevos, a_charge_that_is_given_up_while_it_is_inserted_is_inserted_whole)
    {
        primera.estado->durante = [this](const std::string&) { cargo = {}; };
        auto* ultimo = cargo.get();
        const auto inserta = cargo.id("Insertar");
        DISPPARAMS sin_argumentos{};
        Valor resultado;
        EXPECT_EQ(ultimo->Invoke(inserta, iid_nulo, 0, DISPATCH_METHOD, &sin_argumentos, &resultado.get(),
                      nullptr, nullptr),
            HRESULT{ S_OK });
        EXPECT_FALSE(resultado.logico());
        EXPECT_FALSE(cargo);
        EXPECT_THAT(primera.estado->dichas, SizeIs(3));
        EXPECT_THAT(primera.estado->dichas, Each(StartsWith("Execute INSERT INTO")));
    }

    TEST_F(Relevos, the_company_may_be_another_from_any_of_its_answers_on)
    {
        bool viva = true;
        auto testigo = std::make_shared<int>();
        const std::weak_ptr<int> vista = testigo;
        const auto contesta = [&](Valor valor) {
            return [&, suyo = testigo, valor](const Argumentos&) {
                cargo.pon("EmpresaOrvalin", Anfitrion::crea({ siempre("Codigo", 99) }).valor());
                viva = viva && !vista.expired();
                return valor;
            };
        };
        cargo.pon("AplicarImpuesto", true);
        cargo.pon("EmpresaOrvalin",
            Anfitrion::crea({ { "Codigo", contesta(4) }, { "DecimalesImporte", contesta(2) },
                                { "Parametro", contesta("1") }, { "PorcentajeImpuesto", contesta(7) } })
                .valor());
        testigo.reset(); // its answers alone hold it
        EXPECT_FALSE(cargo.llama("Insertar").logico());
        EXPECT_TRUE(viva);
        EXPECT_THAT(primera.estado->dichas, SizeIs(3));
        EXPECT_THAT(primera.estado->dichas, Each(testing::HasSubstr("VALUES (4, ")));
    }

}
}
