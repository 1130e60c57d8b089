#include "host/panel/Pendientes.hpp"

#include "host/panel/LecturaDeCargos.hpp"
#include "platform/adodb/campos.hpp"
#include "runtime/Formato.hpp"

namespace atipicos::app {

namespace {

    bool contabiliza(const Ambito& ambito)
    {
        const auto rs = adodb::consulta(*ambito.bases.orvalin,
            "SELECT EnlaceContable FROM Empresas WHERE Codigo =" + std::to_string(ambito.empresa));
        return !rs->Eof() && CLng(rs->Fields("EnlaceContable").Value()) == 1;
    }

    /// "1, 2": the accounting companies of the warehouses; empty when there is none.
    std::string empresas_contables(const Ambito& ambito)
    {
        const auto rs = adodb::consulta(*ambito.bases.orvalin,
            "SELECT DISTINCT EmpContable FROM Almacenes WHERE EmpContable > 0 AND Cod_Empresa ="
                + std::to_string(ambito.empresa));
        std::string lista;
        for (; !rs->Eof(); rs->MoveNext())
            lista += (lista.empty() ? "" : ", ") + std::to_string(adodb::entero(*rs, "EmpContable"));
        return lista;
    }

    void lee_primeras(adodb::Connection& bexmor, const std::string& donde, Proximas& proximas)
    {
        const auto rs = adodb::consulta(bexmor,
            "SELECT p.Vencimiento, p.Importe, p.Cuenta, p.Cod_Empresa, p.Cod_Ejercicio, p.Asiento, c.Nombre"
            " FROM Previsiones p LEFT JOIN Cuentas c ON c.Cod_Empresa = p.Cod_Empresa"
            " AND c.Cod_Ejercicio = p.Cod_Ejercicio AND c.Cuenta = p.Cuenta"
                + donde + " ORDER BY p.Vencimiento, p.Cod_Empresa, p.Cod_Ejercicio, p.Asiento, p.Numero"
                + como_mucho(Proximas::maximo));
        for (; !rs->Eof(); rs->MoveNext())
            proximas.primeras.push_back({ CDate(rs->Fields("Vencimiento").Value()),
                CCur(rs->Fields("Importe").Value()), adodb::texto(*rs, "Cuenta"), adodb::texto(*rs, "Nombre"),
                { adodb::entero(*rs, "Cod_Empresa"), adodb::entero(*rs, "Cod_Ejercicio"),
                    CLng(rs->Fields("Asiento").Value()) } });
    }

}

SinAsiento cargos_sin_asiento(const Ambito& ambito)
{
    SinAsiento resultado;
    if (!contabiliza(ambito))
        return resultado;
    lee_cargos(*ambito.bases.orvalin,
        instruccion_de_cargos(ambito, " AND pc.Asiento < 1", SinAsiento::maximo + 1, Camino::por_tabla),
        [&](const CargoResumido& cargo) { resultado.cargos.push_back(cargo); });
    resultado.hay_mas = resultado.cargos.size() > SinAsiento::maximo;
    if (resultado.hay_mas)
        resultado.cargos.pop_back();
    return resultado;
}

Proximas previsiones_proximas(const Ambito& ambito, Date hoy)
{
    Proximas proximas;
    proximas.desde = hoy.solo_dia();
    proximas.hasta = proximas.desde.mas_dias(Proximas::dias);
    const auto empresas = empresas_contables(ambito);
    if (empresas.empty())
        return proximas;
    const auto donde = " WHERE p.Cod_Empresa + 0 IN (" + empresas + ")"
        + entre_dias("p.Vencimiento", proximas.desde, proximas.hasta);
    const auto rs = adodb::consulta(*ambito.bases.bexmor,
        "SELECT COUNT(*) AS Cuantas, SUM(p.Importe) AS Suma FROM Previsiones p" + donde);
    proximas.cuantas = CLng(rs->Fields("Cuantas").Value());
    const auto suma = rs->Fields("Suma").Value();
    proximas.importe = suma.es_nulo() ? Currency() : Redondear(CCur(suma), 2);
    if (proximas.cuantas > 0)
        lee_primeras(*ambito.bases.bexmor, donde, proximas);
    return proximas;
}

} // namespace atipicos::app
