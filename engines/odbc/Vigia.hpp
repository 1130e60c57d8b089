#pragma once

#include "engines/sql/Linea.hpp"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace atipicos::odbc {

/// Tells somebody how long a call of the driver has lasted, from a thread of its own, because nobody can talk
/// to a driver that waits.
class Vigia {
public:
    using Reloj = std::chrono::steady_clock;

    /// Told about twice a second while a call lasts, and never after it; nobody when `avisa` is empty.
    explicit Vigia(sql::AvisoEspera avisa);
    Vigia(const Vigia&) = delete;
    Vigia& operator=(const Vigia&) = delete;
    ~Vigia();

    /// A call of the driver lasts as long as this lives.
    class Llamada {
    public:
        explicit Llamada(Vigia& vigia)
            : m_vigia(vigia)
        {
            m_vigia.empieza();
        }
        Llamada(const Llamada&) = delete;
        Llamada& operator=(const Llamada&) = delete;
        ~Llamada() { m_vigia.termina(); }

    private:
        Vigia& m_vigia;
    };

private:
    void empieza();
    void termina();
    void vigila();

    sql::AvisoEspera m_avisa;
    std::mutex m_cerrojo;
    std::condition_variable m_fin;
    Reloj::time_point m_desde;
    bool m_dura = false;
    bool m_acaba = false;
    std::thread m_hilo;
};

} // namespace atipicos::odbc
