#pragma once

#include "platform/adodb/Connection.hpp"

#include <chrono>
#include <filesystem>
#include <memory>

/// The pair of databases that the host works with, in one folder: `orvalin.db` and `bexmor.db`.
namespace atipicos::orvalin {

struct Bases {
    std::shared_ptr<adodb::Connection> orvalin; ///< management; reads accounting as `Bexmor.dbo.Tabla`
    std::shared_ptr<adodb::Connection> bexmor; ///< accounting
};

struct OpcionesBases {
    bool solo_lectura = false;
    std::chrono::milliseconds espera{ 5000 }; ///< how long to wait for another user's lock
    bool sincronizacion_completa = true; ///< a commit survives a power cut; off only to measure
};

/// Makes both databases in `carpeta`, which is made if it does not exist: with the sample company or,
/// `vacia`, with nothing but the tables. Both appear complete or, on an error, neither.
/// Raises an error when the folder holds one of them already, or cannot be written.
void crea_bases(const std::filesystem::path& carpeta, bool vacia, Donde donde = Donde::aqui());

/// Opens both databases of `carpeta`. Raises an error that names the file when one is missing, is no
/// database of this program, or has tables of another version.
[[nodiscard]] Bases abre_bases(
    const std::filesystem::path& carpeta, const OpcionesBases& opciones = {}, Donde donde = Donde::aqui());

} // namespace atipicos::orvalin
