#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace atipicos::odbc {

/// A connection string taken apart: `NOMBRE=valor;NOMBRE={valor; con «;»}`. Names compare without case.
class Cadena {
public:
    explicit Cadena(std::string_view texto);

    [[nodiscard]] bool tiene(std::string_view nombre) const noexcept;
    [[nodiscard]] std::string valor(std::string_view nombre) const; ///< empty when it is not there
    void pon(std::string_view nombre, std::string valor); ///< changes it, or adds it
    [[nodiscard]] std::string texto() const;

private:
    std::vector<std::pair<std::string, std::string>> m_partes; ///< in their order
};

} // namespace atipicos::odbc
