#pragma once

#include <QString>

#include <string>
#include <string_view>

/// Between the texts of the component (UTF-8) and those of the windows.
namespace atipicos {

[[nodiscard]] inline QString a_qt(std::string_view texto)
{
    return QString::fromUtf8(texto.data(), static_cast<qsizetype>(texto.size()));
}

[[nodiscard]] inline std::string de_qt(const QString& texto) { return texto.toStdString(); }

} // namespace atipicos
