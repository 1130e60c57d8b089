#include "host/comprobacion/AsientoConsultado.hpp"

#include "platform/adodb/campos.hpp"

namespace atipicos::app {

namespace {

    using adodb::entero;
    using adodb::texto;

    std::int32_t largo(adodb::Recordset& rs, std::string_view campo)
    {
        return CLng(rs.Fields(campo).Value());
    }

    Currency importe(adodb::Recordset& rs, std::string_view campo) { return CCur(rs.Fields(campo).Value()); }

    /// The rows of one entry of `columnas`, in order; `numero` is what the table calls its number.
    std::unique_ptr<adodb::Recordset> filas(adodb::Connection& bexmor, const std::string& columnas,
        const ClaveAsiento& clave, const std::string& numero, const std::string& orden = "")
    {
        return adodb::consulta(bexmor,
            "SELECT " + columnas + " WHERE t.Cod_Empresa =" + std::to_string(clave.empresa)
                + " AND t.Cod_Ejercicio =" + std::to_string(clave.ejercicio) + " AND t." + numero + " ="
                + std::to_string(clave.numero) + orden);
    }

}

AsientoConsultado consulta_asiento(adodb::Connection& bexmor, const ClaveAsiento& clave)
{
    AsientoConsultado asiento;
    asiento.existe = !filas(bexmor, "t.Fecha FROM Asientos t", clave, "Numero")->Eof();
    for (const auto rs = filas(bexmor,
             "t.Linea, t.Cuenta, t.Concepto, t.Documento, t.Departamento, t.Debe, t.Haber, "
             "ISNULL(c.Nombre, '') AS Nombre FROM Apuntes t LEFT JOIN Cuentas c ON "
             "c.Cod_Empresa = t.Cod_Empresa AND c.Cod_Ejercicio = t.Cod_Ejercicio AND c.Cuenta = t.Cuenta",
             clave, "Asiento", " ORDER BY t.Linea");
         !rs->Eof(); rs->MoveNext())
        asiento.apuntes.push_back({ largo(*rs, "Linea"), texto(*rs, "Cuenta"), texto(*rs, "Nombre"),
            texto(*rs, "Concepto"), texto(*rs, "Documento"), texto(*rs, "Departamento"), importe(*rs, "Debe"),
            importe(*rs, "Haber") });
    for (const auto rs = filas(bexmor,
             "t.Linea, t.Documento, t.Base, t.TipoImpuesto, t.Cuota, t.TotalImpuesto FROM Registro_Impuestos "
             "t",
             clave, "Asiento", " ORDER BY t.Linea");
         !rs->Eof(); rs->MoveNext())
        asiento.registros.push_back({ largo(*rs, "Linea"), texto(*rs, "Documento"), importe(*rs, "Base"),
            entero(*rs, "TipoImpuesto"), importe(*rs, "Cuota"), importe(*rs, "TotalImpuesto") });
    for (const auto rs = filas(bexmor,
             "t.Numero, t.Cuenta, t.Importe, t.Vencimiento, t.Banco, ISNULL(d.Nombre, '') AS NombTipoDoc"
             " FROM Previsiones t LEFT JOIN Tipos_Doc d ON d.Codigo = t.TipoDoc",
             clave, "Asiento", " ORDER BY t.Numero");
         !rs->Eof(); rs->MoveNext())
        asiento.previsiones.push_back({ largo(*rs, "Numero"), texto(*rs, "Cuenta"), importe(*rs, "Importe"),
            texto(*rs, "NombTipoDoc"), CDate(rs->Fields("Vencimiento").Value()), texto(*rs, "Banco") });
    return asiento;
}

} // namespace atipicos::app
