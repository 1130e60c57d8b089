#pragma once

#include "context/frmclsComprasAtipVisor.hpp"

namespace atipicos::app {

/// The last search of the charge browser, kept for each user of each company on this machine. A range until
/// today stays one until today.
class UltimaBusqueda {
public:
    UltimaBusqueda(std::int16_t empresa, std::int32_t usuario);

    /// That of this year, of all, when the user has not searched yet.
    [[nodiscard]] frmclsComprasAtipVisor::Busqueda lee(Date hoy) const;
    void guarda(const frmclsComprasAtipVisor::Busqueda& busqueda, Date hoy) const;

private:
    QString m_grupo;
};

} // namespace atipicos::app
