#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace atipicos::pruebas {

/// Two PostgreSQL servers of the test's own: one that is written to and a synchronous standby of it, reached
/// by one address that names both. Whoever is written to can be killed and the other one promoted, as often
/// as wanted; no commit is told before it is on both.
class ServidorConReserva {
public:
    ServidorConReserva();
    ServidorConReserva(const ServidorConReserva&) = delete;
    ServidorConReserva& operator=(const ServidorConReserva&) = delete;
    ~ServidorConReserva();

    /// Of a database on whichever of both can be written.
    [[nodiscard]] std::string direccion(const std::string& base) const;
    [[nodiscard]] std::filesystem::path enchufe_del_primario() const; ///< the socket that it listens on
    [[nodiscard]] std::filesystem::path carpeta_de_la_reserva() const; ///< that its socket is in
    void crea_base(const std::string& base) const;
    std::string psql(const std::string& base, const std::string& sql) const; ///< where it can be written

    void mata(); ///< the server that is written to, and all its processes, as when the power fails
    void asciende(); ///< the standby takes its place, at once
    void repone(); ///< the one that was killed is made anew as a standby, and has all that there is

private:
    [[nodiscard]] std::filesystem::path datos(std::size_t cual) const;
    [[nodiscard]] std::filesystem::path enchufe(std::size_t cual) const;
    void arranca(std::size_t cual) const;
    int ejecuta(const std::vector<std::string>& orden) const;
    void exige(const std::vector<std::string>& orden) const;

    std::filesystem::path m_programas;
    std::filesystem::path m_carpeta;
    std::size_t m_primario = 0;
};

} // namespace atipicos::pruebas
