#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace atipicos::pruebas {

/// A PostgreSQL server of the test's own: a new cluster in a temporary folder, reached through a socket in
/// it, run by a user without privileges, gone with all it held when it is destroyed. It asks nobody for a
/// password but the role `con_clave`.
class ServidorPostgresql {
public:
    /// What there is to install before there can be one; empty when nothing.
    [[nodiscard]] static std::string falta();

    /// `duradero`: a commit waits for the disk, as it does in earnest.
    explicit ServidorPostgresql(bool duradero = false);
    ServidorPostgresql(const ServidorPostgresql&) = delete;
    ServidorPostgresql& operator=(const ServidorPostgresql&) = delete;
    ~ServidorPostgresql();

    /// URL of a database in it.
    [[nodiscard]] std::string direccion(
        const std::string& base, const std::string& usuario = "atipicos") const;
    /// The same for its ODBC driver, which is told to leave a transaction alone when a statement fails, and
    /// not to leave a log in the temporary folder as Debian's has it do.
    [[nodiscard]] std::string cadena_odbc(const std::string& base) const;
    [[nodiscard]] std::filesystem::path enchufe() const; ///< the socket that it listens on
    void crea_base(const std::string& base, const std::string& plantilla = "template1") const;
    void borra_base(const std::string& base) const; ///< also when somebody is connected to it

    /// Runs statements through the server's own client program; what it wrote on both outputs.
    std::string psql(const std::string& base, const std::string& sql) const;
    /// Runs a file of statements in the same way, as `usuario`; its status, which is not 0 after an error.
    int guion(const std::string& base, const std::filesystem::path& fichero, const std::string& usuario,
        std::string& dicho) const;

    void arranca();
    void detiene(); ///< at once, as when the power fails; what was committed is still there afterwards

private:
    int ejecuta(const std::vector<std::string>& orden, const std::filesystem::path& salida) const;
    void exige(const std::vector<std::string>& orden) const;

    std::filesystem::path m_programas;
    std::filesystem::path m_carpeta;
};

} // namespace atipicos::pruebas
