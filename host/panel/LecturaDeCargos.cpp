#include "host/panel/LecturaDeCargos.hpp"

#include "host/sql/Literal.hpp"
#include "platform/adodb/campos.hpp"

namespace atipicos::app {

std::string como_mucho(std::size_t cuantas)
{
    return " OFFSET 0 ROWS FETCH NEXT " + std::to_string(cuantas) + " ROWS ONLY";
}

std::string entre_dias(const std::string& columna, Date desde, Date hasta)
{
    return " AND " + columna + " >= " + sql::literal(desde.solo_dia()) + " AND " + columna + " < "
        + sql::literal(hasta.solo_dia().mas_dias(1));
}

std::string de_la_empresa(const std::string& columna, std::int16_t empresa, Camino camino)
{
    return columna + (camino == Camino::por_tabla ? " + 0 =" : " =") + std::to_string(empresa);
}

std::string instruccion_de_cargos(
    const Ambito& ambito, const std::string& condicion, std::size_t cuantos, Camino camino)
{
    return "SELECT pc.Cod_Ejercicio, pc.Cod_Almacen, pc.Codigo, pc.Proveedor, pc.Fecha, pc.Importe,"
           " pc.Impuesto_Importe, pc.Asiento, prov.Nombre AS Nombre_Proveedor"
           " FROM Proveedores_Cargos_Atipicos pc"
           " LEFT JOIN Proveedores prov ON prov.Cod_Empresa ="
        + std::to_string(ambito.empresa_proveedores) + " AND prov.Codigo = pc.Proveedor WHERE "
        + de_la_empresa("pc.Cod_Empresa", ambito.empresa, camino) + condicion + " ORDER BY "
        + (camino == Camino::por_codigos ? "pc.Codigo DESC"
                                         : "pc.Fecha DESC, pc.Cod_Almacen ASC, pc.Codigo DESC")
        + como_mucho(cuantos);
}

void lee_cargos(adodb::Connection& orvalin, const std::string& instruccion,
    const std::function<void(const CargoResumido&)>& cada)
{
    const auto rs = adodb::consulta(orvalin, instruccion);
    CargoResumido cargo;
    for (; !rs->Eof(); rs->MoveNext()) {
        cargo.ejercicio = adodb::entero(*rs, "Cod_Ejercicio");
        cargo.almacen = adodb::entero(*rs, "Cod_Almacen");
        cargo.codigo = adodb::texto(*rs, "Codigo");
        cargo.proveedor = CLng(rs->Fields("Proveedor").Value());
        cargo.nombre_proveedor = adodb::texto(*rs, "Nombre_Proveedor");
        cargo.fecha = CDate(rs->Fields("Fecha").Value());
        cargo.base = CCur(rs->Fields("Importe").Value());
        cargo.impuesto = CCur(rs->Fields("Impuesto_Importe").Value());
        cargo.asiento = CLng(rs->Fields("Asiento").Value());
        cada(cargo);
    }
}

std::vector<CargoResumido> ultimos_cargos(const Ambito& ambito, std::size_t cuantos)
{
    std::vector<CargoResumido> ultimos;
    lee_cargos(*ambito.bases.orvalin, instruccion_de_cargos(ambito, {}, cuantos),
        [&](const CargoResumido& cargo) { ultimos.push_back(cargo); });
    return ultimos;
}

} // namespace atipicos::app
