#include "editor/CargoAbierto.hpp"

#include "context/modComun.hpp"
#include "platform/adodb/campos.hpp"

namespace atipicos {

namespace {

    std::shared_ptr<adodb::Recordset> abre(const std::string& instruccion)
    {
        auto rs = modComun::CreateRecordset();
        rs->Open(instruccion, adodb::CursorType::ForwardOnly, adodb::LockType::ReadOnly);
        return rs;
    }

    /// The value of a field; null counts as empty.
    Variant valor(adodb::Recordset& rs, std::string_view campo)
    {
        Variant leido = rs.Fields(campo).Value();
        return leido.es_nulo() ? Variant() : leido;
    }

}

std::string instruccion_cabecera(const ClaveCargo& clave, std::int16_t empresa)
{
    return "SELECT Proveedor, Fecha, Observ, Impuesto FROM Proveedores_Cargos_Atipicos "
           " WHERE Cod_Empresa ="
        + std::to_string(empresa) + " AND Cod_Ejercicio =" + std::to_string(clave.Ejercicio)
        + " AND Cod_Almacen =" + std::to_string(clave.Almacen) + " AND Codigo ='" + clave.Codigo + "'";
}

std::string instruccion_lineas(const ClaveCargo& clave, std::int16_t empresa)
{
    const std::string Cod_Empresa = std::to_string(empresa);
    return "SELECT lin.*, ISNULL(a.CtaIngresosAtipicos, '') AS CtaAtipicos"
           " FROM Proveedores_Cargos_Atipicos_Lineas lin"
           " LEFT JOIN Articulos a"
           " ON a.Cod_Empresa ="
        + Cod_Empresa + " AND a.Codigo = lin.Cod_Articulo WHERE lin.Cod_Empresa =" + Cod_Empresa
        + " AND lin.Cod_Ejercicio =" + std::to_string(clave.Ejercicio) + " AND lin.Cod_Almacen ="
        + std::to_string(clave.Almacen) + " AND lin.Codigo ='" + clave.Codigo + "' ORDER BY lin.Num_Linea";
}

std::optional<CabeceraAbierta> lee_cabecera(const ClaveCargo& clave)
{
    const auto rs = abre(instruccion_cabecera(clave, modComun::EmpresaOrvalin()->Codigo()));
    if (rs->Eof())
        return std::nullopt;
    CabeceraAbierta cabecera;
    cabecera.Fecha = CDate(valor(*rs, "Fecha"));
    cabecera.Proveedor = CLng(valor(*rs, "Proveedor"));
    cabecera.Observ = adodb::texto(*rs, "Observ");
    cabecera.Impuesto = CCur(valor(*rs, "Impuesto"));
    rs->Close();
    return cabecera;
}

void lee_lineas(const ClaveCargo& clave, const std::function<void(const LineaAbierta&)>& cada)
{
    const auto rs = abre(instruccion_lineas(clave, modComun::EmpresaOrvalin()->Codigo()));
    for (; !rs->Eof(); rs->MoveNext()) {
        LineaAbierta leida;
        leida.linea.Cod_Articulo = CLng(valor(*rs, "Cod_Articulo"));
        leida.linea.Descripcion = adodb::texto(*rs, "Descripcion");
        leida.linea.Observaciones = adodb::texto(*rs, "Observ");
        leida.linea.Unidades = CCur(valor(*rs, "Unidades"));
        leida.linea.Costo = CCur(valor(*rs, "Precio"));
        leida.Num_Linea = CLng(valor(*rs, "Num_Linea"));
        leida.CtaAtipicos = adodb::texto(*rs, "CtaAtipicos");
        cada(leida);
    }
    rs->Close();
}

} // namespace atipicos
