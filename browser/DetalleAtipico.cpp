#include "browser/DetalleAtipico.hpp"

#include "context/modComun.hpp"
#include "platform/adodb/campos.hpp"
#include "runtime/Celdas.hpp"
#include "runtime/Formato.hpp"

namespace atipicos {

std::string instruccion_detalle(const ClaveCargo& clave, std::int16_t empresa)
{
    return " SELECT pcl.*"
           "   FROM Proveedores_Cargos_Atipicos_Lineas pcl"
           "  WHERE pcl.Cod_Empresa ="
        + std::to_string(empresa) + "    AND pcl.Cod_Ejercicio =" + std::to_string(clave.Ejercicio)
        + "    AND pcl.Cod_Almacen =" + std::to_string(clave.Almacen) + "    AND pcl.Codigo ='" + clave.Codigo
        + "' ORDER BY pcl.Num_Linea ";
}

void anexa_fila(std::string& destino, const LineaDetalle& linea, int decimales_precio)
{
    anexa_celda(destino, linea.Codigo);
    destino += '\t';
    anexa_celda(destino, linea.Cod_Articulo);
    destino += '\t';
    anexa_celda(destino, linea.Descripcion);
    destino += '\t';
    anexa_pantalla(destino, linea.Unidades, 3);
    destino += '\t';
    anexa_pantalla(destino, linea.Precio, decimales_precio);
    destino += '\t';
    anexa_pantalla(destino, linea.Importe, 2);
    destino += '\t';
    anexa_celda(destino, linea.Observ);
}

void Cargar_Detalles(const ClaveCargo& clave, const std::function<void(const LineaDetalle&)>& cada)
{
    const auto empresa = modComun::EmpresaOrvalin()->Codigo();
    auto rs = modComun::CreateRecordset();
    rs->Open(instruccion_detalle(clave, empresa), adodb::CursorType::ForwardOnly, adodb::LockType::ReadOnly);
    for (; !rs->Eof(); rs->MoveNext()) {
        LineaDetalle linea;
        linea.Codigo = adodb::texto(*rs, "Codigo");
        linea.Cod_Articulo = CLng(rs->Fields("Cod_Articulo").Value());
        linea.Descripcion = adodb::texto(*rs, "Descripcion");
        linea.Unidades = CCur(rs->Fields("Unidades").Value());
        linea.Precio = CCur(rs->Fields("Precio").Value());
        linea.Importe = linea.Unidades * linea.Precio;
        linea.Observ = adodb::texto(*rs, "Observ");
        cada(linea);
    }
    rs->Close();
}

} // namespace atipicos
