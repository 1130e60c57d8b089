#pragma once

#include "engines/sql/Linea.hpp"

#include <chrono>
#include <string>
#include <vector>

namespace atipicos::postgresql {

inline constexpr auto fuente = "PostgreSQL"; ///< what errors name as their source

struct Opciones {
    /// `postgresql://usuario@servidor/base?sslmode=verify-full` or `host=… dbname=…`, all that libpq knows,
    /// without a password: that comes from PGPASSWORD or from a pass file. With `preparadas=no` besides no
    /// statement is prepared, as behind a pooler that hands a session from one client to the next.
    /// `reintento=30` says for how many seconds it is tried to open a lost line again.
    std::string direccion = {};
    std::string esquema = {}; ///< where names without a schema are looked for
    std::vector<std::string> bases = {}; ///< `base.dbo.Tabla` is `dbo.Tabla` of this database for these names
    bool solo_lectura = false;
    std::chrono::milliseconds espera{ 5000 }; ///< how long to wait for another user's lock
    std::chrono::milliseconds espera_instruccion{ 120'000 }; ///< the longest that one statement may take
    sql::AvisoLinea avisa = {};
    sql::SigueEsperando sigue_esperando = {};
    sql::SigueIntentando sigue_intentando = {};
    bool sincronizacion_completa = true; ///< a commit survives a power cut; off only to measure
    bool preparadas = true; ///< off only to compare; the address says it too
};

} // namespace atipicos::postgresql
