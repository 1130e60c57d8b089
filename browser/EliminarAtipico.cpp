#include "browser/EliminarAtipico.hpp"

#include "charges/clsAtipico.hpp"
#include "context/modComun.hpp"
#include "context/Transaccion.hpp"
#include "context/trap.hpp"

namespace atipicos {

bool EliminarAtipico(const ClaveCargo& clave)
{
    bool eliminado = false;
    trap("frmCompras_Atipicos_Visor:cmdEliminar_Click", [&] {
        Transaccion transaccion(modComun::ConexionOrvalin());
        clsAtipico cargo;
        cargo.Cod_Ejercicio = clave.Ejercicio;
        cargo.Cod_Almacen = clave.Almacen;
        cargo.Codigo = clave.Codigo;
        if (cargo.EliminarConResultado()) // its error has been shown; the transaction rolls back
            return;
        transaccion.Confirma();
        eliminado = true;
    });
    return eliminado;
}

} // namespace atipicos
