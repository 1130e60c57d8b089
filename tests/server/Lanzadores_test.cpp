// The launchers and the report viewer as a host in another language opens them: late bound, without Qt of its
// own.
#include "host/bases/Bases.hpp"
#include "tests/server/Cargado.hpp"
#include "tests/server/EmpresaAnfitriona.hpp"
#include "tests/support/AdoDePrueba.hpp"
#include "tests/support/CarpetaTemporal.hpp"

#include <cstdlib>
#include <map>
#include <sstream>

namespace atipicos::pruebas {
namespace {

    using testing::IsEmpty;

    constexpr std::array contexto{ "EmpresaOrvalin", "ConexionOrvalin", "EmpresaBexmor", "ConexionBexmor" };

    unsigned sostenes(const Despacho& objeto)
    {
        objeto.get()->AddRef();
        return objeto.get()->Release();
    }

    struct Lanzadores : testing::Test {
        // Never unloaded: it has windows.
        void* biblioteca = dlopen(ATIPICOS_COMPONENTE, RTLD_NOW | RTLD_LOCAL);
        CarpetaTemporal carpeta;
        bases::Bases bases = abre();
        Despacho empresa = empresa_con_ventanas();

        Lanzadores() = default;
        Lanzadores(const Lanzadores&) = delete;
        Lanzadores& operator=(const Lanzadores&) = delete;
        ~Lanzadores() override ///< takes back what it has lent
        {
            const auto editor = crea("frmclsCompras_Atipicos");
            for (const char* una : contexto)
                editor.pon(una, Despacho().valor());
        }

        bases::Bases abre() const
        {
            setenv("QVORCOMPRASATIP_AVISOS", "consola", 1);
            setenv("XDG_RUNTIME_DIR", carpeta.ruta().c_str(), 1); // Qt says so where there is none
            bases::crea_bases(carpeta.ruta(), false);
            return bases::abre_bases(carpeta.ruta());
        }
        Despacho crea(const char* nombre) const
        {
            return automation::crea(
                nombre, reinterpret_cast<DameClase>(dlsym(biblioteca, "DllGetClassObject")));
        }
        HRESULT descargable() const
        {
            return reinterpret_cast<HRESULT (*)()>(dlsym(biblioteca, "DllCanUnloadNow"))();
        }
        Despacho con_contexto(const char* nombre) const
        {
            auto lanzador = crea(nombre);
            lanzador.pon("EmpresaOrvalin", empresa.valor());
            lanzador.pon("ConexionOrvalin", ado_de(bases.orvalin).valor());
            return lanzador;
        }
        /// What the person was told while something ran: nothing, if all went well.
        template <class Uso> static std::string dicho(Uso uso)
        {
            testing::internal::CaptureStderr();
            uso();
            std::istringstream lineas(testing::internal::GetCapturedStderr());
            std::string todo;
            for (std::string linea; std::getline(lineas, linea);)
                if (!linea.starts_with("This plugin does not support")) // Qt's own, of having no display
                    todo += linea + "\n";
            return todo;
        }
    };

    /// Before all others: once there are windows there is a screen.
    TEST_F(Lanzadores, where_there_is_no_screen_it_says_so_and_can_be_unloaded)
    {
        std::map<std::string, std::string> habia;
        for (const char* variable : { "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM" })
            if (const char* valor = std::getenv(variable)) {
                habia.emplace(variable, valor);
                unsetenv(variable);
            }
        const auto dichas = dicho(
            [&] { EXPECT_EQ(error_de([&] { con_contexto("frmclsCopiasImpresion").llama("Show"); }), 0); });
        for (const auto& [variable, valor] : habia)
            setenv(variable.c_str(), valor.c_str(), 1);
        EXPECT_THAT(dichas,
            testing::MatchesRegex(
                "frmclsCopiasImpresion:Show: \\[[0-9]+\\] No hay pantalla en la que abrir la "
                "ventana.\n"));
        EXPECT_EQ(descargable(), HRESULT{ S_OK });
    }

    TEST_F(Lanzadores, the_editor_is_shown_again_and_closed_with_its_launcher)
    {
        const auto dichas = dicho([&] {
            auto editor = con_contexto("QVORComprasAtip.frmclsCompras_Atipicos");
            editor.pon("ConexionBexmor", ado_de(bases.bexmor).valor());
            editor.pon("EmpresaBexmor", Anfitrion::crea({}).valor());
            editor.llama("Show");
            editor.llama("Show", 0, Despacho().get());
            EXPECT_EQ(error_de([&] { editor.llama("Show", 0, 5); }), 13);
            EXPECT_EQ(error_de([&] { editor.llama("EmpresaBexmor"); }), 438);
        });
        EXPECT_THAT(dichas, IsEmpty());
        EXPECT_EQ(descargable(), HRESULT{ S_FALSE }) << "with windows it stays loaded";
    }

    TEST_F(Lanzadores, what_cannot_be_an_owner_is_told_and_nothing_is_raised)
    {
        const auto ventana
            = [](Valor hWnd) { return Anfitrion::crea({ con_valor("hWnd", std::move(hWnd)) }); };
        for (const char* nombre :
            { "frmclsCompras_Atipicos", "frmclsComprasAtipVisor", "frmclsCopiasImpresion" }) {
            const auto lanzador = con_contexto(nombre);
            const auto dice = [&](const Despacho& duena) {
                return dicho(
                    [&] { EXPECT_EQ(error_de([&] { lanzador.llama("Show", 0, duena.get()); }), 0); });
            };
            const std::string comienzo = std::string(nombre) + ":Show: \\[[0-9]+\\] ";
            using testing::MatchesRegex;
            EXPECT_THAT(dice(lanzador),
                MatchesRegex(comienzo + "El objeto no admite esta propiedad o método: hWnd\n"));
            EXPECT_THAT(dice(ventana("ninguna")), MatchesRegex(comienzo + "No coinciden los tipos\n"));
            EXPECT_THAT(dice(ventana(1.5)), MatchesRegex(comienzo + "No coinciden los tipos\n"));
            EXPECT_THAT(
                dice(ventana(9'007'199'254'740'994.0)), MatchesRegex(comienzo + "No coinciden los tipos\n"));
            EXPECT_THAT(dice(ventana(Valor::nulo())), MatchesRegex(comienzo + "Uso no válido de Null\n"));
            EXPECT_THAT(dice(ventana(0)), MatchesRegex(comienzo + ".*no tiene todavía ninguna ventana.*\n"));
        }
    }

    TEST_F(Lanzadores, the_browser_keeps_its_filters_and_opens_with_them)
    {
        const auto dichas = dicho([&] {
            auto visor = con_contexto("frmclsComprasAtipVisor");
            visor.pon("Ejercicio", 2026);
            visor.pon("Almacen_Inicial", 4);
            visor.pon("Proveedor_Inicial", 106);
            visor.pon("Fecha_Inicial", "01/01/2026");
            visor.pon("Fecha_Final", "31/12/2026");
            EXPECT_EQ(visor.llama("Ejercicio").tipo(), unsigned{ VT_I2 });
            EXPECT_EQ(visor.llama("Almacen_Inicial").entero(), 4);
            EXPECT_EQ(visor.llama("Proveedor_Inicial").tipo(), unsigned{ VT_I4 });
            EXPECT_EQ(visor.llama("Fecha_Final").fecha(), Fecha{ 46387 });
            visor.llama("Show", 0);
        });
        EXPECT_THAT(dichas, IsEmpty());
    }

    TEST_F(Lanzadores, the_device_dialog_gives_back_what_it_was_given)
    {
        auto copias = con_contexto("frmclsCopiasImpresion");
        copias.pon("Impresora", "láser");
        copias.pon("Dispositivo", 2);
        copias.pon("Dispositivo2", 3);
        copias.pon("Ajuste", 4);
        EXPECT_THAT(dicho([&] { copias.llama("Show", 0); }), IsEmpty());
        EXPECT_EQ(copias.llama("Impresora").texto(), "láser");
        EXPECT_EQ(copias.llama("Dispositivo").entero(), 2);
        EXPECT_EQ(copias.llama("Dispositivo2").entero(), 3);
        EXPECT_EQ(copias.llama("Ajuste").entero(), 4);
    }

    TEST_F(Lanzadores, a_report_of_the_host_is_painted_when_it_is_handed_in)
    {
        std::vector<std::int32_t> pintadas;
        auto vista = crea("clsView");
        vista.pon("Report",
            Anfitrion::crea({ con_valor("Titulo", "Informe"), con_valor("Ancho", 21000),
                                con_valor("Alto", 29700), con_valor("Paginas", 2),
                                { "Pinta",
                                    [&](const Argumentos& a) {
                                        pintadas.push_back(a.valor(0).entero());
                                        const Despacho lienzo(a.valor(1).objeto());
                                        lienzo.llama(
                                            "Texto", 2000, 3000, "Hola", "DejaVu Sans", 400, true, 0);
                                        lienzo.llama("Relleno", 0, 0, 100, 100, 0xFF0000);
                                        return Valor();
                                    } } })
                .valor());
        EXPECT_THAT(pintadas, testing::ElementsAre(0, 1));
        EXPECT_THAT(dicho([&] { vista.llama("Cargar", false, 100); }), IsEmpty());
        EXPECT_EQ(error_de([&] { vista.pon("Report", Anfitrion::crea({}).valor()); }), 438);
        vista.pon("Report", Valor(static_cast<IDispatch*>(nullptr)));
        EXPECT_EQ(error_de([&] { vista.llama("Cargar"); }), 450);
    }

    TEST_F(Lanzadores, every_setter_of_every_class_reaches_its_place_of_the_context_and_no_other)
    {
        const std::pair<const char*, std::size_t> clases[]{ { "clsAtipico", 2 },
            { "frmclsCopiasImpresion", 2 }, { "frmclsComprasAtipVisor", 4 },
            { "frmclsCompras_Atipicos", 4 } };
        std::array<Despacho, contexto.size()> puestos;
        for (std::size_t i = 0; i < contexto.size(); ++i) {
            puestos[i] = Anfitrion::crea({});
            crea("frmclsCompras_Atipicos").pon(contexto[i], puestos[i].valor());
        }
        for (const auto& [clase, cuantos] : clases) {
            for (std::size_t i = 0; i < cuantos; ++i) {
                const auto nuevo = Anfitrion::crea({});
                crea(clase).pon(contexto[i], nuevo.valor());
                EXPECT_EQ(sostenes(puestos[i]), 1U) << clase << " " << contexto[i];
                puestos[i] = nuevo;
                for (const auto& uno : puestos)
                    EXPECT_GT(sostenes(uno), 1U) << clase << " " << contexto[i] << ": they outlive it";
            }
            for (std::size_t i = cuantos; i < contexto.size(); ++i)
                EXPECT_FALSE(crea(clase).tiene(contexto[i])) << clase << " " << contexto[i];
        }
        for (std::size_t i = 0; i < contexto.size(); ++i) {
            crea("frmclsCompras_Atipicos").pon(contexto[i], Despacho().valor());
            EXPECT_EQ(sostenes(puestos[i]), 1U) << contexto[i];
        }
    }

    TEST_F(Lanzadores, company_and_connection_of_each_class_are_those_that_charges_use)
    {
        for (const char* clase :
            { "clsAtipico", "frmclsCopiasImpresion", "frmclsComprasAtipVisor", "frmclsCompras_Atipicos" }) {
            std::vector<std::string> preguntado;
            const auto objeto = crea(clase);
            objeto.pon("EmpresaOrvalin",
                Anfitrion::crea({ { "Codigo",
                                    [&](const Argumentos&) {
                                        preguntado.emplace_back("Codigo");
                                        return Valor(std::int16_t{ 7 });
                                    } } })
                    .valor());
            objeto.pon("ConexionOrvalin",
                Anfitrion::crea({ { "CreateRecordset",
                                    [&](const Argumentos&) -> Valor {
                                        preguntado.emplace_back("CreateRecordset");
                                        throw Fallo(1234, "prueba", "hasta aquí");
                                    } } })
                    .valor());
            EXPECT_EQ(error_de([&] { crea("clsAtipico").llama("Existe", 2025, 3, "AT250009"); }), 1234);
            EXPECT_THAT(preguntado, testing::ElementsAre("Codigo", "CreateRecordset")) << clase;
        }
    }

}
}
