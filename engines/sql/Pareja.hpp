#pragma once

#include "engines/sql/Transacciones.hpp"

#include <memory>

namespace atipicos::sql {

/// Two connections over one session, each of one product: whoever is handed them does with them what he does
/// with two sessions. See `Transacciones` for what each order of their operations means.
///
/// Plain names of tables are those of the own product; three-part names are those of the base that they name.
/// Settings, locks and the line are the session's: what befalls them befalls both.
struct Pareja {
    std::shared_ptr<adodb::Connection> gestion;
    std::shared_ptr<adodb::Connection> contabilidad;
    std::shared_ptr<Transacciones> transacciones; ///< of the session; what a `Unidad` is made over
};

} // namespace atipicos::sql
