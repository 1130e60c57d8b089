#include "engines/ado/EmpresaBexmor.hpp"

#include "engines/ado/Connection.hpp"
#include "engines/ado/Conversion.hpp"

#include <utility>

namespace atipicos::ado {

using automation::Despacho;

namespace {

    class AsientoAnfitrion final : public qvbxemp::Asiento {
    public:
        explicit AsientoAnfitrion(Despacho asiento)
            : m_asiento(std::move(asiento))
        {
        }

        void Crear(Donde donde = Donde::aqui()) override
        {
            con_anfitrion(donde, [&] {
                m_asiento.pon("Fecha", fecha_de(Fecha));
                m_asiento.llama("Crear");
                Numero = CLng(variant_de(m_asiento.llama("Numero").get(), donde), donde);
            });
        }

        [[nodiscard]] std::int32_t SiguienteLinea(Donde donde = Donde::aqui()) override
        {
            return con_anfitrion(donde,
                [&] { return CLng(variant_de(m_asiento.llama("SiguienteLinea").get(), donde), donde); });
        }

    private:
        Despacho m_asiento;
    };

    class ApunteAnfitrion final : public qvbxemp::Apunte {
    public:
        explicit ApunteAnfitrion(Despacho apunte)
            : m_apunte(std::move(apunte))
        {
        }

        [[nodiscard]] bool Guardar(Donde donde = Donde::aqui()) override
        {
            m_error = Error(0, "", "", Donde());
            try {
                if (con_anfitrion(donde, [&] { return guarda(donde); }))
                    return true;
                m_error = con_anfitrion(donde, [&] { return error_dejado(donde); });
            } catch (const Error& error) {
                m_error = error;
            }
            return false;
        }

        [[nodiscard]] const Error& error() const noexcept override { return m_error; }

    private:
        bool guarda(Donde donde)
        {
            m_apunte.pon("Asiento", Asiento);
            m_apunte.pon("Linea", Linea);
            m_apunte.pon("Cuenta", Cuenta);
            m_apunte.pon("ConceptoAutomatico", ConceptoAutomatico);
            m_apunte.pon("Concepto", Concepto);
            m_apunte.pon("Documento", Documento);
            m_apunte.pon("Departamento", Departamento);
            m_apunte.pon("Debe", moneda_de(Debe));
            m_apunte.pon("Haber", moneda_de(Haber));
            m_apunte.pon("TipoImpuesto", TipoImpuesto);
            m_apunte.pon("PorcentajeImpuesto", moneda_de(PorcentajeImpuesto));
            m_apunte.pon("BaseImpuesto", moneda_de(BaseImpuesto));
            return CBool(variant_de(m_apunte.llama("Guardar").get(), donde), donde);
        }

        Error error_dejado(Donde donde) const
        {
            return Error(CLng(variant_de(m_apunte.llama("ErrorNumero").get(), donde), donde),
                CStr(variant_de(m_apunte.llama("ErrorFuente").get(), donde), donde),
                CStr(variant_de(m_apunte.llama("ErrorDescripcion").get(), donde), donde), donde);
        }

        Despacho m_apunte;
        Error m_error{ 0, "", "", Donde() };
    };

    class RegistroAnfitrion final : public qvbxemp::RegistroImpuesto {
    public:
        explicit RegistroAnfitrion(Despacho registro)
            : m_registro(std::move(registro))
        {
        }

        void Guardar(Donde donde = Donde::aqui()) override
        {
            con_anfitrion(donde, [&] {
                m_registro.pon("Clase", Clase);
                m_registro.pon("Indicador", Indicador);
                m_registro.pon("Documento", Documento);
                m_registro.pon("Base", moneda_de(Base));
                m_registro.pon("TipoImpuesto", TipoImpuesto);
                m_registro.pon("Cuota", moneda_de(Cuota));
                m_registro.pon("TotalImpuesto", moneda_de(TotalImpuesto));
                m_registro.pon("Asiento", Asiento);
                m_registro.pon("Linea", Linea);
                m_registro.llama("Guardar");
            });
        }

    private:
        Despacho m_registro;
    };

    class PrevisionAnfitrion final : public qvbxemp::Prevision {
    public:
        explicit PrevisionAnfitrion(Despacho prevision)
            : m_prevision(std::move(prevision))
        {
        }

        void Guardar(Donde donde = Donde::aqui()) override
        {
            con_anfitrion(donde, [&] {
                m_prevision.pon("Asiento", Asiento);
                m_prevision.pon("Departamento", Departamento);
                m_prevision.pon("Importe", moneda_de(Importe));
                m_prevision.pon("TipoDoc", TipoDoc);
                m_prevision.pon("Vencimiento", fecha_de(Vencimiento));
                m_prevision.pon("Banco", Banco);
                m_prevision.pon("Cuenta", Cuenta);
                m_prevision.llama("Guardar");
            });
        }

    private:
        Despacho m_prevision;
    };

    class CuentasAnfitrion final : public qvbxemp::ServicioCuentas {
    public:
        explicit CuentasAnfitrion(Despacho cuentas)
            : m_cuentas(std::move(cuentas))
        {
        }

        [[nodiscard]] std::string FormarCuenta(const std::string& raiz, std::int32_t codigo, int longitud,
            Donde donde = Donde::aqui()) const override
        {
            return con_anfitrion(donde, [&] {
                return CStr(
                    variant_de(m_cuentas.llama("FormarCuenta", raiz, codigo, longitud).get(), donde), donde);
            });
        }

        [[nodiscard]] bool ExisteCuenta(const std::string& cuenta, Donde donde = Donde::aqui()) const override
        {
            return con_anfitrion(donde, [&] {
                return CBool(variant_de(m_cuentas.llama("ExisteCuenta", cuenta).get(), donde), donde);
            });
        }

        [[nodiscard]] qvbxemp::TipoImpuesto LeerTipoImpuesto(
            std::int16_t tipo, Donde donde = Donde::aqui()) const override
        {
            return con_anfitrion(donde, [&] {
                const auto leido = m_cuentas.objeto("LeerTipoImpuesto", tipo);
                return qvbxemp::TipoImpuesto{ CCur(variant_de(leido.llama("Porcentaje").get(), donde), donde),
                    CStr(variant_de(leido.llama("Imp_CtaRep").get(), donde), donde) };
            });
        }

    private:
        Despacho m_cuentas;
    };

    template <class Clase> auto nuevo(const qvbxemp::Empresa& empresa, const char* miembro, Donde donde)
    {
        const auto* suya = dynamic_cast<const EmpresaBexmor*>(&empresa);
        if (suya == nullptr)
            throw Error::de_ejecucion(numero_error::tipos_no_coinciden, donde);
        return con_anfitrion(donde, [&] { return std::make_unique<Clase>(suya->nuevo(miembro)); });
    }

}

EmpresaBexmor::EmpresaBexmor(Despacho empresa, std::shared_ptr<const BibliotecaBexmor> biblioteca)
    : m_empresa(std::move(empresa))
    , m_biblioteca(std::move(biblioteca))
{
}

bool EmpresaBexmor::Cargar(Donde donde)
{
    return con_anfitrion(donde, [&] {
        m_empresa.pon("Codigo", Codigo);
        return CBool(variant_de(m_empresa.llama("Cargar").get(), donde), donde);
    });
}

Variant EmpresaBexmor::Parametro(std::string_view clave, Donde donde) const
{
    return con_anfitrion(donde, [&] { return variant_de(m_empresa.llama("Parametro", clave).get(), donde); });
}

std::string EmpresaBexmor::CuentaBancoPago(Donde donde) const
{
    return con_anfitrion(
        donde, [&] { return CStr(variant_de(m_empresa.llama("CuentaBancoPago").get(), donde), donde); });
}

int EmpresaBexmor::LongitudCuenta(Donde donde) const
{
    return con_anfitrion(
        donde, [&] { return CInt(variant_de(m_empresa.llama("LongitudCuenta").get(), donde), donde); });
}

Despacho EmpresaBexmor::nuevo(const char* miembro) const
{
    m_empresa.pon("Ejercicio", Ejercicio);
    m_empresa.pon("FechaTrabajo", fecha_de(FechaTrabajo));
    m_empresa.pon("UsuarioActual", UsuarioActual);
    if (const auto* conexion = dynamic_cast<const Connection*>(Conexion.get()))
        m_empresa.pon("Conexion", conexion->anfitrion().valor());
    return m_empresa.objeto(miembro);
}

BibliotecaBexmor::BibliotecaBexmor(Despacho empresa)
    : m_empresa(std::move(empresa))
{
}

std::unique_ptr<qvbxemp::Empresa> BibliotecaBexmor::NuevaEmpresa(Donde donde) const
{
    return con_anfitrion(donde, [&] {
        return std::make_unique<EmpresaBexmor>(m_empresa.objeto("NuevaEmpresa"), shared_from_this());
    });
}

std::unique_ptr<qvbxemp::Asiento> BibliotecaBexmor::NuevoAsiento(
    const qvbxemp::Empresa& empresa, Donde donde) const
{
    return nuevo<AsientoAnfitrion>(empresa, "NuevoAsiento", donde);
}

std::unique_ptr<qvbxemp::Apunte> BibliotecaBexmor::NuevoApunte(
    const qvbxemp::Empresa& empresa, Donde donde) const
{
    return nuevo<ApunteAnfitrion>(empresa, "NuevoApunte", donde);
}

std::unique_ptr<qvbxemp::RegistroImpuesto> BibliotecaBexmor::NuevoRegistroImpuesto(
    const qvbxemp::Empresa& empresa, Donde donde) const
{
    return nuevo<RegistroAnfitrion>(empresa, "NuevoRegistroImpuesto", donde);
}

std::unique_ptr<qvbxemp::Prevision> BibliotecaBexmor::NuevaPrevision(
    const qvbxemp::Empresa& empresa, Donde donde) const
{
    return nuevo<PrevisionAnfitrion>(empresa, "NuevaPrevision", donde);
}

std::unique_ptr<qvbxemp::ServicioCuentas> BibliotecaBexmor::NuevoServicioCuentas(
    const qvbxemp::Empresa& empresa, Donde donde) const
{
    return nuevo<CuentasAnfitrion>(empresa, "NuevoServicioCuentas", donde);
}

} // namespace atipicos::ado
