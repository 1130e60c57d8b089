#include "host/comprobacion/CargoGuardado.hpp"

#include "context/modComun.hpp"
#include "host/sesion/OpcionesComunes.hpp"
#include "host/sql/Literal.hpp"
#include "platform/adodb/campos.hpp"

namespace atipicos::app {

ClaveAsiento CargoGuardado::asiento() const
{
    return { EmpContable, static_cast<std::int16_t>(cabecera.Fecha.anio()), cabecera.Asiento };
}

std::optional<CargoGuardado> busca_cargo(const ClaveAtipico& clave)
{
    auto& empresa = modComun::EmpresaOrvalin();
    auto rs = modComun::ConexionOrvalin().CreateRecordset();
    rs->Open(
        "SELECT pc.*, ISNULL(alm.Nombre, '') AS Nombre_Almacen, ISNULL(prov.Nombre, '') AS Nombre_Proveedor,"
        " ISNULL(usu.Nombre, '') AS Nombre_Usuario FROM Proveedores_Cargos_Atipicos pc"
        " LEFT JOIN Almacenes alm ON alm.Cod_Empresa = pc.Cod_Empresa AND alm.Codigo = pc.Cod_Almacen"
        " LEFT JOIN Proveedores prov ON prov.Cod_Empresa ="
            + std::to_string(empresa.EmpresaProveedores())
            + " AND prov.Codigo = pc.Proveedor LEFT JOIN SGD_Usuarios usu ON usu.Codigo = pc.Usuario"
              " WHERE pc.Cod_Empresa ="
            + std::to_string(empresa.Codigo()) + " AND pc.Cod_Ejercicio =" + std::to_string(clave.Ejercicio)
            + " AND pc.Cod_Almacen =" + std::to_string(clave.Almacen)
            + " AND pc.Codigo =" + sql::literal(clave.Codigo),
        adodb::CursorType::Static, adodb::LockType::ReadOnly);
    if (rs->Eof())
        return std::nullopt;
    const auto largo = [&](std::string_view campo) { return CLng(rs->Fields(campo).Value()); };
    const auto importe = [&](std::string_view campo) { return CCur(rs->Fields(campo).Value()); };
    const auto texto = [&](std::string_view campo) { return adodb::texto(*rs, campo); };
    CargoGuardado cargo;
    cargo.cabecera = { texto("Codigo"), largo("Cod_Almacen"), texto("Nombre_Almacen"), largo("Proveedor"),
        texto("Nombre_Proveedor"), CDate(rs->Fields("Fecha").Value()), importe("Importe"),
        importe("Impuesto_Importe"), importe("Impuesto"), largo("Asiento"), largo("Usuario"),
        texto("Nombre_Usuario"), texto("Observ") };
    cargo.EmpContable = adodb::entero(*rs, "EmpContable");
    cargo.EjContable = adodb::entero(*rs, "EjContable");
    cargo.Hora = CDate(rs->Fields("Hora").Value());
    return cargo;
}

void no_existe(const ClaveAtipico& clave)
{
    throw Error(no_hecho, "atipicos",
        "No existe el cargo " + clave.Codigo + " del ejercicio " + std::to_string(clave.Ejercicio)
            + " en el almacén " + std::to_string(clave.Almacen) + ".");
}

} // namespace atipicos::app
