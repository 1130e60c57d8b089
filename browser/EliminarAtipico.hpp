#pragma once

#include "browser/DetalleAtipico.hpp"

namespace atipicos {

/// Deletes a charge, header and lines, in one transaction on the management connection. The accounting
/// entry stays: it is deleted by hand in the accounting product. Returns true when the charge is gone.
/// A failure inside the deletion has been shown by it and is rolled back; errors of the transaction itself
/// are rolled back and shown under "frmCompras_Atipicos_Visor:cmdEliminar_Click".
[[nodiscard]] bool EliminarAtipico(const ClaveCargo& clave);

} // namespace atipicos
