// A report of the host: what it paints on the canvas that it is lent is what is painted of it, page by page.
#include "server/ReportAnfitrion.hpp"

#include "automation/Anfitrion.hpp"

#include <gmock/gmock.h>

#include <sstream>

namespace atipicos::server {
namespace {

    using automation::Anfitrion;
    using automation::Argumentos;
    using automation::Despacho;
    using automation::Fallo;
    using automation::Valor;
    using testing::ElementsAre;

    /// Writes down, in order, what is painted on it.
    class LienzoEscrito final : public Lienzo {
    public:
        std::vector<std::string> pintado;

        void texto(Medida x, Medida y, std::string_view texto, const Letra& letra, Color color) override
        {
            std::ostringstream linea;
            linea << texto << " en " << x << ',' << y << " de " << letra.familia << ' ' << letra.cuerpo
                  << (letra.negrita ? " negrita " : " ") << std::hex << color;
            pintado.push_back(linea.str());
        }
        void relleno(const Recuadro& recuadro, Color color) override
        {
            std::ostringstream linea;
            linea << "relleno en " << recuadro.x << ',' << recuadro.y << " de " << recuadro.ancho << 'x'
                  << recuadro.alto << ' ' << std::hex << color;
            pintado.push_back(linea.str());
        }
    };

    /// A report of three pages that are told apart by their number.
    Despacho report()
    {
        return Anfitrion::crea({
            { "Titulo", [](const Argumentos&) { return Valor("Cargo AT250034"); } },
            { "Ancho", [](const Argumentos&) { return Valor(14'800); } },
            { "Alto", [](const Argumentos&) { return Valor(21'000.0); } },
            { "Paginas", [](const Argumentos&) { return Valor(std::int16_t{ 3 }); } },
            { "Pinta",
                [](const Argumentos& a) {
                    const auto pagina = a.valor(0).entero();
                    const auto lienzo = Despacho::de(a.valor(1).get());
                    if (pagina == 1)
                        return Valor(); // an empty page
                    lienzo.llama("Relleno", 100 + pagina, 200, 3'000, 400, 0xC0FFEE);
                    lienzo.llama("Texto", 150, 250.0, "Reclamación " + std::to_string(pagina), "Carlito", 423,
                        pagina == 2, 0x1A2B3C);
                    lienzo.llama("Texto", 700, 800, "a lápiz", "Gelasio", std::int16_t{ 300 }, false, 7);
                    return Valor();
                } },
        });
    }

    std::vector<std::string> pintada(const ReportAnfitrion& report, std::size_t pagina)
    {
        LienzoEscrito lienzo;
        report.pinta(pagina, lienzo);
        return lienzo.pintado;
    }

    TEST(ReportAnfitrion, it_has_the_title_the_size_and_the_pages_that_the_host_says)
    {
        const ReportAnfitrion suyo(report());
        EXPECT_EQ(suyo.titulo(), "Cargo AT250034");
        EXPECT_EQ(suyo.tamano(), (Tamano{ 14'800, 21'000 }));
        EXPECT_EQ(suyo.paginas(), 3U);
    }

    TEST(ReportAnfitrion, every_page_is_painted_as_the_host_painted_it)
    {
        const ReportAnfitrion suyo(report());
        EXPECT_THAT(pintada(suyo, 0),
            ElementsAre("relleno en 100,200 de 3000x400 c0ffee",
                "Reclamación 0 en 150,250 de Carlito 423 1a2b3c", "a lápiz en 700,800 de Gelasio 300 7"));
        EXPECT_THAT(pintada(suyo, 1), testing::IsEmpty());
        EXPECT_THAT(pintada(suyo, 2),
            ElementsAre("relleno en 102,200 de 3000x400 c0ffee",
                "Reclamación 2 en 150,250 de Carlito 423 negrita 1a2b3c",
                "a lápiz en 700,800 de Gelasio 300 7"));
        EXPECT_THAT(pintada(suyo, 2), testing::SizeIs(3)) << "it may be painted as often as wanted";
    }

    TEST(ReportAnfitrion, the_host_is_asked_for_each_page_once_and_in_order)
    {
        std::vector<std::int32_t> pedidas;
        const auto contado = Anfitrion::crea({
            { "Titulo", [](const Argumentos&) { return Valor(""); } },
            { "Ancho", [](const Argumentos&) { return Valor(1); } },
            { "Alto", [](const Argumentos&) { return Valor(2); } },
            { "Paginas", [](const Argumentos&) { return Valor(4); } },
            { "Pinta",
                [&pedidas](const Argumentos& a) {
                    pedidas.push_back(a.valor(0).entero());
                    return Valor();
                } },
        });
        const ReportAnfitrion suyo(contado);
        EXPECT_THAT(pedidas, ElementsAre(0, 1, 2, 3));
        EXPECT_THAT(pintada(suyo, 3), testing::IsEmpty());
    }

    TEST(ReportAnfitrion, what_the_host_raises_while_it_paints_reaches_who_hands_it_in)
    {
        const auto roto = Anfitrion::crea({
            { "Titulo", [](const Argumentos&) { return Valor("Roto"); } },
            { "Ancho", [](const Argumentos&) { return Valor(1); } },
            { "Alto", [](const Argumentos&) { return Valor(2); } },
            { "Paginas", [](const Argumentos&) { return Valor(1); } },
            { "Pinta",
                [](const Argumentos&) -> Valor { throw Fallo(20'515, "Informes", "Falta la plantilla."); } },
        });
        try {
            const ReportAnfitrion suyo(roto);
            FAIL() << "it raised nothing";
        } catch (const Error& error) {
            EXPECT_EQ(error.numero(), 20'515);
            EXPECT_EQ(error.fuente(), "Informes");
            EXPECT_EQ(error.descripcion(), "Falta la plantilla.");
        }
    }

}
}
