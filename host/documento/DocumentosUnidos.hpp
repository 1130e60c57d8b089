#pragma once

#include "platform/report/Report.hpp"

#include <memory>
#include <string>
#include <vector>

namespace atipicos::orvalin {

/// What several charges are called together: "Reclamaciones a proveedores (3)".
[[nodiscard]] std::string titulo_de_varios(std::size_t cuantos);

/// The documents of several charges as one: printed in one job, kept in one file, sent in one message.
class DocumentosUnidos final : public Report {
public:
    /// At least one. `emisor`: who sends them, for the subject of a message; may be empty.
    explicit DocumentosUnidos(std::vector<std::shared_ptr<const Report>> documentos, std::string emisor = {});

    [[nodiscard]] std::string titulo() const override;
    [[nodiscard]] std::string nombre_de_fichero() const override;
    [[nodiscard]] std::string asunto() const override;
    [[nodiscard]] std::vector<Adjunto> adjuntos() const override;
    [[nodiscard]] std::size_t paginas() const override;
    [[nodiscard]] Tamano tamano() const override; ///< of the first; one template gives them all the same
    void pinta(std::size_t pagina, Lienzo& lienzo) const override;

    [[nodiscard]] bool permite_buscar() const override { return true; }
    [[nodiscard]] std::vector<Hallazgo> busca(std::string_view texto) const override;

private:
    std::vector<std::shared_ptr<const Report>> m_documentos;
    std::string m_emisor;
};

} // namespace atipicos::orvalin
