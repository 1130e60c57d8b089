#include "posting/GenerarPrev.hpp"

#include "context/Cajas.hpp"
#include "context/claves.hpp"
#include "context/modComun.hpp"
#include "context/trap.hpp"
#include "platform/adodb/campos.hpp"
#include "posting/Calendario.hpp"
#include "runtime/Formato.hpp"

#include <memory>

namespace atipicos {

namespace {

    /// One payment method with the pay days and the bank of whoever pays by it.
    struct Condiciones {
        bool GenerarPrev = false;
        std::int16_t NroVtos = 0;
        std::int16_t PrimerVto = 0;
        std::int16_t RestoVtos = 0;
        std::int16_t DiaPago_1 = 0;
        std::int16_t DiaPago_2 = 0;
        std::int16_t TipoDoc = 0;
        std::string NombTipoDoc;
        std::string Cuenta;
        std::string NombreBanco;
    };

    /// The parts of both queries that depend on the accounting company.
    struct Contabilidad {
        std::string tablas; ///< "Bexmor.dbo."
        std::string empresa;
        std::string ejercicio;
        std::string banco; ///< payment bank account of the company
    };

    /// " LEFT JOIN … cue ON …" up to the account that it is compared with.
    std::string une_cuenta(const Contabilidad& c, const std::string& alias)
    {
        return " LEFT JOIN " + c.tablas + "Cuentas " + alias + " ON " + alias + ".Cod_Empresa =" + c.empresa
            + " AND " + alias + ".Cod_Ejercicio =" + c.ejercicio + " AND " + alias + ".Cuenta =";
    }

    std::string une_forma_de_pago(const Contabilidad& c, const std::string& columna)
    {
        return " INNER JOIN " + c.tablas + "Formas_Pago b ON a." + columna + " = b.Codigo INNER JOIN "
            + c.tablas + "Tipos_Doc c ON b.TipoDoc = c.Codigo";
    }

    std::string consulta_proveedor(const Contabilidad& c, std::int16_t empresa, std::int32_t proveedor)
    {
        return "SELECT a.DiaPago_1, a.DiaPago_2, b.*, c.Nombre AS NombTipoDoc, "
               "ISNULL(cue.Cuenta,cueEmp.Cuenta) AS Cuenta, ISNULL(cue.Nombre,cueEmp.Nombre) AS NombreBanco"
               " FROM Proveedores  a"
            + une_forma_de_pago(c, "Cod_FPago") + une_cuenta(c, "cue") + " a.CtaBancoPago"
            + une_cuenta(c, "cueEmp") + "'" + c.banco + "'" + " WHERE a.Cod_Empresa ="
            + std::to_string(empresa) + " AND a.Codigo =" + std::to_string(proveedor);
    }

    std::string consulta_empresa(const Contabilidad& c, std::int16_t empresa)
    {
        return "SELECT a.DiaPago_1, a.DiaPago_2, b.*, c.Nombre AS NombTipoDoc, "
               "ISNULL(cueEmp.Cuenta,'') AS Cuenta, ISNULL(cueEmp.Nombre,'') AS NombreBanco"
               " FROM Empresas a"
            + une_forma_de_pago(c, "FormaPago") + une_cuenta(c, "cueEmp") + "'" + c.banco + "'"
            + " WHERE a.Codigo =" + std::to_string(empresa);
    }

    /// The bank from which the accounting company pays; none when there is no such company.
    std::string banco_de_pago(std::int16_t empresa_contable)
    {
        const auto empresa = modComun::EmpresaBexmor()->biblioteca().NuevaEmpresa();
        empresa->Codigo = empresa_contable;
        return empresa->Cargar() ? empresa->CuentaBancoPago() : std::string();
    }

    Condiciones lee_condiciones(adodb::Recordset& rs)
    {
        Condiciones c;
        const Variant generar = rs.Fields("GenerarPrev").Value();
        c.GenerarPrev = !generar.es_nulo() && CBool(generar);
        c.NroVtos = adodb::entero(rs, "NroVtos");
        c.PrimerVto = adodb::entero(rs, "PrimerVto");
        c.RestoVtos = adodb::entero(rs, "RestoVtos");
        c.DiaPago_1 = adodb::entero(rs, "DiaPago_1");
        c.DiaPago_2 = adodb::entero(rs, "DiaPago_2");
        c.TipoDoc = adodb::entero(rs, "TipoDoc");
        c.NombTipoDoc = adodb::texto(rs, "NombTipoDoc");
        c.Cuenta = adodb::texto(rs, "Cuenta");
        c.NombreBanco = adodb::texto(rs, "NombreBanco");
        return c;
    }

    /// The supplier's terms or, failing them, the company's; false when neither exist.
    bool busca_condiciones(const Contabilizacion& datos, Condiciones& condiciones)
    {
        Contabilidad c;
        c.tablas = CStr(modComun::EmpresaBexmor()->Parametro(claves::ODBCBaseDatos)) + ".dbo.";
        c.empresa = std::to_string(datos.EmpresaContable);
        c.ejercicio = std::to_string(datos.Fecha.anio());
        c.banco = banco_de_pago(datos.EmpresaContable);
        const auto empresa = modComun::EmpresaOrvalin()->Codigo();

        auto rs = modComun::CreateRecordset();
        rs->Open(consulta_proveedor(c, empresa, datos.Proveedor), adodb::CursorType::Static,
            adodb::LockType::ReadOnly);
        if (rs->Eof()) {
            rs->Close();
            rs->Open(consulta_empresa(c, empresa), adodb::CursorType::Static, adodb::LockType::ReadOnly);
        }
        const bool hay = !rs->Eof();
        if (hay)
            condiciones = lee_condiciones(*rs);
        rs->Close();
        return hay;
    }

    Currency importe_de_plazo(Currency importe, std::int16_t plazos)
    {
        if (plazos == 0)
            throw Error::de_ejecucion(numero_error::division_por_cero);
        return Currency::de_double(Redondear(importe.a_double() / plazos, 2));
    }

    void reparte(const Contabilizacion& datos, const Condiciones& c, Propuesta& propuesta)
    {
        const Currency q = importe_de_plazo(datos.Importe, c.NroVtos);
        const auto agrega = [&](Currency importe, std::int32_t dias) {
            // Always from the date of the charge: an adjustment must not shift the next due date.
            const Date fecha = AjustarDiaPago(datos.Fecha.mas_dias(dias), c.DiaPago_1, c.DiaPago_2);
            propuesta.previsiones.push_back(
                { { importe, c.TipoDoc, fecha, c.Cuenta }, c.NombTipoDoc, c.NombreBanco });
            propuesta.suma += importe;
        };

        agrega(q, c.PrimerVto);
        for (std::int32_t i = 1; i <= c.NroVtos - 1; ++i) {
            const bool ultimo = i == c.NroVtos - 1;
            const Currency importe = ultimo ? q + (datos.Importe - (propuesta.suma + q)) : q;
            agrega(importe, c.PrimerVto + i * c.RestoVtos);
        }
    }

}

bool genera_previsiones(Donde donde)
{
    return CBool(modComun::EmpresaOrvalin(donde)->Parametro(claves::GenerarPrevPagos, donde), donde);
}

Propuesta GenerarPrev(const Contabilizacion& datos)
{
    Propuesta propuesta;
    trap(atencion, [&] {
        Condiciones condiciones;
        if (datos.Importe == Currency() || !busca_condiciones(datos, condiciones))
            return;
        propuesta.GenerarPrev = condiciones.GenerarPrev;
        if (condiciones.GenerarPrev)
            reparte(datos, condiciones, propuesta);
    });
    return propuesta;
}

} // namespace atipicos
