#include "host/comprobacion/CargoConsultado.hpp"

#include "context/modComun.hpp"
#include "host/sesion/OpcionesComunes.hpp"
#include "host/sql/Literal.hpp"
#include "platform/adodb/campos.hpp"

namespace atipicos::app {

ClaveAsiento CargoConsultado::asiento() const
{
    return { EmpContable, static_cast<std::int16_t>(cabecera.Fecha.anio()), cabecera.Asiento };
}

std::optional<CargoConsultado> busca_cargo(const ClaveCargo& clave)
{
    const auto empresa = modComun::EmpresaOrvalin();
    auto rs = modComun::CreateRecordset();
    rs->Open(
        "SELECT pc.*, ISNULL(alm.Nombre, '') AS Nombre_Almacen, ISNULL(prov.Nombre, '') AS Nombre_Proveedor,"
        " ISNULL(usu.Nombre, '') AS Nombre_Usuario FROM Proveedores_Cargos_Atipicos pc"
        " LEFT JOIN Almacenes alm ON alm.Cod_Empresa = pc.Cod_Empresa AND alm.Codigo = pc.Cod_Almacen"
        " LEFT JOIN Proveedores prov ON prov.Cod_Empresa ="
            + std::to_string(empresa->EmpresaProveedores())
            + " AND prov.Codigo = pc.Proveedor LEFT JOIN SGD_Usuarios usu ON usu.Codigo = pc.Usuario"
              " WHERE pc.Cod_Empresa ="
            + std::to_string(empresa->Codigo()) + " AND pc.Cod_Ejercicio =" + std::to_string(clave.Ejercicio)
            + " AND pc.Cod_Almacen =" + std::to_string(clave.Almacen)
            + " AND pc.Codigo =" + sql::literal(clave.Codigo),
        adodb::CursorType::Static, adodb::LockType::ReadOnly);
    if (rs->Eof())
        return std::nullopt;
    CargoConsultado cargo;
    LectorLista(*rs).lee(cargo.cabecera);
    cargo.EmpContable = adodb::entero(*rs, "EmpContable");
    cargo.Hora = CDate(rs->Fields("Hora").Value());
    return cargo;
}

void no_existe(const ClaveCargo& clave)
{
    throw Error(no_hecho, "atipicos",
        "No existe el cargo " + clave.Codigo + " del ejercicio " + std::to_string(clave.Ejercicio)
            + " en el almacén " + std::to_string(clave.Almacen) + ".");
}

} // namespace atipicos::app
