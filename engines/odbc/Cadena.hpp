#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace atipicos::odbc {

/// How a driver reads a value between braces.
enum class Llaves : std::uint8_t {
    dobladas, ///< a "}" of the value is written twice
    sencillas, ///< as it stands: the value ends at the first "};"
};

/// A connection string taken apart: `NOMBRE=valor;NOMBRE={valor; con «;»}`. Names compare without case.
class Cadena {
public:
    explicit Cadena(std::string_view texto);

    [[nodiscard]] bool tiene(std::string_view nombre) const noexcept;
    [[nodiscard]] std::string valor(std::string_view nombre) const; ///< empty when it is not there
    void pon(std::string_view nombre, std::string valor); ///< changes it, or adds it
    /// Whether it can be written so: with simple braces no value may hold "};".
    [[nodiscard]] bool admite(Llaves llaves) const noexcept;
    [[nodiscard]] std::string texto(Llaves llaves = Llaves::dobladas) const;

private:
    std::vector<std::pair<std::string, std::string>> m_partes; ///< in their order
};

} // namespace atipicos::odbc
