#include "host/comprobacion/LibroContable.hpp"

#include "host/terminal/Interrupcion.hpp"
#include "platform/adodb/campos.hpp"

#include <charconv>
#include <system_error>

namespace atipicos::app {

namespace {

    using adodb::entero;
    using adodb::texto;

    std::int32_t largo(adodb::Recordset& rs, std::string_view campo)
    {
        return CLng(rs.Fields(campo).Value());
    }
    Currency importe(adodb::Recordset& rs, std::string_view campo) { return CCur(rs.Fields(campo).Value()); }

    /// Runs `columnas`, limited to one entry or whole, and hands over each row with its entry.
    template <class Cada>
    void recorre(adodb::Connection& bexmor, const std::string& columnas, const std::string& numero,
        const std::string& orden, const Unico& unico, Cada cada)
    {
        std::string sql
            = "SELECT t.Cod_Empresa, t.Cod_Ejercicio, t." + numero + " AS NumeroAsiento, " + columnas;
        if (unico)
            sql += " WHERE t.Cod_Empresa =" + std::to_string(unico->empresa)
                + " AND t.Cod_Ejercicio =" + std::to_string(unico->ejercicio) + " AND t." + numero + " ="
                + std::to_string(unico->numero);
        auto rs = bexmor.CreateRecordset();
        rs->Open(sql + " ORDER BY t.Cod_Empresa, t.Cod_Ejercicio, t." + numero + orden,
            adodb::CursorType::ForwardOnly, adodb::LockType::ReadOnly);
        for (; !rs->Eof(); rs->MoveNext()) {
            Interrupcion::comprueba();
            cada(ClaveAsiento{ entero(*rs, "Cod_Empresa"), entero(*rs, "Cod_Ejercicio"),
                     largo(*rs, "NumeroAsiento") },
                *rs);
        }
    }

}

std::string texto(const ClaveAsiento& asiento)
{
    return "asiento " + std::to_string(asiento.numero) + " (empresa contable "
        + std::to_string(asiento.empresa) + ", ejercicio " + std::to_string(asiento.ejercicio) + ")";
}

std::string nombre_corto(const ClaveAsiento& asiento)
{
    return std::to_string(asiento.empresa) + "/" + std::to_string(asiento.ejercicio) + "/"
        + std::to_string(asiento.numero);
}

std::optional<ClaveAsiento> de_nombre_corto(std::string_view nombre)
{
    ClaveAsiento asiento;
    const auto* lugar = nombre.data();
    const auto* const fin = lugar + nombre.size();
    const auto lee = [&](auto& numero, bool ultimo) {
        const auto leido = std::from_chars(lugar, fin, numero);
        lugar = leido.ptr;
        if (leido.ec != std::errc() || numero <= 0)
            return false;
        return ultimo ? lugar == fin : lugar != fin && *lugar++ == '/';
    };
    if (!lee(asiento.empresa, false) || !lee(asiento.ejercicio, false) || !lee(asiento.numero, true))
        return std::nullopt;
    return asiento;
}

void lee_asientos(
    adodb::Connection& bexmor, const std::function<void(const ClaveAsiento&, Date)>& cada, const Unico& unico)
{
    recorre(bexmor, "t.Fecha FROM Asientos t", "Numero", "", unico,
        [&](const ClaveAsiento& clave, adodb::Recordset& rs) {
            cada(clave, CDate(rs.Fields("Fecha").Value()));
        });
}

void lee_apuntes(adodb::Connection& bexmor,
    const std::function<void(const ClaveAsiento&, const ApunteLeido&)>& cada, const Unico& unico)
{
    recorre(bexmor,
        "t.Linea, t.Cuenta, t.Concepto, t.Documento, t.Departamento, t.Debe, t.Haber, ISNULL(c.Nombre, '') "
        "AS Nombre"
        " FROM Apuntes t LEFT JOIN Cuentas c ON c.Cod_Empresa = t.Cod_Empresa AND c.Cod_Ejercicio = "
        "t.Cod_Ejercicio"
        " AND c.Cuenta = t.Cuenta",
        "Asiento", ", t.Linea", unico, [&](const ClaveAsiento& clave, adodb::Recordset& rs) {
            cada(clave,
                { largo(rs, "Linea"), texto(rs, "Cuenta"), texto(rs, "Nombre"), texto(rs, "Concepto"),
                    texto(rs, "Documento"), texto(rs, "Departamento"), importe(rs, "Debe"),
                    importe(rs, "Haber") });
        });
}

void lee_registros(adodb::Connection& bexmor,
    const std::function<void(const ClaveAsiento&, const RegistroLeido&)>& cada, const Unico& unico)
{
    recorre(bexmor,
        "t.Linea, t.Documento, t.Base, t.TipoImpuesto, t.Cuota, t.TotalImpuesto FROM Registro_Impuestos t",
        "Asiento", ", t.Linea", unico, [&](const ClaveAsiento& clave, adodb::Recordset& rs) {
            cada(clave,
                { largo(rs, "Linea"), texto(rs, "Documento"), importe(rs, "Base"), entero(rs, "TipoImpuesto"),
                    importe(rs, "Cuota"), importe(rs, "TotalImpuesto") });
        });
}

void lee_previsiones(adodb::Connection& bexmor,
    const std::function<void(const ClaveAsiento&, const PrevisionLeida&)>& cada, const Unico& unico)
{
    recorre(bexmor,
        "t.Numero, t.Cuenta, t.Importe, t.Vencimiento, t.Banco, ISNULL(d.Nombre, '') AS NombTipoDoc"
        " FROM Previsiones t LEFT JOIN Tipos_Doc d ON d.Codigo = t.TipoDoc",
        "Asiento", ", t.Numero", unico, [&](const ClaveAsiento& clave, adodb::Recordset& rs) {
            cada(clave,
                { largo(rs, "Numero"), texto(rs, "Cuenta"), importe(rs, "Importe"), texto(rs, "NombTipoDoc"),
                    CDate(rs.Fields("Vencimiento").Value()), texto(rs, "Banco") });
        });
}

} // namespace atipicos::app
