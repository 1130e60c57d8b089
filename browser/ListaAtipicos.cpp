#include "browser/ListaAtipicos.hpp"

#include "context/modComun.hpp"

namespace atipicos {

std::string instruccion_lista(
    const FiltroAtipicos& filtro, std::int16_t empresa, std::int16_t empresa_proveedores)
{
    std::string almacen;
    if (filtro.Almacen >= 1)
        almacen = " AND pc.Cod_Almacen =" + std::to_string(filtro.Almacen);
    std::string proveedor;
    if (filtro.Proveedor >= 1)
        proveedor = " AND pc.Proveedor =" + std::to_string(filtro.Proveedor);

    return "SELECT pc.* ,"
           " ISNULL(prov.Nombre ,'') as Nombre_Proveedor , ISNULL(alm.Nombre ,'') as Nombre_Almacen, "
           " ISNULL(usu.Nombre, '') AS Nombre_Usuario"
           " FROM Proveedores_Cargos_Atipicos pc"
           " LEFT JOIN Almacenes alm ON alm.Cod_Empresa = pc.Cod_Empresa AND alm.Codigo = pc.Cod_Almacen"
           " LEFT JOIN Proveedores prov ON prov.Cod_Empresa ="
        + std::to_string(empresa_proveedores)
        + " AND prov.Codigo = pc.Proveedor"
          " LEFT JOIN SGD_Usuarios usu ON usu.Codigo = pc.Usuario"
          " WHERE pc.Cod_Empresa ="
        + std::to_string(empresa) + almacen + proveedor + " AND pc.Fecha BETWEEN '" + filtro.FechaI
        + "' AND '" + filtro.FechaF + "'" + " ORDER BY pc.Fecha DESC, pc.Cod_Almacen ASC, pc.Codigo DESC";
}

void Cargar_Atipicos(const FiltroAtipicos& filtro, const std::function<void(const CargoListado&)>& cada,
    ColumnasLista columnas)
{
    const auto empresa = modComun::EmpresaOrvalin();
    auto rs = modComun::CreateRecordset();
    rs->Open(instruccion_lista(filtro, empresa->Codigo(), empresa->EmpresaProveedores()),
        adodb::CursorType::ForwardOnly, adodb::LockType::ReadOnly);
    const LectorLista lector(*rs, columnas);
    CargoListado cargo;
    for (; !rs->Eof(); rs->MoveNext()) {
        lector.lee(cargo);
        cada(cargo);
    }
    rs->Close();
}

} // namespace atipicos
