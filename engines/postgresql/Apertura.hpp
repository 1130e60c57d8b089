#pragma once

#include "engines/postgresql/Opciones.hpp"
#include "runtime/Error.hpp"

#include <libpq-fe.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace atipicos::postgresql {

struct CierraLinea {
    void operator()(PGconn* linea) const noexcept { PQfinish(linea); }
};
using LineaAbierta = std::unique_ptr<PGconn, CierraLinea>;

using Parametros = std::map<std::string, std::string>; ///< as the client library names them

/// Each server that an address with several of them names, alone, in the order in which they are to be tried.
[[nodiscard]] std::vector<Parametros> servidores(const Parametros& parametros);

/// How the line of a session is opened, and opened again: what the address says, with the session's settings.
class Apertura {
public:
    /// Raises an error when the address is not understood.
    Apertura(const Opciones& opciones, Donde donde);

    /// Raises an error that names the server, never the password; of its own kind where the server has no
    /// such database.
    [[nodiscard]] LineaAbierta abre(Donde donde) const;

    /// The same for a line that has been lost, on the first server that will have it, and again for as long
    /// as whoever is asked wants to go on. It can be ended within a quarter of a second.
    [[nodiscard]] LineaAbierta reabre(Donde donde) const;

    [[nodiscard]] bool preparadas() const noexcept { return m_preparadas; } ///< whether statements are

private:
    struct Intento; ///< to open it again, from the first server to the last, as often as it takes

    [[nodiscard]] std::chrono::milliseconds limite() const; ///< of one server
    void prepara(PGconn* linea, Donde donde) const;
    void exige_ajustes(PGconn* linea, Donde donde) const;

    Parametros m_parametros;
    sql::SigueIntentando m_sigue;
    std::chrono::milliseconds m_reintento{}; ///< for how long, at most
    std::string m_ajustes; ///< the settings of the session, as an open one is told them
    bool m_preparadas = true;
    bool m_solo_lectura_despues = false; ///< the session is told so when it is open
};

} // namespace atipicos::postgresql
