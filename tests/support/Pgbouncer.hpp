#pragma once

#include <filesystem>
#include <string>
#include <sys/types.h>

namespace atipicos::pruebas {

class ServidorPostgresql;

/// A pgbouncer before a server of the test's own, on a socket in the same folder, gone when it is destroyed.
class Pgbouncer {
public:
    /// What there is to install before there can be one; empty when nothing.
    [[nodiscard]] static std::string falta();

    /// @param modo  `session` or `transaction`: for how long a client keeps a session of the server
    /// @param sesiones  how many of those there are
    Pgbouncer(const ServidorPostgresql& servidor, const std::string& modo, int sesiones);
    Pgbouncer(const Pgbouncer&) = delete;
    Pgbouncer& operator=(const Pgbouncer&) = delete;
    ~Pgbouncer();

    /// URL of a database through it.
    [[nodiscard]] std::string direccion(
        const std::string& base, const std::string& usuario = "atipicos") const;

private:
    std::filesystem::path m_carpeta;
    pid_t m_proceso = -1;
};

} // namespace atipicos::pruebas
