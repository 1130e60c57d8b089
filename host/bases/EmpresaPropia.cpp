#include "host/bases/EmpresaPropia.hpp"

#include "host/bases/Fallo.hpp"
#include "host/sql/Literal.hpp"
#include "platform/adodb/campos.hpp"

#include <array>
#include <utility>
#include <vector>

namespace atipicos::bases {

namespace {

    constexpr auto cuenta_ingresos = "75900001";
    constexpr auto cuenta_impuesto = "47700001";
    constexpr auto cuenta_banco = "57200001";
    constexpr int proveedor_primero = 1;

    /// Runs statements on one side, all at one place of the program.
    class Escritor {
    public:
        Escritor(adodb::Connection& conexion, Donde donde)
            : m_conexion(conexion)
            , m_donde(donde)
        {
        }
        void operator()(const std::string& sql) const
        {
            m_conexion.Execute(sql, nullptr, adodb::CommandType::Text, m_donde);
        }

    private:
        adodb::Connection& m_conexion;
        Donde m_donde;
    };

    std::string texto(const std::string& valor) { return sql::literal(adodb::sin_apostrofos(valor)); }

    void escribe_parametros(const Escritor& orvalin, const DatosEmpresa& datos)
    {
        const std::vector<std::pair<const char*, std::string>> parametros{
            { "OficinaCentral", "1" },
            { "Proveedores_AtipcosImpuesto", "1" },
            { "Raiz_ProveedoresDeudor", "440" },
            { "Raiz_ProveedoresDeudaCortoPlazo", "521" },
            { "Conta_CtoAutIgicDebe", "47" },
            { "Concepto_Atipicos_Deudor", "Reclamación %DOCUMENTO%" },
            { "Concepto_Atipicos_Ingreso", "Ingreso atípico %NOMBREPROVEEDOR%" },
            { "Concepto_Atipicos_Impuesto", datos.impuesto + " atípico %NOMBREPROVEEDOR%" },
            { "Concepto_Atipicos_Proveedor", "N/Cargo %DOCUMENTO%" },
            { "Proveedores_DptoIngresoRappels", "90" },
            { "GenerarPrevPagos", "1" },
            { "Proveedores_AtipicosDispImpresoDefault", "1" },
            { "Proveedores_AtipicosDisp2ImpresoDefault", "0" },
        };
        for (const auto& [clave, valor] : parametros)
            orvalin("INSERT INTO Parametros (Cod_Empresa, Clave, Valor) VALUES (1, '" + std::string(clave)
                + "', " + texto(valor) + ")");
    }

    void escribe_gestion(const Escritor& orvalin, const DatosEmpresa& datos)
    {
        orvalin("INSERT INTO Empresas (Codigo, Nombre, NIF, Domicilio, CodigoPostal, Poblacion, Provincia,"
                " FormaPago, AlmacenDefecto, EnlaceContable, EmpresaProveedores, RaizProveedores) VALUES (1, "
            + texto(datos.nombre) + ", " + texto(datos.nif) + ", " + texto(datos.domicilio) + ", "
            + texto(datos.codigo_postal) + ", " + texto(datos.poblacion) + ", " + texto(datos.provincia)
            + ", 2, 1, 1, 1, 400)");
        escribe_parametros(orvalin, datos);
        orvalin("INSERT INTO Tipos_Impuesto (Codigo, Nombre, Porcentaje) VALUES (1, " + texto(datos.impuesto)
            + ", " + sql::literal(datos.porcentaje) + ")");
        orvalin("INSERT INTO SGD_Usuarios (Codigo, Nombre) VALUES (1, " + texto(datos.usuario) + ")");
        orvalin("INSERT INTO Almacenes (Cod_Empresa, Codigo, Nombre, Domicilio, CodigoPostal, Poblacion,"
                " EmpContable, CtaIngresosAtipicos) VALUES (1, 1, "
            + texto(datos.almacen) + ", " + texto(datos.domicilio) + ", " + texto(datos.codigo_postal) + ", "
            + texto(datos.poblacion) + ", 1, '" + cuenta_ingresos + "')");
        const auto& proveedor = datos.proveedor;
        orvalin(
            "INSERT INTO Proveedores (Cod_Empresa, Codigo, Nombre, NIF, Domicilio, CodigoPostal, Poblacion)"
            " VALUES (1, "
            + std::to_string(proveedor_primero) + ", " + texto(proveedor.nombre) + ", " + texto(proveedor.nif)
            + ", " + texto(proveedor.domicilio) + ", " + texto(proveedor.codigo_postal) + ", "
            + texto(proveedor.poblacion) + ")");
    }

    using Cuentas = std::array<std::pair<std::string, std::string>, 6>; ///< with their names

    void escribe_ejercicio(const Escritor& bexmor, const std::string& ejercicio, const Cuentas& cuentas)
    {
        std::string sql = "INSERT INTO Ejercicios (Cod_Empresa, Ejercicio, Inicio, Fin) VALUES (1, ";
        sql.append(ejercicio).append(", '01/01/").append(ejercicio).append("', '31/12/").append(ejercicio);
        bexmor(sql + "')");
        for (const auto& [cuenta, nombre] : cuentas) {
            sql = "INSERT INTO Cuentas (Cod_Empresa, Cod_Ejercicio, Cuenta, Nombre) VALUES (1, ";
            sql.append(ejercicio).append(", '").append(cuenta).append("', ").append(texto(nombre));
            bexmor(sql + ")");
        }
    }

    void escribe_cuentas(const Escritor& bexmor, const DatosEmpresa& datos, std::int16_t anio)
    {
        const auto& proveedor = datos.proveedor.nombre;
        const Cuentas cuentas{ {
            { "40000001", proveedor },
            { "44000001", proveedor + " (deudor)" },
            { "52100001", proveedor + " (deuda a corto plazo)" },
            { cuenta_impuesto, datos.impuesto + " repercutido" },
            { cuenta_banco, "Bancos, c/c" },
            { cuenta_ingresos, "Ingresos atípicos " + datos.almacen },
        } };
        for (const int ejercicio : { anio - 1, int{ anio }, anio + 1 })
            escribe_ejercicio(bexmor, std::to_string(ejercicio), cuentas);
    }

    void escribe_contabilidad(const Escritor& bexmor, const DatosEmpresa& datos, std::int16_t anio)
    {
        bexmor("INSERT INTO Empresas (Codigo, Nombre, NIF, LongitudCuenta, CuentaBancoPago) VALUES (1, "
            + texto(datos.nombre) + ", " + texto(datos.nif) + ", 8, '" + cuenta_banco + "')");
        bexmor("INSERT INTO Parametros (Cod_Empresa, Clave, Valor) VALUES (1, 'ODBCBaseDatos', 'Bexmor')");
        bexmor(
            "INSERT INTO Tipos_Impuesto (Cod_Empresa, Codigo, Nombre, Porcentaje, Imp_CtaRep) VALUES (1, 1, "
            + texto(datos.impuesto) + ", " + sql::literal(datos.porcentaje) + ", '" + cuenta_impuesto + "')");
        bexmor(
            "INSERT INTO Tipos_Doc (Codigo, Nombre) VALUES (1, 'Recibo domiciliado'), (2, 'Transferencia'),"
            " (3, 'Pagaré'), (4, 'Compensación')");
        bexmor("INSERT INTO Formas_Pago (Codigo, Nombre, GenerarPrev, NroVtos, PrimerVto, RestoVtos, TipoDoc)"
               " VALUES (1, 'Contado', 1, 1, 0, 0, 2), (2, 'A 30 días', 1, 1, 30, 0, 1)");
        escribe_cuentas(bexmor, datos, anio);
    }

}

bool sin_empresas(adodb::Connection& orvalin)
{
    return adodb::consulta(orvalin, "SELECT Codigo FROM Empresas")->Eof();
}

void funda_empresa(const Bases& bases, const DatosEmpresa& datos, std::int16_t anio, Donde donde)
{
    if (!sin_empresas(*bases.orvalin))
        falla(std::string("Empresas"), "ya hay una empresa en esta base de datos.", donde);
    bases.orvalin->BeginTrans(donde);
    bases.bexmor->BeginTrans(donde);
    try {
        escribe_gestion({ *bases.orvalin, donde }, datos);
        escribe_contabilidad({ *bases.bexmor, donde }, datos, anio);
        bases.orvalin->CommitTrans(donde);
        bases.bexmor->CommitTrans(donde);
    } catch (...) {
        bases.bexmor->RollbackTrans(donde);
        bases.orvalin->RollbackTrans(donde);
        throw;
    }
}

} // namespace atipicos::bases
