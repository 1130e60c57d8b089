#pragma once

#include "platform/qvbxemp/Biblioteca.hpp"

#include <cstdint>
#include <string>

namespace atipicos::bexmor {

/// Keeps for the verification that a part of an entry could not be stored, and why. What has been stored is
/// not undone: that is for the caller, who may commit it. Of an entry that does not exist nothing is kept.
/// Raises nothing: the error that led here is the one to show.
void deja_incompleto(
    const qvbxemp::Empresa& empresa, std::int32_t asiento, const std::string& motivo, Donde donde) noexcept;

} // namespace atipicos::bexmor
