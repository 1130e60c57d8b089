#include "host/documento/DocumentosUnidos.hpp"

#include <algorithm>
#include <utility>

namespace atipicos::orvalin {

std::string titulo_de_varios(std::size_t cuantos)
{
    return "Reclamaciones a proveedores (" + std::to_string(cuantos) + ")";
}

DocumentosUnidos::DocumentosUnidos(std::vector<std::shared_ptr<const Report>> documentos, std::string emisor)
    : m_documentos(std::move(documentos))
    , m_emisor(std::move(emisor))
{
}

std::string DocumentosUnidos::titulo() const
{
    return m_documentos.size() == 1 ? m_documentos.front()->titulo() : titulo_de_varios(m_documentos.size());
}

std::string DocumentosUnidos::nombre_de_fichero() const
{
    return m_documentos.size() == 1 ? m_documentos.front()->nombre_de_fichero()
                                    : "Reclamaciones, " + std::to_string(m_documentos.size()) + " cargos";
}

std::string DocumentosUnidos::asunto() const
{
    if (m_documentos.size() == 1)
        return m_documentos.front()->asunto();
    return m_emisor.empty() ? titulo() : titulo() + " de " + m_emisor;
}

std::vector<Adjunto> DocumentosUnidos::adjuntos() const
{
    std::vector<Adjunto> todos;
    for (const auto& documento : m_documentos)
        for (auto&& uno : documento->adjuntos())
            todos.push_back(std::move(uno));
    std::ranges::sort(todos, {}, &Adjunto::nombre); // as a PDF file wants them
    return todos;
}

std::size_t DocumentosUnidos::paginas() const
{
    std::size_t todas = 0;
    for (const auto& documento : m_documentos)
        todas += documento->paginas();
    return todas;
}

Tamano DocumentosUnidos::tamano() const { return m_documentos.front()->tamano(); }

void DocumentosUnidos::pinta(std::size_t pagina, Lienzo& lienzo) const
{
    for (const auto& documento : m_documentos) {
        if (pagina < documento->paginas()) {
            documento->pinta(pagina, lienzo);
            return;
        }
        pagina -= documento->paginas();
    }
}

std::vector<Hallazgo> DocumentosUnidos::busca(std::string_view texto) const
{
    std::vector<Hallazgo> hallados;
    std::size_t anteriores = 0;
    for (const auto& documento : m_documentos) {
        for (auto uno : documento->busca(texto)) {
            uno.pagina += anteriores;
            hallados.push_back(uno);
        }
        anteriores += documento->paginas();
    }
    return hallados;
}

} // namespace atipicos::orvalin
