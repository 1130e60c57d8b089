#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace atipicos::app {

/// A heading of a page. A link finds it by its `ancla`.
struct Apartado {
    QString titulo; ///< without its marks
    int nivel = 0; ///< 1: that of the page
    QString ancla;
    QString texto; ///< what stands below it until the next heading, as it was written
};

struct Pagina {
    QString nombre; ///< of its file, without ".md"
    std::vector<Apartado> apartados; ///< the first one is the page's own

    [[nodiscard]] const QString& titulo() const { return apartados.front().titulo; }
};

/// Where something was found. `direccion`: as a link has it, "editor.md#teclas".
struct Encontrado {
    QString direccion;
    QString donde; ///< the page, and the heading below which it stands
    QString linea; ///< the line in which it was found, without its marks
};

/// The manual as it is written (docs/manual): pages in Markdown, in the order in which the first one, the
/// index, names them.
class Manual {
public:
    /// Reads the pages of a folder or of the program's resources. A page that cannot be read is not there.
    explicit Manual(const QString& lugar = QStringLiteral(":/manual"));

    [[nodiscard]] const std::vector<Pagina>& paginas() const noexcept { return m_paginas; }
    [[nodiscard]] const Pagina* pagina(const QString& nombre) const; ///< null when there is none

    /// The headings in whose text all `palabras` stand, whatever their accents; those that have them in the
    /// heading itself first.
    [[nodiscard]] std::vector<Encontrado> busca(const QString& palabras) const;

    /// The heading of the page of messages that is about what a box says; empty when none is. A "…" in the
    /// heading stands for whatever there is in its place.
    [[nodiscard]] QString ancla_de_mensaje(const QString& texto) const;

    /// "¿Qué es un cargo?" is "qué-es-un-cargo", here as where repositories are looked at.
    [[nodiscard]] static QString ancla_de(const QString& titulo);

private:
    std::vector<Pagina> m_paginas;
};

/// Lower case, and without accents: what a search compares.
[[nodiscard]] QString sin_acentos(const QString& texto);

} // namespace atipicos::app
