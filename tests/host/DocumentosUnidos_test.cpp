#include "host/documento/DocumentosUnidos.hpp"

#include "tests/host/LienzoDePrueba.hpp"

#include <gmock/gmock.h>

namespace atipicos::orvalin {
namespace {

    using testing::ElementsAre;

    /// So many pages, each with its name and number on it.
    class ReportNumerado final : public Report {
    public:
        ReportNumerado(std::string nombre, std::size_t paginas)
            : m_nombre(std::move(nombre))
            , m_paginas(paginas)
        {
        }
        std::string titulo() const override { return "Reclamación " + m_nombre; }
        std::string nombre_de_fichero() const override { return m_nombre; }
        std::string asunto() const override { return titulo() + " de Ñandú"; }
        std::vector<Adjunto> adjuntos() const override { return { { m_nombre + ".json", "x/y", "{}" } }; }
        std::size_t paginas() const override { return m_paginas; }
        Tamano tamano() const override { return { 100, 200 }; }
        void pinta(std::size_t pagina, Lienzo& lienzo) const override
        {
            lienzo.texto(0, 0, m_nombre + "/" + std::to_string(pagina), {}, 0);
        }
        std::vector<Hallazgo> busca(std::string_view) const override
        {
            return { { m_paginas - 1, { 1, 2, 3, 4 } } };
        }

    private:
        std::string m_nombre;
        std::size_t m_paginas;
    };

    DocumentosUnidos varios()
    {
        return DocumentosUnidos(
            { std::make_shared<ReportNumerado>("B", 2), std::make_shared<ReportNumerado>("A", 1),
                std::make_shared<ReportNumerado>("C", 3) },
            "Drago");
    }

    TEST(DocumentosUnidos, have_the_pages_of_all_in_their_order)
    {
        const auto unidos = varios();
        EXPECT_EQ(unidos.paginas(), 6U);
        EXPECT_EQ(unidos.tamano(), (Tamano{ 100, 200 }));
        EXPECT_THAT(pruebas::textos(unidos), ElementsAre("B/0", "B/1", "A/0", "C/0", "C/1", "C/2"));
        EXPECT_THAT(pruebas::textos(unidos, 3), ElementsAre("C/0"));
    }

    TEST(DocumentosUnidos, find_in_all_of_them_and_carry_the_data_of_each)
    {
        const auto unidos = varios();
        ASSERT_TRUE(unidos.permite_buscar());
        EXPECT_THAT(unidos.busca("a"),
            ElementsAre(
                Hallazgo{ 1, { 1, 2, 3, 4 } }, Hallazgo{ 2, { 1, 2, 3, 4 } }, Hallazgo{ 5, { 1, 2, 3, 4 } }));
        EXPECT_THAT(unidos.adjuntos(),
            ElementsAre(Adjunto{ "A.json", "x/y", "{}" }, Adjunto{ "B.json", "x/y", "{}" },
                Adjunto{ "C.json", "x/y", "{}" }));
    }

    TEST(DocumentosUnidos, are_called_after_their_number_and_one_alone_as_it_is)
    {
        const auto unidos = varios();
        EXPECT_EQ(unidos.titulo(), "Reclamaciones a proveedores (3)");
        EXPECT_EQ(unidos.nombre_de_fichero(), "Reclamaciones, 3 cargos");
        EXPECT_EQ(unidos.asunto(), "Reclamaciones a proveedores (3) de Drago");
        const auto documentos
            = std::vector<std::shared_ptr<const Report>>(2, std::make_shared<ReportNumerado>("A", 1));
        EXPECT_EQ(DocumentosUnidos(documentos).asunto(), "Reclamaciones a proveedores (2)");
        const DocumentosUnidos uno({ documentos.front() }, "Drago");
        EXPECT_EQ(uno.titulo(), "Reclamación A");
        EXPECT_EQ(uno.nombre_de_fichero(), "A");
        EXPECT_EQ(uno.asunto(), "Reclamación A de Ñandú");
    }

}
}
