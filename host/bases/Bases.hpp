#pragma once

#include "engines/sql/Linea.hpp"
#include "engines/sql/Transacciones.hpp"
#include "host/bases/Lugar.hpp"
#include "platform/adodb/Connection.hpp"

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>

/// The tables of both products that the host works with: in the file `empresa.db` of a folder, or the schemas
/// `orvalin` and `dbo` in one database of a server.
namespace atipicos::bases {

struct Bases {
    std::shared_ptr<adodb::Connection> orvalin; ///< management; reads accounting as `Bexmor.dbo.Tabla`
    std::shared_ptr<adodb::Connection> bexmor; ///< accounting
    /// What a unit is made over; null where each connection has a session of its own.
    std::shared_ptr<sql::Transacciones> transacciones = {};
};

struct OpcionesBases {
    bool solo_lectura = false;
    std::chrono::milliseconds espera{ 5000 }; ///< how long to wait for another user's lock
    sql::AvisoLinea avisa_linea = {}; ///< for servers
    sql::SigueEsperando sigue_esperando = {}; ///< the same
    sql::AvisoEspera avisa_espera = {}; ///< for drivers
    sql::SigueIntentando sigue_intentando = {}; ///< for servers
    sql::SigueTrabajando sigue = {}; ///< for folders and PostgreSQL: a driver cannot be told to stop
    bool sincronizacion_completa = true; ///< a commit survives a power cut; off only to measure
};

/// Makes both databases, with the sample company or, `vacia`, with nothing but the tables. Both appear
/// complete or, on an error, neither. A folder is made if it does not exist, and raises an error when it
/// holds them already or cannot be written; on a server the database must exist, and raises one when
/// it holds anything else. False, with nothing changed, when the server holds both already.
bool crea_bases(const Lugar& lugar, bool vacia, Donde donde = Donde::aqui());

/// Opens both databases. Raises an error that names the file or the server when one is missing, is no
/// database of this program, or has tables of another version; of an earlier one it says how to upgrade them.
[[nodiscard]] Bases abre_bases(
    const Lugar& lugar, const OpcionesBases& opciones = {}, Donde donde = Donde::aqui());

/// The same, also with tables of an earlier version.
[[nodiscard]] Bases conecta_bases(const Lugar& lugar, const OpcionesBases& opciones, Donde donde);

/// The folder whose file is meant, directly or through a driver; none on a server.
[[nodiscard]] std::optional<std::filesystem::path> carpeta_de(const Lugar& lugar);

/// Whether a folder holds databases of this program, of whichever version.
[[nodiscard]] bool hay_bases(const std::filesystem::path& carpeta);

} // namespace atipicos::bases
