#pragma once

#include "host/documento/CargoImpreso.hpp"
#include "host/documento/Documento.hpp"
#include "platform/qvoremp/ImpresionCargo.hpp"

#include <memory>

namespace atipicos::orvalin {

/// The texts of a charge as a person reads them, under the names that its template uses.
[[nodiscard]] DatosDocumento datos_documento(
    const CargoImpreso& cargo, const qvoremp::Almacen& almacen, const qvoremp::Proveedor& proveedor);

/// The document of a charge, entitled "Reclamación AT260001", with its data attached; its files are called
/// after year and warehouse too ("AT260001-2026-4"), because each of them gives the code anew.
[[nodiscard]] std::shared_ptr<const Report> documento_cargo(const CargoImpreso& cargo,
    const qvoremp::Almacen& almacen, const qvoremp::Proveedor& proveedor, const Plantilla& plantilla,
    const Medidor& medidor, Donde donde = Donde::aqui());

} // namespace atipicos::orvalin
