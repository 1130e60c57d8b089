// The template of a document: read, and a document of several pages laid out by it.
#include "host/documento/Documento.hpp"
#include "tests/fuzz/Entrada.hpp"
#include "tests/host/MedidorFijo.hpp"

namespace {

using namespace atipicos;

orvalin::DatosDocumento datos_de_prueba()
{
    orvalin::DatosDocumento datos{ { { "codigo", "AT260001" }, { "fecha", "21/11/2026" }, { "vacio", "" } },
        {} };
    for (int i = 1; i <= 60; ++i)
        datos.listas["lineas"].push_back({ { "descripcion", "Palé dañado " + std::to_string(i) } });
    return datos;
}

}

int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t tamano)
{
    static const auto contenido = datos_de_prueba();
    static const pruebas::MedidorFijo medidor;
    try {
        const auto plantilla = orvalin::Plantilla::de_texto(fuzz::texto(datos, tamano), "plantilla.json");
        const orvalin::Documento documento("Prueba", contenido, plantilla, medidor);
        fuzz::exige(documento.paginas() > 0, "a document has a page");
    } catch (const Error&) { // a template that says what is wrong with it
    }
    return 0;
}
