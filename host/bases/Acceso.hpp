#pragma once

#include "host/bases/Bases.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace atipicos::bases {

/// What the database says of whoever has opened it.
struct Acceso {
    std::string login; ///< as the server knows him; of a file, the user of the machine
    std::optional<std::int32_t> usuario; ///< which user of the company that login is, where it was said
    bool por_otros = false; ///< may act as any user: an owner of the tables, a superuser or their role
    bool registra = true; ///< may add charges
};

struct Asignacion {
    std::string login;
    std::int32_t usuario = 0;
};

/// A file is its owner's, and root's; on a server it is the owner of the tables, or a role (see
/// `permisos_postgresql.sql`), who may act for others.
[[nodiscard]] Acceso acceso_de(const Bases& bases, const Lugar& lugar, Donde donde = Donde::aqui());

/// Which user each login is, in order of login.
[[nodiscard]] std::vector<Asignacion> accesos(const Bases& bases, Donde donde = Donde::aqui());

/// From now on a login is that user and no other. The user exists. Only who may act for others is let.
void asigna_acceso(const Bases& bases, const Asignacion& asignacion, Donde donde = Donde::aqui());

/// From now on a login is no user. False: it was none.
bool quita_acceso(const Bases& bases, const std::string& login, Donde donde = Donde::aqui());

} // namespace atipicos::bases
