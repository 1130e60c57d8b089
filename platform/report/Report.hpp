#pragma once

#include "platform/report/Lienzo.hpp"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos {

/// Where a report holds a text.
struct Hallazgo {
    std::size_t pagina = 0; ///< from 0
    Recuadro lugar;

    friend bool operator==(const Hallazgo&, const Hallazgo&) = default;
};

/// Data that travel inside a file of a report, for programs to read.
struct Adjunto {
    std::string nombre; ///< of the file that they are taken out as
    std::string tipo; ///< its media type: "application/json"
    std::string contenido;

    friend bool operator==(const Adjunto&, const Adjunto&) = default;
};

/// A report that is ready to be looked at or printed: a number of pages of one size.
class Report {
public:
    Report() = default;
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;
    virtual ~Report() = default;

    [[nodiscard]] virtual std::string titulo() const = 0; ///< as the person knows it
    /// What a file of it is called, without ending, if the person wants no other name.
    [[nodiscard]] virtual std::string nombre_de_fichero() const { return titulo(); }
    /// What a message with which it is sent is about.
    [[nodiscard]] virtual std::string asunto() const { return titulo(); }
    [[nodiscard]] virtual std::vector<Adjunto> adjuntos() const { return {}; }
    [[nodiscard]] virtual std::size_t paginas() const = 0;
    [[nodiscard]] virtual Tamano tamano() const = 0;
    virtual void pinta(std::size_t pagina, Lienzo& lienzo) const = 0; ///< `pagina` from 0

    /// Whether `busca` can find anything at all.
    [[nodiscard]] virtual bool permite_buscar() const { return false; }
    /// Where `texto` occurs, whatever its case, in the order of reading.
    [[nodiscard]] virtual std::vector<Hallazgo> busca(std::string_view) const { return {}; }
};

} // namespace atipicos
