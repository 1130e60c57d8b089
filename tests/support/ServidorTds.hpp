#pragma once

#include "tests/support/Oyente.hpp"

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::pruebas {

/// Listens on a port of 127.0.0.1 and speaks as much of the protocol of SQL Server as a driver needs to log
/// in and to be told that statements were done: for what a driver makes of a connection string, of a refusal
/// and of silence. It has no database.
class ServidorTds {
public:
    /// What a client logged in with, as it came over the line.
    struct Entrada {
        std::string usuario;
        std::string clave;
        std::string base;
    };

    ServidorTds();
    ServidorTds(const ServidorTds&) = delete;
    ServidorTds& operator=(const ServidorTds&) = delete;

    /// A connection string without user, for FreeTDS.
    [[nodiscard]] std::string cadena() const;
    /// What there is to install or to set before that driver can be used; empty when nothing.
    [[nodiscard]] static std::string falta();

    [[nodiscard]] std::vector<Entrada> entradas() const; ///< all there have been
    /// From now on statements that begin so fail with that number of the server; an empty one: the login.
    void falla(const std::string& comienzo, std::int32_t numero);
    void calla_ante(const std::string& comienzo); ///< statements that begin so get no answer at all

private:
    void conversa(int cliente);
    [[nodiscard]] std::string responde(std::uint8_t clase, const std::string& contenido, bool& callada);
    [[nodiscard]] std::string entra(const std::string& contenido);

    mutable std::mutex m_cerrojo;
    std::vector<Entrada> m_entradas;
    std::map<std::string, std::int32_t> m_fallos; ///< numbers by the beginning of the statement
    std::string m_calla; ///< empty: before none
    Oyente m_oyente; ///< the last one, which all the others outlive
};

} // namespace atipicos::pruebas
