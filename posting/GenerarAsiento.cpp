#include "posting/GenerarAsiento.hpp"

#include "charges/Impuesto.hpp"
#include "context/claves.hpp"
#include "context/modComun.hpp"
#include "context/trap.hpp"
#include "platform/adodb/campos.hpp"
#include "posting/GenerarPrev.hpp"

#include <memory>
#include <string_view>

namespace atipicos {

namespace {

    constexpr std::int32_t error_contable = 1000;
    constexpr std::int16_t registro_repercutido = 2; // kind of tax record: output tax

    std::string configuracion(std::string_view clave, Donde donde = Donde::aqui())
    {
        const Variant valor = modComun::EmpresaOrvalin(donde)->Parametro(clave, donde);
        return valor.es_nulo() ? std::string() : CStr(valor, donde);
    }

    /// A concept template with every `marca` in it replaced by `valor`.
    std::string concepto(std::string_view clave, std::string_view marca, const std::string& valor)
    {
        std::string texto = configuracion(clave);
        for (auto p = texto.find(marca); p != std::string::npos; p = texto.find(marca, p + valor.size()))
            texto.replace(p, marca.size(), valor);
        return texto;
    }

    std::unique_ptr<qvbxemp::Empresa> abre_empresa(std::int16_t codigo, Date fecha)
    {
        auto empresa = modComun::EmpresaBexmor()->biblioteca().NuevaEmpresa();
        empresa->Codigo = codigo;
        if (!empresa->Cargar())
            throw Error(error_contable, "QVORComprasAtip", "No existe empresa Contable en el Cargo");
        empresa->Conexion = modComun::ConexionBexmor();
        empresa->Ejercicio = CInt(fecha.anio());
        empresa->FechaTrabajo = fecha;
        empresa->UsuarioActual = configuracion(claves::UsuarioActual);
        return empresa;
    }

    struct CuentasProveedor {
        std::string Proveedor;
        std::string Deudor;
        std::string DeudaCortoPlazo;
    };

    std::string clave_de(std::int32_t codigo)
    {
        return " WHERE Cod_Empresa =" + std::to_string(modComun::EmpresaOrvalin()->Codigo())
            + " AND Codigo =" + std::to_string(codigo);
    }

    /// The accounts of the supplier's record; those that are empty are formed from their roots.
    CuentasProveedor lee_cuentas(
        std::int32_t proveedor, const qvbxemp::ServicioCuentas& servicio, int longitud)
    {
        CuentasProveedor cuentas;
        auto rs = modComun::CreateRecordset();
        rs->Open(
            "SELECT Cta_Proveedor, Cta_Deudor, Cta_DeudaCortoPlazo FROM Proveedores" + clave_de(proveedor),
            adodb::CursorType::Static, adodb::LockType::ReadOnly);
        if (!rs->Eof()) {
            cuentas.Proveedor = adodb::texto(*rs, "Cta_Proveedor");
            cuentas.Deudor = adodb::texto(*rs, "Cta_Deudor");
            cuentas.DeudaCortoPlazo = adodb::texto(*rs, "Cta_DeudaCortoPlazo");
        }
        rs->Close();

        if (cuentas.Proveedor.empty()) {
            const auto raiz = std::to_string(modComun::EmpresaOrvalin()->RaizProveedores());
            cuentas.Proveedor = servicio.FormarCuenta(raiz, proveedor, longitud);
        }
        if (cuentas.Deudor.empty()) {
            const auto raiz = configuracion(claves::Raiz_ProveedoresDeudor);
            cuentas.Deudor = servicio.FormarCuenta(raiz, proveedor, longitud);
        }
        if (cuentas.DeudaCortoPlazo.empty()) {
            const auto raiz = configuracion(claves::Raiz_ProveedoresDeudaCortoPlazo);
            cuentas.DeudaCortoPlazo = servicio.FormarCuenta(raiz, proveedor, longitud);
        }
        return cuentas;
    }

    std::string lee_cuenta_ingresos(std::int16_t almacen)
    {
        auto rs = modComun::CreateRecordset();
        rs->Open("SELECT CtaIngresosAtipicos FROM Almacenes" + clave_de(almacen), adodb::CursorType::Static,
            adodb::LockType::ReadOnly);
        std::string cuenta;
        if (!rs->Eof())
            cuenta = adodb::texto(*rs, "CtaIngresosAtipicos");
        rs->Close();
        return cuenta;
    }

    /// The entry being written. One line object serves for all its lines; what a line does not set again
    /// (department, automatic concept) carries over from the line before.
    class Contable {
    public:
        Contable(const std::string& documento, std::int16_t empresa, const DatosAsiento& datos)
            : m_documento(documento)
            , m_datos(datos)
            , m_empresa(abre_empresa(empresa, datos.Fecha))
            , m_biblioteca(m_empresa->biblioteca())
            , m_servicio(m_biblioteca.NuevoServicioCuentas(*m_empresa))
            , m_cuentas(lee_cuentas(datos.Proveedor, *m_servicio, m_empresa->LongitudCuenta()))
            , m_cuenta_ingresos(lee_cuenta_ingresos(datos.Almacen))
            , m_asiento(m_biblioteca.NuevoAsiento(*m_empresa))
            , m_linea(m_biblioteca.NuevoApunte(*m_empresa))
        {
        }

        std::int32_t contabiliza()
        {
            prepara_impuesto();
            m_asiento->Fecha = m_datos.Fecha;
            m_asiento->Crear();
            m_linea->Asiento = m_asiento->Numero;
            m_linea->Documento = m_documento;
            linea_deudor();
            lineas_ingreso();
            if (m_registro)
                linea_impuesto();
            linea_proveedor();
            linea_descargo_deudor();
            previsiones();
            return m_asiento->Numero;
        }

    private:
        void prepara_impuesto()
        {
            m_tipo_impuesto = tipo_impuesto_atipicos();
            if (m_tipo_impuesto > 0) {
                m_registro = m_biblioteca.NuevoRegistroImpuesto(*m_empresa);
                m_registro->Clase = registro_repercutido;
                m_registro->Indicador = 1;
                m_registro->Documento = m_documento;
                m_linea->ConceptoAutomatico = configuracion(claves::Conta_CtoAutIgicDebe);
                m_impuesto = m_servicio->LeerTipoImpuesto(m_tipo_impuesto);
                m_cuota = cuota_impuesto(m_datos.Total, m_impuesto.Porcentaje);
            }
            m_total = m_datos.Total + m_cuota;
        }

        void linea_deudor() // A
        {
            m_departamento = configuracion(claves::Proveedores_DptoIngresoRappels);
            if (m_departamento.empty())
                m_departamento = std::to_string(m_datos.Almacen);
            m_linea->Departamento = m_departamento;
            m_linea->Cuenta = m_cuentas.Deudor;
            m_linea->Concepto = concepto(claves::Concepto_Atipicos_Deudor, "%DOCUMENTO%", m_documento);
            guarda_linea(m_total, Currency());
        }

        void lineas_ingreso() // B
        {
            for (const auto& cargo : m_datos.Cargos) {
                m_linea->Cuenta = cargo.Cuenta.empty() ? m_cuenta_ingresos : cargo.Cuenta;
                m_linea->Concepto = concepto(
                    claves::Concepto_Atipicos_Ingreso, "%NOMBREPROVEEDOR%", m_datos.NombreProveedor);
                if (m_registro) {
                    m_linea->TipoImpuesto = m_tipo_impuesto;
                    m_linea->PorcentajeImpuesto = m_impuesto.Porcentaje;
                    m_linea->BaseImpuesto = cargo.Importe;
                }
                guarda_linea(Currency(), cargo.Importe);
            }
            m_linea->TipoImpuesto = 0; // only the income lines are taxed
            m_linea->PorcentajeImpuesto = Currency();
            m_linea->BaseImpuesto = Currency();
        }

        void linea_impuesto() // C and the tax record
        {
            m_linea->Cuenta = m_impuesto.Imp_CtaRep;
            m_linea->Concepto
                = concepto(claves::Concepto_Atipicos_Impuesto, "%NOMBREPROVEEDOR%", m_datos.NombreProveedor);
            guarda_linea(Currency(), m_cuota);

            m_registro->Base = m_datos.Total;
            m_registro->TipoImpuesto = m_tipo_impuesto;
            m_registro->Cuota = m_cuota;
            m_registro->TotalImpuesto = m_cuota;
            m_registro->Asiento = m_asiento->Numero;
            m_registro->Linea = m_linea->Linea;
            m_registro->Guardar();
        }

        void linea_proveedor() // D
        {
            m_linea->Cuenta = cuenta_proveedor();
            m_linea->ConceptoAutomatico.clear();
            m_linea->Concepto = concepto(claves::Concepto_Atipicos_Proveedor, "%DOCUMENTO%", m_documento);
            guarda_linea(m_total, Currency());
        }

        void linea_descargo_deudor() // E
        {
            m_linea->Cuenta = m_cuentas.Deudor;
            m_linea->Concepto = concepto(claves::Concepto_Atipicos_Deudor, "%DOCUMENTO%", m_documento);
            guarda_linea(Currency(), m_total);
        }

        void previsiones()
        {
            if (!genera_previsiones())
                return;
            const auto prevision = m_biblioteca.NuevaPrevision(*m_empresa);
            prevision->Asiento = m_asiento->Numero;
            prevision->Departamento = m_departamento;
            for (const auto& una : m_datos.Previsiones) {
                prevision->Importe = una.Importe;
                prevision->TipoDoc = una.TipoDoc;
                prevision->Vencimiento = una.Vencimiento;
                prevision->Banco = una.Banco;
                prevision->Cuenta = cuenta_proveedor();
                prevision->Guardar();
            }
        }

        [[nodiscard]] const std::string& cuenta_proveedor() const
        {
            return m_datos.Franquiciado ? m_cuentas.DeudaCortoPlazo : m_cuentas.Proveedor;
        }

        void guarda_linea(Currency debe, Currency haber, Donde donde = Donde::aqui())
        {
            m_linea->Linea = m_asiento->SiguienteLinea(donde);
            m_linea->Debe = debe;
            m_linea->Haber = haber;
            if (!m_linea->Guardar(donde))
                throw Error(error_contable, m_linea->error().fuente(), m_linea->error().descripcion(), donde);
        }

        const std::string& m_documento;
        const DatosAsiento& m_datos;
        std::unique_ptr<qvbxemp::Empresa> m_empresa;
        const qvbxemp::Biblioteca& m_biblioteca;
        std::unique_ptr<qvbxemp::ServicioCuentas> m_servicio;
        CuentasProveedor m_cuentas;
        std::string m_cuenta_ingresos;
        std::unique_ptr<qvbxemp::Asiento> m_asiento;
        std::unique_ptr<qvbxemp::Apunte> m_linea;

        std::int16_t m_tipo_impuesto = 0;
        qvbxemp::TipoImpuesto m_impuesto;
        std::unique_ptr<qvbxemp::RegistroImpuesto> m_registro; ///< only where tax applies
        Currency m_cuota;
        Currency m_total; ///< with tax
        std::string m_departamento;
    };

}

void GenerarAsiento(const std::string& strDocumento, std::int16_t intEmpContable, std::int32_t& lngAsiento,
    const DatosAsiento& datos)
{
    trap("frmCompras_Atipicos:GenerarAsiento", [&] {
        Contable contable(strDocumento, intEmpContable, datos);
        lngAsiento = contable.contabiliza();
    });
}

} // namespace atipicos
