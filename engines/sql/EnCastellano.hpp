#pragma once

/// What an engine says before the words of the database itself, which speaks its own language.
namespace atipicos::sql {

inline constexpr auto no_puede = "La base de datos no ha podido hacer lo que se le pedía";
inline constexpr auto no_admite = "La base de datos no admite el cambio";
inline constexpr auto ha_fallado = "La base de datos ha dado un error";

} // namespace atipicos::sql
