#include "controls/Explicacion.hpp"

#include <array>
#include <utility>

namespace atipicos {

namespace {

    constexpr auto para_quien_lo_mantiene
        = "La base de datos no ha entendido lo que se le pedía. Anote el mensaje para quien mantiene el "
          "programa.";

    /// How a message ends, and what it means.
    constexpr std::array<std::pair<const char*, const char*>, 5> explicaciones{ {
        { "Desbordamiento", "Un número es demasiado grande. Revise los que acaba de teclear." },
        { "No coinciden los tipos", "Donde hacía falta una fecha o un número hay otra cosa, o no hay nada." },
        { "Uso no válido de Null",
            "Un dato que hacía falta está vacío en la base de datos o en los parámetros de la empresa." },
        { "La variable de objeto no está establecida",
            "Falta algo que el programa principal tenía que dar a esta ventana, como la empresa o la "
            "conexión." },
        { "syntax error", para_quien_lo_mantiene },
    } };

}

QString explicacion_de(const QString& texto)
{
    for (const auto& [final, significado] : explicaciones)
        if (texto.trimmed().endsWith(QString::fromUtf8(final)))
            return QString::fromUtf8(significado);
    // What an engine quotes of the database stands behind its own words.
    return texto.contains(QStringLiteral("syntax error")) && texto.trimmed().endsWith(QStringLiteral(")."))
        ? QString::fromUtf8(para_quien_lo_mantiene)
        : QString();
}

} // namespace atipicos
