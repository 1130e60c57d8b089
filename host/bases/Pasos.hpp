#pragma once

#include "host/bases/Bases.hpp"
#include "host/sql/Guiones.hpp"

#include <span>
#include <string>
#include <string_view>

namespace atipicos::bases {

/// What makes of the tables of one version those of the next: a script for each side, as it is written for
/// SQL Server. It runs in the transaction of all of them.
struct Paso {
    std::int32_t hasta = 0;
    std::string_view orvalin = {};
    std::string_view bexmor = {};
    void (*despues)(const Bases& bases, Donde donde)
        = nullptr; ///< what is written for each product otherwise
};

/// All of them, in order, up to the present version.
[[nodiscard]] std::span<const Paso> pasos() noexcept;

/// The version of both products. Raises an error when they differ, and when they are none of this program.
[[nodiscard]] std::int32_t version_de(
    const Bases& bases, const std::string& lugar, Donde donde, std::int32_t ultima = guiones::version);

/// Takes the tables through the steps that they have not been through, in one transaction where both products
/// share a session, and gives the version that they had. Nothing is changed when there is nothing to do, and
/// on an error.
std::int32_t da_pasos(const Bases& bases, std::span<const Paso> pasos, const std::string& lugar, Donde donde);

} // namespace atipicos::bases
