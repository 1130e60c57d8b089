#pragma once

#include "runtime/Error.hpp"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace atipicos::bases {

/// Where the pair of databases is: in the files of a folder, or on a server.
class Lugar {
public:
    enum class Clase : std::uint8_t { carpeta, odbc, postgresql };

    Lugar(std::filesystem::path carpeta); // implicit: a folder is where they ordinarily are

    /// `sqlite:CARPETA`, `postgresql://usuario@servidor/base` or `odbc:DRIVER=…;SERVER=…;UID=…`. Raises an
    /// error, which does not repeat the text, on anything else.
    [[nodiscard]] static Lugar de_conexion(const std::string& conexion, Donde donde = Donde::aqui());

    [[nodiscard]] Clase clase() const noexcept { return m_clase; }
    [[nodiscard]] const std::filesystem::path& carpeta() const noexcept { return m_carpeta; }
    [[nodiscard]] const std::string& direccion() const noexcept { return m_direccion; } ///< of a server

    [[nodiscard]] std::string texto() const; ///< as a person may read it: a folder, or an address
    [[nodiscard]] Lugar absoluto() const; ///< the same, wherever it is named from
    [[nodiscard]] std::string opcion() const; ///< as the command line takes it: `--datos CARPETA`
    [[nodiscard]] std::string_view motor() const noexcept; ///< name of the database product

private:
    Clase m_clase = Clase::carpeta;
    std::filesystem::path m_carpeta;
    std::string m_direccion;
};

} // namespace atipicos::bases
