#pragma once

#include "tests/support/Oyente.hpp"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

namespace atipicos::pruebas {

/// Stands on a port of 127.0.0.1 between clients and a server behind a socket. It counts round trips, each
/// time that a client speaks after the server has, and can make each of them last longer.
class Intermediario {
public:
    explicit Intermediario(std::filesystem::path servidor);
    Intermediario(const Intermediario&) = delete;
    Intermediario& operator=(const Intermediario&) = delete;

    /// What makes the address of a database on a PostgreSQL server, which has other parameters, go this way.
    [[nodiscard]] std::string por_aqui() const;
    [[nodiscard]] int puerto() const noexcept { return m_oyente.puerto(); }
    [[nodiscard]] std::size_t viajes() const noexcept { return m_viajes; }
    void retrasa(std::chrono::milliseconds viaje) noexcept { m_retraso = viaje; }
    /// And the line that it comes on. `entonces`, if any, is done when the server has given it.
    void pierde_la_proxima_respuesta(std::function<void()> entonces = {})
    {
        m_al_perder = std::move(entonces);
        m_pierde = true;
    }
    void calla(bool si = true) noexcept { m_calla = si; } ///< what the server says does not arrive any more
    void calla_tras(std::size_t viajes) noexcept { m_calla_tras = viajes; } ///< round trips in all
    /// From now on the columns of answers have no number of the table that they come from, as those of a
    /// table that is spread over several nodes.
    void borra_numeros_de_tabla() noexcept { m_borra_numeros = true; }

private:
    class Mensajes;

    void pasa(int cliente);

    std::filesystem::path m_servidor;
    std::atomic<std::size_t> m_viajes = 0;
    std::atomic<std::chrono::milliseconds> m_retraso{};
    std::atomic<bool> m_pierde = false;
    std::function<void()> m_al_perder; ///< set before `m_pierde`, used by who takes that
    std::atomic<bool> m_calla = false;
    std::atomic<std::size_t> m_calla_tras = SIZE_MAX;
    std::atomic<bool> m_borra_numeros = false;
    Oyente m_oyente; ///< the last one, which all the others outlive
};

} // namespace atipicos::pruebas
