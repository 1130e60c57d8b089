#include "printing/ImprimirAtipico.hpp"

#include "context/modComun.hpp"

namespace atipicos {

bool ImprimirAtipico(const CargoAImprimir& cargo, const PedirDestino& pedir_destino, Donde donde)
{
    const auto destino = pedir_destino();
    if (!destino)
        return false;
    const auto empresa = modComun::EmpresaOrvalin(donde);
    const auto biblioteca = modComun::BibliotecaOrvalin(donde);

    // A charge outlives its warehouse and its supplier: what is left of them is their code.
    auto almacen = biblioteca->NuevoAlmacen(*empresa, donde);
    almacen->Codigo = cargo.Almacen;
    almacen->Cargar(donde);
    auto proveedor = biblioteca->NuevoProveedor(*empresa, donde);
    proveedor->Codigo = cargo.Proveedor;
    proveedor->Cargar(donde);

    const auto impresion = biblioteca->NuevaImpresionCargo(*empresa, donde);
    impresion->Ejercicio = cargo.Ejercicio;
    impresion->Codigo = cargo.Codigo;
    impresion->almacen = std::move(almacen);
    impresion->proveedor = std::move(proveedor);
    impresion->Impresora = destino->Impresora;
    for (const auto dispositivo : { destino->Dispositivo, destino->Dispositivo2 }) {
        impresion->Dispositivo = dispositivo;
        impresion->Imprimir(donde);
    }
    return true;
}

} // namespace atipicos
