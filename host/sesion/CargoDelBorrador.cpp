#include "host/sesion/CargoDelBorrador.hpp"

#include "platform/adodb/campos.hpp"

#include <vector>

namespace atipicos::app {

namespace {

    /// The charges of that company, year and warehouse.
    std::string donde_esta(const Borrador& borrador, Date fecha, std::int16_t empresa)
    {
        return " WHERE Cod_Empresa =" + std::to_string(empresa) + " AND Cod_Ejercicio ="
            + std::to_string(fecha.anio()) + " AND Cod_Almacen =" + std::to_string(borrador.Almacen);
    }

    bool son_sus_lineas(
        adodb::Connection& conexion, const std::string& donde, const std::vector<LineaBorrador>& lineas)
    {
        const auto rs = adodb::consulta(conexion,
            "SELECT Cod_Articulo, Descripcion, Observ FROM Proveedores_Cargos_Atipicos_Lineas" + donde
                + " ORDER BY Num_Linea");
        for (const auto& linea : lineas) {
            if (rs->Eof() || CLng(rs->Fields("Cod_Articulo").Value()) != linea.Cod_Articulo
                || adodb::texto(*rs, "Descripcion") != linea.Descripcion
                || adodb::texto(*rs, "Observ") != linea.Observaciones)
                return false;
            rs->MoveNext();
        }
        return rs->Eof();
    }

}

std::optional<std::string> codigo_guardado(
    const BorradorLeido& leido, std::int16_t empresa, adodb::Connection& conexion)
{
    const auto& borrador = leido.borrador;
    const auto fecha = Date::de_texto(borrador.Fecha);
    if (!borrador.Guardandose || !fecha)
        return std::nullopt;
    const auto donde = donde_esta(borrador, *fecha, empresa);
    const auto suyo = borrador.Codigo.empty() ? std::string() : " AND Codigo ='" + borrador.Codigo + "'";
    const auto rs = adodb::consulta(conexion,
        "SELECT Codigo, Importe, Hora FROM Proveedores_Cargos_Atipicos" + donde + suyo + " AND Proveedor ="
            + std::to_string(borrador.Proveedor) + " AND Fecha ='" + fecha->texto() + "'");
    for (; !rs->Eof(); rs->MoveNext()) {
        const auto codigo = adodb::texto(*rs, "Codigo");
        auto las_suyas = donde;
        las_suyas.append(" AND Codigo ='").append(codigo).append("'");
        if (CCur(rs->Fields("Importe").Value()) == borrador.Total
            && CDate(rs->Fields("Hora").Value()) >= leido.momento
            && son_sus_lineas(conexion, las_suyas, borrador.Lineas))
            return codigo;
    }
    return std::nullopt;
}

} // namespace atipicos::app
